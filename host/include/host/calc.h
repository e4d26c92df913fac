// Calculations in the host application's syntax: the syntax tree, the parser and the evaluator.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/value.h"

namespace host {

struct Loc {
  int line = 1;
  int column = 1;
};

// A calculation or script that cannot be parsed or evaluated; the message names no location, the
// caller adds the file name and `loc`.
class CalcError : public std::runtime_error {
 public:
  CalcError(Loc loc, const std::string& message) : std::runtime_error(message), loc_(loc) {}
  Loc loc() const { return loc_; }

 private:
  Loc loc_;
};

struct Expr;
using ExprPtr = std::unique_ptr<Expr>;
class ExternalFunctions;

// What a call's name was found to be, kept in its node so that evaluating the node again (a loop
// may do so a million times) skips the check and the look-ups. It holds for the function set it
// was found in.
struct CallSite {
  bool found = false;
  const ExternalFunctions* external = nullptr;
  std::uint64_t generation = 0;  // of `external` when found
  std::u16string folded;         // the name in folded case
  bool builtin = false;
  int function = -1;  // the external function, as ExternalFunctions::resolve answered
};

struct Expr {
  enum class Kind { Literal, Variable, Name, Call, Unary, Binary, List };
  Kind kind = Kind::Literal;
  Loc loc;
  Value value;          // Literal
  std::u16string name;  // Variable ("$x", "$$x"), Name, Call (as written)
  std::string op;       // Unary, Binary: "-", "+", "*", "/", "^", "&", "=", "<>", "<", ">", "<=",
                        // ">=", "and", "or", "xor", "not"
  std::vector<ExprPtr> args;  // Call arguments, operands, List elements
  int depth = 1;              // of the operator chain below, which the parser bounds
  mutable CallSite site;      // Call
};

// Source text as characters, with line and column bookkeeping; shared by calculations and scripts.
class Source {
 public:
  explicit Source(std::string_view utf8);
  const std::u32string& text() const { return text_; }
  Loc locAt(size_t pos) const;

 private:
  std::u32string text_;
  std::vector<size_t> lineStarts_;
};

// Parses one expression starting at `pos`. Inside brackets and parentheses line breaks are blanks;
// outside them a line break ends the expression. On return `pos` is where the next token starts.
ExprPtr parseExpression(const Source& source, size_t& pos, bool insideBrackets);
// Parses a whole text as one calculation (the --eval form; line breaks are blanks); anything after
// it is an error.
ExprPtr parseCalculation(const Source& source);

// Functions the evaluator does not know itself: the plug-in's registered functions.
class ExternalFunctions {
 public:
  struct Range {
    int min = 0;
    int max = 0;  // -1: no upper limit
  };
  virtual ~ExternalFunctions() = default;
  // The allowed argument counts of every registration under that name (ignoring case); empty when
  // the name is unknown.
  virtual std::vector<Range> lookup(std::u16string_view name) = 0;
  virtual Value call(std::u16string_view name, const std::vector<Value>& args) = 0;
  // A number, unique in the process, that changes whenever the set of functions does: what
  // resolve answers holds while it stays the same.
  virtual std::uint64_t generation() const = 0;
  // The function `call` runs for that name and argument count, or -1 (then callResolved answers
  // what `call` answers for an unknown function).
  virtual int resolve(std::u16string_view name, int count) = 0;
  virtual Value callResolved(int function, const std::vector<Value>& args) = 0;
};

// "takes 0 or 1 arguments", "takes 2 to 6 arguments", "takes 1 argument".
std::string describeCounts(const std::vector<ExternalFunctions::Range>& ranges);

class Evaluator {
 public:
  explicit Evaluator(ExternalFunctions* external = nullptr) : external_(external) {}

  Value evaluate(const Expr& e);
  // Checks, before running, that every function called exists and accepts its argument count.
  void check(const Expr& e);

  void setVariable(std::u16string_view name, Value v);
  Value variable(std::u16string_view name) const;
  // Script variables ($x) belong to one script run; globals ($$x) live as long as the evaluator.
  void clearLocals() { locals_.clear(); }
  // ReadFileAsContainer reads the file system unless this is turned off (the fuzzer does).
  void allowFiles(bool allow) { allowFiles_ = allow; }
  // Names of the built-in functions, for the prompt's help.
  static std::vector<std::string> builtinNames();

 private:
  using Frame = std::map<std::u16string, Value>;
  Value call(const Expr& e);
  Value callBuiltin(const Expr& e, std::u16string_view folded);
  Value evalLet(const Expr& e);
  std::vector<Value> evalArgs(const Expr& e);
  Value binary(const Expr& e);

  ExternalFunctions* external_;
  bool allowFiles_ = true;
  Frame globals_;
  Frame locals_;
  std::vector<Frame> letFrames_;
};

}  // namespace host
