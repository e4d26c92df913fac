// Parsing and running scripts: one step per line, "Name [ arguments ]" or a bare expression.
#include "host/script.h"

#include <array>

namespace host {

namespace {

struct StepName {
  std::u32string_view text;
  Step::Kind kind;
  bool bracket;  // takes "[ ... ]"
};

// Longer names first so that "Else If" wins over "Else" and "End If" over "If"-like prefixes.
constexpr std::array<StepName, 10> kStepNames{{
    {U"set variable", Step::Kind::SetVariable, true},
    {U"pause/resume script", Step::Kind::Pause, true},
    {U"exit loop if", Step::Kind::ExitLoopIf, true},
    {U"exit script", Step::Kind::ExitScript, true},
    {U"else if", Step::Kind::ElseIf, true},
    {U"end loop", Step::Kind::EndLoop, false},
    {U"end if", Step::Kind::EndIf, false},
    {U"else", Step::Kind::Else, false},
    {U"loop", Step::Kind::Loop, false},
    {U"if", Step::Kind::If, true},
}};

char32_t lowerAscii(char32_t c) {
  return c >= U'A' && c <= U'Z' ? c + 32 : c;
}

bool isAsciiLetter(char32_t c) {
  return (c >= U'A' && c <= U'Z') || (c >= U'a' && c <= U'z');
}

class ScriptParser {
 public:
  explicit ScriptParser(std::string_view utf8) : src_(utf8), s_(src_.text()) {}

  Script parse() {
    while (pos_ < s_.size()) {
      skipBlanks();
      if (pos_ >= s_.size()) break;
      if (s_[pos_] == U'\n') {
        ++pos_;
        continue;
      }
      if (s_[pos_] == U'#') {
        while (pos_ < s_.size() && s_[pos_] != U'\n') ++pos_;
        continue;
      }
      parseStep();
    }
    if (!open_.empty()) {
      const Step& s = script_.steps[open_.back()];
      fail(s.loc, s.kind == Step::Kind::Loop ? "Loop has no End Loop" : "If has no End If");
    }
    return std::move(script_);
  }

 private:
  [[noreturn]] void fail(Loc loc, const std::string& msg) const { throw CalcError(loc, msg); }
  [[noreturn]] void failAt(size_t pos, const std::string& msg) const { fail(src_.locAt(pos), msg); }

  void skipBlanks() {
    while (pos_ < s_.size() && (s_[pos_] == U' ' || s_[pos_] == U'\t' || s_[pos_] == U'\r')) ++pos_;
  }
  void skipAllBlanks() {
    while (pos_ < s_.size() &&
           (s_[pos_] == U' ' || s_[pos_] == U'\t' || s_[pos_] == U'\r' || s_[pos_] == U'\n')) {
      ++pos_;
    }
  }

  // Matches `word` case-insensitively at the current position (blanks inside `word` match any
  // run of blanks), and moves past it.
  bool matchWord(std::u32string_view word) {
    size_t p = pos_;
    for (char32_t w : word) {
      if (w == U' ') {
        if (p >= s_.size() || (s_[p] != U' ' && s_[p] != U'\t')) return false;
        while (p < s_.size() && (s_[p] == U' ' || s_[p] == U'\t')) ++p;
        continue;
      }
      if (p >= s_.size() || lowerAscii(s_[p]) != w) return false;
      ++p;
    }
    pos_ = p;
    return true;
  }

  bool atLineEnd() const { return pos_ >= s_.size() || s_[pos_] == U'\n'; }

  void endOfLine() {
    skipBlanks();
    if (!atLineEnd()) failAt(pos_, "unexpected text after the step");
  }

  ExprPtr expression(bool insideBrackets) {
    skipAllBlanks();
    return parseExpression(src_, pos_, insideBrackets);
  }

  void expectChar(char32_t c, const std::string& what) {
    skipAllBlanks();
    if (pos_ >= s_.size() || s_[pos_] != c) failAt(pos_, "expected " + what);
    ++pos_;
  }

  void parseStep() {
    const size_t start = pos_;
    Step step;
    step.loc = src_.locAt(start);
    for (const StepName& name : kStepNames) {
      pos_ = start;
      if (!matchWord(name.text)) continue;
      const size_t afterName = pos_;
      skipBlanks();
      const bool bracket = pos_ < s_.size() && s_[pos_] == U'[';
      if (!bracket && !atLineEnd()) continue;  // "If ( ..." is the If function in an expression
      if (name.bracket && !bracket && name.kind != Step::Kind::ExitScript) {
        failAt(afterName, "expected \"[\" after the step name");
      }
      if (!name.bracket && bracket) failAt(pos_, "this step takes no \"[ ]\"");
      step.kind = name.kind;
      if (bracket) {
        ++pos_;
        parseArguments(step);
        expectChar(U']', "\"]\" to close the step");
      }
      endOfLine();
      addStep(std::move(step));
      return;
    }
    pos_ = start;
    // Words and then "[" are a script step, never a calculation: one this host does not know.
    size_t p = pos_;
    while (p < s_.size() &&
           (isAsciiLetter(s_[p]) || s_[p] == U' ' || s_[p] == U'\t' || s_[p] == U'/'))
      ++p;
    if (p > pos_ && p < s_.size() && s_[p] == U'[' && isAsciiLetter(s_[pos_])) {
      std::string name;
      for (size_t i = pos_; i < p; ++i) name += static_cast<char>(s_[i]);
      name.erase(name.find_last_not_of(" \t") + 1);
      fail(step.loc, "unknown script step \"" + name + "\"");
    }
    step.kind = Step::Kind::Expression;
    step.expr = parseExpression(src_, pos_, false);
    endOfLine();
    addStep(std::move(step));
  }

