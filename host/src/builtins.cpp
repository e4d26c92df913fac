// The built-in functions of the calculation language, and the dispatch of calls to them or to
// the plug-in's registered functions.
#include <unicode/unistr.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

#include "host/calc.h"
#include "host/container.h"

namespace host {

namespace {

struct Builtin {
  std::u16string_view name;  // in folded case
  int min;
  int max;  // -1: any number
};

constexpr Builtin kBuiltins[] = {
    {u"abs", 1, 1},
    {u"base64decode", 1, 2},
    {u"base64encode", 1, 1},
    {u"case", 2, -1},
    {u"char", 1, 1},
    {u"code", 1, 1},
    {u"exact", 2, 2},
    {u"getasnumber", 1, 1},
    {u"getastext", 1, 1},
    {u"getvalue", 2, 2},
    {u"if", 2, 3},
    {u"int", 1, 1},
    {u"isempty", 1, 1},
    {u"left", 2, 2},
    {u"length", 1, 1},
    {u"let", 2, 2},
    {u"list", 1, -1},
    {u"lower", 1, 1},
    {u"middle", 3, 3},
    {u"mod", 2, 2},
    {u"patterncount", 2, 2},
    {u"position", 4, 4},
    {u"readfileascontainer", 1, -1},
    {u"right", 2, 2},
    {u"round", 2, 2},
    {u"substitute", 3, -1},
    {u"trim", 1, 1},
    {u"upper", 1, 1},
    {u"valuecount", 1, 1},
};

const Builtin* findBuiltin(std::u16string_view folded) {
  for (const Builtin& b : kBuiltins) {
    if (b.name == folded) return &b;
  }
  return nullptr;
}

// Text positions count characters (code points), as a person counts them.
std::u32string chars(const std::u16string& s) {
  icu::UnicodeString u(s.data(), static_cast<int32_t>(s.size()));
  std::u32string out(static_cast<size_t>(u.countChar32()), U'\0');
  UErrorCode status = U_ZERO_ERROR;
  u.toUTF32(reinterpret_cast<UChar32*>(out.data()), static_cast<int32_t>(out.size()), status);
  return out;
}

std::u16string text16(std::u32string_view s) {
  icu::UnicodeString u = icu::UnicodeString::fromUTF32(reinterpret_cast<const UChar32*>(s.data()),
                                                       static_cast<int32_t>(s.size()));
  return std::u16string(reinterpret_cast<const char16_t*>(u.getBuffer()),
                        static_cast<size_t>(u.length()));
}

// A count or position argument: the number rounded down, clamped to a sane range.
long countArg(const Value& v) {
  Number n = v.toNumber();
  mpz_class f;
  mpz_fdiv_q(f.get_mpz_t(), n.get_num_mpz_t(), n.get_den_mpz_t());
  if (f > 1000000000) return 1000000000;
  if (f < -1000000000) return -1000000000;
  return f.get_si();
}

std::vector<std::u16string> splitValues(const std::u16string& list) {
  std::vector<std::u16string> values;
  if (list.empty()) return values;
  size_t start = 0;
  for (;;) {
    size_t end = list.find_first_of(u"\r\n", start);
    if (end == std::u16string::npos) {
      if (start < list.size()) values.push_back(list.substr(start));
      return values;
    }
    values.push_back(list.substr(start, end - start));
    start = end + 1;
    if (start == list.size()) return values;
  }
}

std::u16string substitute(const std::u16string& text, const std::u16string& search,
                          const std::u16string& replace) {
  if (search.empty()) return text;
  std::u16string out;
  size_t start = 0;
  for (;;) {
    size_t hit = text.find(search, start);
    if (hit == std::u16string::npos) break;
    out.append(text, start, hit - start);
    out += replace;
    start = hit + search.size();
  }
  out.append(text, start, std::u16string::npos);
  return out;
}

// Position ( text ; searchString ; start ; occurrence ), ignoring case; a negative occurrence
// searches backwards from start. 0 when not found.
long position(const std::u16string& text, const std::u16string& search, long start,
              long occurrence) {
  const std::u32string t = chars(foldCase(text)), s = chars(foldCase(search));
  if (s.empty() || occurrence == 0 || t.size() < s.size()) return 0;
  const long last = static_cast<long>(t.size() - s.size());
  long i = std::clamp(start - 1, 0L, last);
  const long step = occurrence > 0 ? 1 : -1;
  long remaining = occurrence > 0 ? occurrence : -occurrence;
  if (start - 1 > last && step > 0) return 0;
  for (; i >= 0 && i <= last; i += step) {
    if (t.compare(static_cast<size_t>(i), s.size(), s) == 0 && --remaining == 0) return i + 1;
  }
  return 0;
}

Number roundTo(const Number& n, long places) {
  mpz_class scale;
  mpz_ui_pow_ui(scale.get_mpz_t(), 10, static_cast<unsigned long>(places < 0 ? -places : places));
  Number scaled = places >= 0 ? Number(n * scale) : Number(n / scale);
  Number shifted = abs(scaled) + Number(1, 2);
  mpz_class whole;
  mpz_fdiv_q(whole.get_mpz_t(), shifted.get_num_mpz_t(), shifted.get_den_mpz_t());
  if (sgn(n) < 0) whole = -whole;
  Number r = places >= 0 ? Number(whole, scale) : Number(whole * scale);
  r.canonicalize();
  return r;
}

Number truncateNumber(const Number& n) {
  mpz_class q;
  mpz_tdiv_q(q.get_mpz_t(), n.get_num_mpz_t(), n.get_den_mpz_t());
  return Number(q);
}

std::string fileNameOf(const std::string& path) {
  const size_t slash = path.find_last_of('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

}  // namespace

std::vector<std::string> Evaluator::builtinNames() {
  static const char* const names[] = {"Abs",
                                      "Base64Decode",
                                      "Base64Encode",
                                      "Case",
                                      "Char",
                                      "Code",
                                      "Exact",
                                      "GetAsNumber",
                                      "GetAsText",
                                      "GetValue",
                                      "If",
                                      "Int",
                                      "IsEmpty",
                                      "Left",
                                      "Length",
                                      "Let",
                                      "List",
                                      "Lower",
                                      "Middle",
                                      "Mod",
                                      "PatternCount",
                                      "Position",
                                      "ReadFileAsContainer",
                                      "Right",
                                      "Round",
                                      "Substitute",
                                      "Trim",
                                      "Upper",
                                      "ValueCount"};
  return {std::begin(names), std::end(names)};
}

void Evaluator::check(const Expr& e) {
  for (const ExprPtr& a : e.args) check(*a);
  if (e.kind != Expr::Kind::Call) return;
  const std::u16string folded = foldCase(e.name);
  const int count = static_cast<int>(e.args.size());
  std::vector<ExternalFunctions::Range> ranges;
  if (const Builtin* b = findBuiltin(folded)) {
    ranges.push_back({b->min, b->max});
  } else if (external_) {
    ranges = external_->lookup(e.name);
  }
  if (ranges.empty()) {
    throw CalcError(e.loc, "unknown function \"" + utf16ToUtf8(e.name) + "\"");
  }
  for (const auto& r : ranges) {
    if (count >= r.min && (r.max < 0 || count <= r.max)) return;
  }
  throw CalcError(
      e.loc, utf16ToUtf8(e.name) + " " + describeCounts(ranges) + ", not " + std::to_string(count));
}

Value Evaluator::call(const Expr& e) {
  CallSite& site = e.site;
  const std::uint64_t generation = external_ ? external_->generation() : 0;
  if (!site.found || site.external != external_ || site.generation != generation) {
    check(e);  // the argument count and that the name is known, here and in the arguments
    site.folded = foldCase(e.name);
    site.builtin = findBuiltin(site.folded) != nullptr;
    site.function = site.builtin ? -1 : external_->resolve(e.name, static_cast<int>(e.args.size()));
    site.external = external_;
    site.generation = generation;
    site.found = true;
  }
  if (site.builtin) return callBuiltin(e, site.folded);
  std::vector<Value> args = evalArgs(e);
  return external_->callResolved(site.function, args);
}

Value Evaluator::evalLet(const Expr& e) {
  const Expr& defs = *e.args[0];
  std::vector<const Expr*> list;
  if (defs.kind == Expr::Kind::List) {
    for (const ExprPtr& d : defs.args) list.push_back(d.get());
  } else {
    list.push_back(&defs);
  }
  letFrames_.emplace_back();
  struct Pop {
    std::vector<Frame>& frames;
    ~Pop() { frames.pop_back(); }
  } pop{letFrames_};
  for (const Expr* d : list) {
    if (d->kind != Expr::Kind::Binary || d->op != "=" ||
        (d->args[0]->kind != Expr::Kind::Name && d->args[0]->kind != Expr::Kind::Variable)) {
      throw CalcError(d->loc, "Let expects definitions such as [ x = 1 ; $y = 2 ]");
    }
    Value v = evaluate(*d->args[1]);
    const Expr& target = *d->args[0];
    if (target.kind == Expr::Kind::Variable) {
      setVariable(target.name, std::move(v));
    } else {
      letFrames_.back()[foldCase(target.name)] = std::move(v);
    }
  }
  return evaluate(*e.args[1]);
}

Value Evaluator::callBuiltin(const Expr& e, std::u16string_view f) {
  // The lazy ones first: they evaluate only the arguments they need.
  if (f == u"if") {
    if (evaluate(*e.args[0]).toBool()) return evaluate(*e.args[1]);
    return e.args.size() > 2 ? evaluate(*e.args[2]) : Value();
  }
  if (f == u"case") {
    size_t i = 0;
    for (; i + 1 < e.args.size(); i += 2) {
      if (evaluate(*e.args[i]).toBool()) return evaluate(*e.args[i + 1]);
    }
    return i < e.args.size() ? evaluate(*e.args[i]) : Value();
  }
  if (f == u"let") return evalLet(e);
  if (f == u"substitute") {
    std::u16string text = evaluate(*e.args[0]).toText();
    std::vector<std::pair<const Expr*, const Expr*>> pairs;
    if (e.args.size() == 3 && e.args[1]->kind != Expr::Kind::List) {
      pairs.emplace_back(e.args[1].get(), e.args[2].get());
    } else {
      for (size_t i = 1; i < e.args.size(); ++i) {
        const Expr& p = *e.args[i];
        if (p.kind != Expr::Kind::List || p.args.size() != 2) {
          throw CalcError(p.loc, "Substitute expects pairs such as [ \"a\" ; \"b\" ]");
        }
        pairs.emplace_back(p.args[0].get(), p.args[1].get());
      }
    }
    for (auto [s, r] : pairs) text = substitute(text, evaluate(*s).toText(), evaluate(*r).toText());
    return Value::text(text);
  }

  std::vector<Value> a = evalArgs(e);
  if (f == u"length") return Value::number(static_cast<long>(chars(a[0].toText()).size()));
  if (f == u"left" || f == u"right") {
    const std::u32string t = chars(a[0].toText());
    const size_t n =
        static_cast<size_t>(std::clamp(countArg(a[1]), 0L, static_cast<long>(t.size())));
    return Value::text(text16(f == u"left" ? t.substr(0, n) : t.substr(t.size() - n)));
  }
  if (f == u"middle") {
    const std::u32string t = chars(a[0].toText());
    const long start = std::max(countArg(a[1]), 1L) - 1;
    const long n = std::max(countArg(a[2]), 0L);
    if (start >= static_cast<long>(t.size())) return Value::text(u"");
    return Value::text(text16(t.substr(static_cast<size_t>(start), static_cast<size_t>(n))));
  }
  if (f == u"position") {
    return Value::number(position(a[0].toText(), a[1].toText(), countArg(a[2]), countArg(a[3])));
  }
  if (f == u"patterncount") {
    const std::u16string t = foldCase(a[0].toText()), s = foldCase(a[1].toText());
    long n = 0;
    if (!s.empty()) {
      for (size_t i = t.find(s); i != std::u16string::npos; i = t.find(s, i + s.size())) ++n;
    }
    return Value::number(n);
  }
  if (f == u"char") {
    const long code = countArg(a[0]);
    if (code <= 0 || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return Value::text(u"");
    return Value::text(text16(std::u32string(1, static_cast<char32_t>(code))));
  }
  if (f == u"code") {
    const std::u32string t = chars(a[0].toText());
    if (t.empty()) return Value::number(0L);
    return Value::number(static_cast<long>(t[0]));
  }
  if (f == u"getvalue") {
    const std::vector<std::u16string> values = splitValues(a[0].toText());
    const long n = countArg(a[1]);
    if (n < 1 || n > static_cast<long>(values.size())) return Value::text(u"");
    return Value::text(values[static_cast<size_t>(n - 1)]);
  }
  if (f == u"valuecount")
    return Value::number(static_cast<long>(splitValues(a[0].toText()).size()));
  if (f == u"list") {
    std::u16string out;
    for (const Value& v : a) {
      std::u16string t = v.toText();
      if (t.empty()) continue;
      if (!out.empty()) out += u'\r';
      out += t;
    }
    return Value::text(out);
  }
  if (f == u"getasnumber") {
    std::optional<Number> n = a[0].toNumberOpt();
    return n ? Value::number(*n) : Value::text(u"");
  }
  if (f == u"getastext") return Value::text(a[0].toText());
  if (f == u"isempty") return Value::number(a[0].isEmpty() || a[0].toText().empty() ? 1L : 0L);
  if (f == u"exact") return Value::number(a[0].toText() == a[1].toText() ? 1L : 0L);
  if (f == u"upper" || f == u"lower") {
    const std::u16string t = a[0].toText();
    icu::UnicodeString u(t.data(), static_cast<int32_t>(t.size()));
    if (f == u"upper")
      u.toUpper();
    else
      u.toLower();
    return Value::text(std::u16string(reinterpret_cast<const char16_t*>(u.getBuffer()),
                                      static_cast<size_t>(u.length())));
  }
  if (f == u"trim") {
    const std::u16string t = a[0].toText();
    const size_t b = t.find_first_not_of(u' ');
    if (b == std::u16string::npos) return Value::text(u"");
    return Value::text(t.substr(b, t.find_last_not_of(u' ') - b + 1));
  }
  if (f == u"abs") return Value::number(abs(a[0].toNumber()));
  if (f == u"int") return Value::number(truncateNumber(a[0].toNumber()));
  if (f == u"round")
    return Value::number(roundTo(a[0].toNumber(), std::clamp(countArg(a[1]), -400L, 400L)));
  if (f == u"mod") {
    const Number x = a[0].toNumber(), y = a[1].toNumber();
    if (sgn(y) == 0) return Value::text(u"?");
    Number q = x / y;
    mpz_class fl;
    mpz_fdiv_q(fl.get_mpz_t(), q.get_num_mpz_t(), q.get_den_mpz_t());
    return Value::number(Number(x - y * Number(fl)));
  }
  if (f == u"base64encode") {
    if (a[0].isContainer()) {
      const auto& s = a[0].streams();
      return Value::fromUtf8(s.empty() ? "" : base64Encode(s.front().bytes));
    }
    return Value::fromUtf8(base64Encode(a[0].toUtf8()));
  }
  if (f == u"base64decode") {
    std::optional<std::string> bytes = base64Decode(a[0].toText());
    if (!bytes) return Value::text(u"?");
    if (a.size() < 2) return Value::fromUtf8(*bytes);
    return makeContainer(a[1].toUtf8(), std::move(*bytes));
  }
  if (f == u"readfileascontainer") {
    if (!allowFiles_) return Value::text(u"?");
    // The first file makes the container; each further one adds its main stream, as a picture
    // pasted on some platforms arrives in several formats at once.
    std::vector<Stream> streams;
    for (const Value& arg : a) {
      const std::string path = arg.toUtf8();
      std::ifstream in(path, std::ios::binary);
      if (!in) throw CalcError(e.loc, "ReadFileAsContainer cannot read the file \"" + path + "\"");
      std::ostringstream bytes;
      bytes << in.rdbuf();
      Value file = makeContainer(fileNameOf(path), bytes.str());
      if (streams.empty()) {
        streams = file.streams();
      } else {
        streams.push_back(file.streams().front());
      }
    }
    return Value::container(std::move(streams));
  }
  throw CalcError(e.loc, "unknown function \"" + utf16ToUtf8(e.name) + "\"");
}

}  // namespace host
