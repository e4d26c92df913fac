// Scripts in the text form of the host application's script steps.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "host/calc.h"

namespace host {

struct Step {
  enum class Kind {
    SetVariable,
    If,
    ElseIf,
    Else,
    EndIf,
    Loop,
    ExitLoopIf,
    EndLoop,
    Pause,
    ExitScript,
    Expression
  };
  Kind kind = Kind::Expression;
  Loc loc;
  std::u16string variable;  // SetVariable
  ExprPtr expr;             // condition, value, duration or result; may be null for ExitScript
  size_t next = 0;  // If/ElseIf/Else: the next branch or End If; Loop/ExitLoopIf: the End Loop;
                    // EndLoop: its Loop
};

struct Script {
  std::vector<Step> steps;
};

// Parses a whole script; throws CalcError at the first syntax error or unmatched block.
Script parseScript(std::string_view utf8);

// What a script run needs from its host.
class ScriptHost {
 public:
  virtual ~ScriptHost() = default;
  virtual void print(const Value& v) = 0;
  // After every step: the host gives the plug-in its idle time.
  virtual void afterStep() {}
  virtual void pause(const Number& seconds) { (void)seconds; }
};

// Runs the steps; the value of Exit Script's result, when it gives one.
std::optional<Value> runScript(const Script& script, Evaluator& evaluator, ScriptHost& host);

}  // namespace host
