// Evaluation of calculations: operators, variables, Let scopes and calls.
#include <cmath>

#include "host/calc.h"

namespace host {

namespace {

// A number literal that a text holds exactly (blanks around it allowed), for comparisons of a
// number with a text such as a plug-in's result.
std::optional<Number> exactNumber(std::u16string_view t) {
  size_t b = t.find_first_not_of(u" \t\r");
  size_t e = t.find_last_not_of(u" \t\r");
  if (b == std::u16string_view::npos) return std::nullopt;
  t = t.substr(b, e - b + 1);
  bool negative = false;
  if (t[0] == u'-') {
    negative = true;
    t.remove_prefix(1);
  }
  bool digit = false, point = false;
  for (char16_t c : t) {
    if (c >= u'0' && c <= u'9')
      digit = true;
    else if (c == u'.' && !point)
      point = true;
    else
      return std::nullopt;
  }
  if (!digit) return std::nullopt;
  Number n = parseNumberLiteral(utf16ToUtf8(t));
  return negative ? Number(-n) : n;
}

int compareValues(const Value& a, const Value& b) {
  std::optional<Number> na, nb;
  if (a.isNumber() && b.isNumber()) {
    na = a.toNumber();
    nb = b.toNumber();
  } else if (a.isNumber() && b.isText()) {
    na = a.toNumber();
    nb = exactNumber(b.toText());
  } else if (a.isText() && b.isNumber()) {
    na = exactNumber(a.toText());
    nb = b.toNumber();
  }
  if (na && nb) return cmp(*na, *nb);
  return compareIgnoringCase(a.toText(), b.toText());
}

Value boolValue(bool b) {
  return Value::number(b ? 1L : 0L);
}

Value power(const Number& base, const Number& exponent) {
  if (exponent.get_den() == 1 && abs(exponent) <= 4096) {
    const long e = exponent.get_num().get_si();
    if (e < 0 && sgn(base) == 0) return Value::text(u"?");
    mpz_class num, den;
    const unsigned long ue = static_cast<unsigned long>(e < 0 ? -e : e);
    mpz_pow_ui(num.get_mpz_t(), base.get_num_mpz_t(), ue);
    mpz_pow_ui(den.get_mpz_t(), base.get_den_mpz_t(), ue);
    Number r = e < 0 ? Number(den, num) : Number(num, den);
    r.canonicalize();
    return Value::number(r);
  }
  const double d = std::pow(base.get_d(), exponent.get_d());
  if (!std::isfinite(d)) return Value::text(u"?");
  return Value::number(Number(d));
}

}  // namespace

std::string describeCounts(const std::vector<ExternalFunctions::Range>& ranges) {
  std::string out = "takes ";
  bool plural = false;
  for (size_t i = 0; i < ranges.size(); ++i) {
    if (i > 0) out += " or ";
    const auto& r = ranges[i];
    if (r.max < 0) {
      out += std::to_string(r.min) + " or more";
      plural = true;
    } else if (r.min == r.max) {
      out += std::to_string(r.min);
      plural = plural || r.min != 1 || ranges.size() > 1;
    } else {
      out += std::to_string(r.min) + " to " + std::to_string(r.max);
      plural = true;
    }
  }
  return out + (plural ? " arguments" : " argument");
}

void Evaluator::setVariable(std::u16string_view name, Value v) {
  std::u16string key = foldCase(name);
  if (key.rfind(u"$$", 0) == 0) {
    globals_[key] = std::move(v);
  } else {
    locals_[key] = std::move(v);
  }
}

Value Evaluator::variable(std::u16string_view name) const {
  std::u16string key = foldCase(name);
  const Frame& frame = key.rfind(u"$$", 0) == 0 ? globals_ : locals_;
  auto it = frame.find(key);
  return it == frame.end() ? Value() : it->second;
}

Value Evaluator::evaluate(const Expr& e) {
  switch (e.kind) {
    case Expr::Kind::Literal:
      return e.value;
    case Expr::Kind::Variable:
      return variable(e.name);
    case Expr::Kind::Name: {
      const std::u16string key = foldCase(e.name);
      for (auto it = letFrames_.rbegin(); it != letFrames_.rend(); ++it) {
        auto found = it->find(key);
        if (found != it->end()) return found->second;
      }
      throw CalcError(e.loc, "unknown name \"" + utf16ToUtf8(e.name) +
                                 "\" (variables start with $, texts are quoted)");
    }
    case Expr::Kind::List:
      throw CalcError(e.loc, "a list in brackets is allowed only in Let and Substitute");
    case Expr::Kind::Call:
      return call(e);
    case Expr::Kind::Unary: {
      Value v = evaluate(*e.args[0]);
      if (e.op == "not") return boolValue(!v.toBool());
      if (e.op == "-") return Value::number(-v.toNumber());
      return Value::number(v.toNumber());
    }
    case Expr::Kind::Binary:
      return binary(e);
  }
  return Value();
}

Value Evaluator::binary(const Expr& e) {
  const std::string& op = e.op;
  if (op == "and" || op == "or") {
    const bool l = evaluate(*e.args[0]).toBool();
    if (op == "and" && !l) return boolValue(false);
    if (op == "or" && l) return boolValue(true);
    return boolValue(evaluate(*e.args[1]).toBool());
  }
  Value l = evaluate(*e.args[0]);
  Value r = evaluate(*e.args[1]);
  if (op == "xor") return boolValue(l.toBool() != r.toBool());
  if (op == "&") {
    return Value::text(l.toText() + r.toText());
  }
  if (op == "=") return boolValue(compareValues(l, r) == 0);
  if (op == "<>") return boolValue(compareValues(l, r) != 0);
  if (op == "<") return boolValue(compareValues(l, r) < 0);
  if (op == ">") return boolValue(compareValues(l, r) > 0);
  if (op == "<=") return boolValue(compareValues(l, r) <= 0);
  if (op == ">=") return boolValue(compareValues(l, r) >= 0);
  const Number a = l.toNumber(), b = r.toNumber();
  if (op == "+") return Value::number(a + b);
  if (op == "-") return Value::number(a - b);
  if (op == "*") return Value::number(a * b);
  if (op == "/") {
    if (sgn(b) == 0) return Value::text(u"?");
    return Value::number(a / b);
  }
  if (op == "^") return power(a, b);
  throw CalcError(e.loc, "unknown operator " + op);
}

std::vector<Value> Evaluator::evalArgs(const Expr& e) {
  std::vector<Value> args;
  args.reserve(e.args.size());
  for (const ExprPtr& a : e.args) {
    if (a->kind == Expr::Kind::List) {
      throw CalcError(a->loc, "a list in brackets is allowed only in Let and Substitute");
    }
    args.push_back(evaluate(*a));
  }
  return args;
}

}  // namespace host
