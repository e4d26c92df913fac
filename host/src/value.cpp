#include "host/value.h"

#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>

#include <utility>

namespace host {

Value Value::text(std::u16string t) {
  Value v;
  v.kind_ = Kind::Text;
  v.text_ = std::move(t);
  return v;
}

Value Value::fromUtf8(std::string_view t) {
  return text(utf8ToUtf16(t));
}

Value Value::number(Number n) {
  Value v;
  v.kind_ = Kind::Numeric;
  v.number_ = std::move(n);
  return v;
}

Value Value::container(std::vector<Stream> streams) {
  Value v;
  v.kind_ = Kind::Container;
  v.streams_ = std::move(streams);
  return v;
}

std::u16string Value::toText() const {
  switch (kind_) {
    case Kind::Text:
      return text_;
    case Kind::Numeric:
      return formatNumber(*number_);
    case Kind::Container:
      for (const Stream& s : streams_) {
        if (s.type == "FNAM") return utf8ToUtf16(s.bytes);
      }
      return {};
  }
  return {};
}

std::string Value::toUtf8() const {
  return utf16ToUtf8(toText());
}

std::optional<Number> Value::toNumberOpt() const {
  if (kind_ == Kind::Numeric) return *number_;
  return parseNumberText(toText());
}

Number Value::toNumber() const {
  if (kind_ == Kind::Numeric) return *number_;
  return parseNumberText(toText()).value_or(Number(0));
}

bool Value::toBool() const {
  return sgn(toNumber()) != 0;
}

bool Value::isEmpty() const {
  switch (kind_) {
    case Kind::Text:
      return text_.empty();
    case Kind::Numeric:
      return false;
    case Kind::Container:
      return streams_.empty();
  }
  return true;
}

std::u16string formatNumber(const Number& n) {
  static const mpz_class scale = [] {
    mpz_class s;
    mpz_ui_pow_ui(s.get_mpz_t(), 10, 16);
    return s;
  }();
  const bool negative = sgn(n) < 0;
  mpq_class scaled = abs(n) * scale;
  // Round half away from zero: floor(scaled + 1/2) on the magnitude.
  mpq_class half(1, 2);
  scaled += half;
  mpz_class whole;
  mpz_fdiv_q(whole.get_mpz_t(), scaled.get_num_mpz_t(), scaled.get_den_mpz_t());
  std::string digits = whole.get_str();
  if (whole == 0) return u"0";
  if (digits.size() <= 16) digits.insert(0, 17 - digits.size(), '0');
  std::string intPart = digits.substr(0, digits.size() - 16);
  std::string frac = digits.substr(digits.size() - 16);
  while (!frac.empty() && frac.back() == '0') frac.pop_back();
  if (intPart == "0") intPart.clear();
  std::string out = negative ? "-" : "";
  out += intPart;
  if (!frac.empty()) out += "." + frac;
  return utf8ToUtf16(out);
}

std::optional<Number> parseNumberText(std::u16string_view text) {
  std::string intDigits, fracDigits;
  bool sawDigit = false, sawPoint = false, negative = false;
  for (char16_t c : text) {
    if (c >= u'0' && c <= u'9') {
      sawDigit = true;
      (sawPoint ? fracDigits : intDigits).push_back(static_cast<char>(c));
    } else if (c == u'.' && !sawPoint) {
      sawPoint = true;
    } else if (c == u'-' && !sawDigit) {
      negative = true;
    }
  }
  if (!sawDigit) return std::nullopt;
  Number n = parseNumberLiteral(intDigits + "." + fracDigits);
  if (negative) n = -n;
  return n;
}

Number parseNumberLiteral(std::string_view digits) {
  std::string intPart, fracPart;
  const size_t point = digits.find('.');
  intPart = std::string(digits.substr(0, point));
  if (point != std::string_view::npos) fracPart = std::string(digits.substr(point + 1));
  std::string all = intPart + fracPart;
  size_t first = all.find_first_not_of('0');
  all = first == std::string::npos ? "0" : all.substr(first);
  mpz_class num(all, 10);
  mpz_class den;
  mpz_ui_pow_ui(den.get_mpz_t(), 10, fracPart.size());
  Number n(num, den);
  n.canonicalize();
  return n;
}

std::u16string utf8ToUtf16(std::string_view s) {
  icu::UnicodeString u =
      icu::UnicodeString::fromUTF8(icu::StringPiece(s.data(), static_cast<int32_t>(s.size())));
  return std::u16string(reinterpret_cast<const char16_t*>(u.getBuffer()),
                        static_cast<size_t>(u.length()));
}

std::string utf16ToUtf8(std::u16string_view s) {
  icu::UnicodeString u(s.data(), static_cast<int32_t>(s.size()));
  std::string out;
  u.toUTF8String(out);
  return out;
}

int compareIgnoringCase(std::u16string_view a, std::u16string_view b) {
  icu::UnicodeString ua(a.data(), static_cast<int32_t>(a.size()));
  icu::UnicodeString ub(b.data(), static_cast<int32_t>(b.size()));
  return ua.caseCompare(ub, U_FOLD_CASE_DEFAULT);
}

std::u16string foldCase(std::u16string_view s) {
  icu::UnicodeString u(s.data(), static_cast<int32_t>(s.size()));
  u.foldCase(U_FOLD_CASE_DEFAULT);
  return std::u16string(reinterpret_cast<const char16_t*>(u.getBuffer()),
                        static_cast<size_t>(u.length()));
}

}  // namespace host