  void optionalLabel(std::u32string_view label) {
    skipAllBlanks();
    matchWord(label);
  }

  void parseArguments(Step& step) {
    switch (step.kind) {
      case Step::Kind::SetVariable: {
        skipAllBlanks();
        const size_t p = pos_;
        if (p >= s_.size() || s_[p] != U'$') failAt(p, "expected a variable name such as $result");
        size_t e = p + 1;
        if (e < s_.size() && s_[e] == U'$') ++e;
        while (e < s_.size() && s_[e] != U';' && s_[e] != U']' && s_[e] != U' ' && s_[e] != U'\t' &&
               s_[e] != U'\n' && s_[e] != U'\r') {
          ++e;
        }
        if (e == p + 1 || (e == p + 2 && s_[p + 1] == U'$')) {
          failAt(p, "expected a variable name such as $result");
        }
        const std::u32string name = s_.substr(p, e - p);
        for (char32_t c : name) step.variable += static_cast<char16_t>(c <= 0xFFFF ? c : U'?');
        pos_ = e;
        expectChar(U';', "\";\" after the variable name");
        optionalLabel(U"value:");
        step.expr = expression(true);
        break;
      }
      case Step::Kind::Pause:
        optionalLabel(U"duration (seconds):");
        step.expr = expression(true);
        break;
      case Step::Kind::ExitScript:
        optionalLabel(U"text result:");
        skipAllBlanks();
        if (pos_ < s_.size() && s_[pos_] == U']') break;
        step.expr = expression(true);
        break;
      default:
        step.expr = expression(true);
        break;
    }
  }

  void addStep(Step step) {
    const size_t index = script_.steps.size();
    auto& steps = script_.steps;
    auto openKind = [&]() {
      return open_.empty() ? Step::Kind::Expression : steps[open_.back()].kind;
    };
    auto inIf = [&]() {
      const Step::Kind k = openKind();
      return k == Step::Kind::If || k == Step::Kind::ElseIf || k == Step::Kind::Else;
    };
    switch (step.kind) {
      case Step::Kind::If:
      case Step::Kind::Loop:
        open_.push_back(index);
        break;
      case Step::Kind::ElseIf:
      case Step::Kind::Else:
        if (!inIf())
          fail(step.loc,
               std::string(step.kind == Step::Kind::Else ? "Else" : "Else If") + " without If");
        if (openKind() == Step::Kind::Else) fail(step.loc, "nothing may follow Else before End If");
        steps[open_.back()].next = index;
        open_.back() = index;
        break;
      case Step::Kind::EndIf:
        if (!inIf()) fail(step.loc, "End If without If");
        steps[open_.back()].next = index;
        open_.pop_back();
        break;
      case Step::Kind::ExitLoopIf:
        if (loops_.empty()) fail(step.loc, "Exit Loop If outside a loop");
        exits_.back().push_back(index);
        break;
      case Step::Kind::EndLoop: {
        if (openKind() != Step::Kind::Loop) fail(step.loc, "End Loop without Loop");
        const size_t loop = open_.back();
        open_.pop_back();
        steps[loop].next = index;
        step.next = loop;
        for (size_t e : exits_.back()) steps[e].next = index;
        exits_.pop_back();
        loops_.pop_back();
        break;
      }
      default:
        break;
    }
    if (step.kind == Step::Kind::Loop) {
      loops_.push_back(index);
      exits_.emplace_back();
    }
    steps.push_back(std::move(step));
  }

  Source src_;
  const std::u32string& s_;
  size_t pos_ = 0;
  Script script_;
  std::vector<size_t> open_;   // open If/Else If/Else/Loop steps
  std::vector<size_t> loops_;  // open loops
  std::vector<std::vector<size_t>> exits_;
};

}  // namespace

Script parseScript(std::string_view utf8) {
  return ScriptParser(utf8).parse();
}

std::optional<Value> runScript(const Script& script, Evaluator& ev, ScriptHost& host) {
  const auto& steps = script.steps;
  // From an If or Else If whose condition failed: find the branch that runs.
  auto takeBranch = [&](size_t i) {
    for (;;) {
      const Step& s = steps[i];
      if (s.kind == Step::Kind::ElseIf) {
        if (ev.evaluate(*s.expr).toBool()) return i + 1;
        i = s.next;
      } else {
        return i + 1;  // Else or End If
      }
    }
  };
  // After a branch ran: move past its End If.
  auto skipToEndIf = [&](size_t i) {
    while (steps[i].kind != Step::Kind::EndIf) i = steps[i].next;
    return i + 1;
  };
  size_t pc = 0;
  while (pc < steps.size()) {
    const Step& s = steps[pc];
    size_t next = pc + 1;
    switch (s.kind) {
      case Step::Kind::SetVariable:
        ev.setVariable(s.variable, ev.evaluate(*s.expr));
        break;
      case Step::Kind::If:
        if (!ev.evaluate(*s.expr).toBool()) next = takeBranch(s.next);
        break;
      case Step::Kind::ElseIf:
      case Step::Kind::Else:
        next = skipToEndIf(pc);
        break;
      case Step::Kind::EndIf:
      case Step::Kind::Loop:
        break;
      case Step::Kind::ExitLoopIf:
        if (ev.evaluate(*s.expr).toBool()) next = s.next + 1;
        break;
      case Step::Kind::EndLoop:
        next = s.next + 1;
        break;
      case Step::Kind::Pause:
        host.pause(ev.evaluate(*s.expr).toNumber());
        break;
      case Step::Kind::ExitScript:
        if (!s.expr) return std::nullopt;
        return ev.evaluate(*s.expr);
      case Step::Kind::Expression:
        host.print(ev.evaluate(*s.expr));
        break;
    }
    host.afterStep();
    pc = next;
  }
  return std::nullopt;
}

}  // namespace host
