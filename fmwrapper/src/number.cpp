#include "number.h"

#include <charconv>
#include <string>

namespace fmwrapper::detail {
namespace {

struct Mpz {
  Mpz() { mpz_init(v); }
  ~Mpz() { mpz_clear(v); }
  Mpz(const Mpz&) = delete;
  Mpz& operator=(const Mpz&) = delete;
  mpz_t v;
};

// Up to 18 digits fit a long without overflow: the common case needs neither a digit string nor
// a big-number parse.
constexpr std::size_t kMachineDigits = 18;

bool parseShortNumber(std::u16string_view text, mpq_t out) {
  long value = 0;
  unsigned long scale = 1;
  std::size_t digits = 0;
  bool seenPoint = false;
  bool negative = false;
  for (char16_t c : text) {
    if (c >= u'0' && c <= u'9') {
      if (++digits > kMachineDigits) return false;
      value = value * 10 + (c - u'0');
      if (seenPoint) scale *= 10;
    } else if (c == u'.' && !seenPoint) {
      seenPoint = true;
    } else if (c == u'-' && digits == 0) {
      negative = true;
    }
  }
  mpq_set_si(out, negative ? -value : value, scale);
  mpq_canonicalize(out);
  return true;
}

}  // namespace

void parseNumber(std::u16string_view text, mpq_t out) {
  if (parseShortNumber(text, out)) return;
  std::string digits;
  std::size_t fractionDigits = 0;
  bool seenPoint = false;
  bool negative = false;
  for (char16_t c : text) {
    if (c >= u'0' && c <= u'9') {
      digits.push_back(static_cast<char>(c));
      if (seenPoint) ++fractionDigits;
    } else if (c == u'.' && !seenPoint) {
      seenPoint = true;
    } else if (c == u'-' && digits.empty()) {
      negative = true;
    }
  }
  if (digits.empty()) {
    mpq_set_ui(out, 0, 1);
    return;
  }
  Mpz num;
  Mpz den;
  mpz_set_str(num.v, digits.c_str(), 10);
  mpz_ui_pow_ui(den.v, 10, fractionDigits);
  if (negative) mpz_neg(num.v, num.v);
  mpq_set_num(out, num.v);
  mpq_set_den(out, den.v);
  mpq_canonicalize(out);
}

void roundToPlaces(mpq_t v, fmx::int32 places) {
  if (places < 0) places = 0;
  Mpz scale;
  mpz_ui_pow_ui(scale.v, 10, static_cast<unsigned long>(places));
  // n = |v| * 10^places + 1/2, truncated.
  mpq_t t;
  mpq_init(t);
  mpq_abs(t, v);
  mpz_mul(mpq_numref(t), mpq_numref(t), scale.v);
  mpz_mul_ui(mpq_numref(t), mpq_numref(t), 2);
  mpz_add(mpq_numref(t), mpq_numref(t), mpq_denref(t));
  mpz_mul_ui(mpq_denref(t), mpq_denref(t), 2);
  Mpz n;
  mpz_tdiv_q(n.v, mpq_numref(t), mpq_denref(t));
  if (mpq_sgn(v) < 0) mpz_neg(n.v, n.v);
  mpq_clear(t);
  mpq_set_num(v, n.v);
  mpq_set_den(v, scale.v);
  mpq_canonicalize(v);
}

std::u16string formatNumber(const mpq_t value, fmx::int32 places) {
  if (mpz_cmp_ui(mpq_denref(value), 1) == 0 && mpz_fits_slong_p(mpq_numref(value))) {
    // A whole number rounds to itself at any number of places.
    char digits[24];
    const char* end =
        std::to_chars(digits, digits + sizeof digits, mpz_get_si(mpq_numref(value))).ptr;
    return std::u16string(static_cast<const char*>(digits), end);
  }
  if (places < 0) places = 0;
  mpq_t v;
  mpq_init(v);
  mpq_set(v, value);
  roundToPlaces(v, places);
  const bool negative = mpq_sgn(v) < 0;
  mpq_abs(v, v);
  Mpz scale;
  Mpz scaled;
  mpz_ui_pow_ui(scale.v, 10, static_cast<unsigned long>(places));
  mpz_mul(scaled.v, mpq_numref(v), scale.v);
  mpz_tdiv_q(scaled.v, scaled.v, mpq_denref(v));
  mpq_clear(v);

  std::string digits(mpz_sizeinbase(scaled.v, 10) + 2, '\0');
  mpz_get_str(digits.data(), 10, scaled.v);
  digits.resize(std::char_traits<char>::length(digits.c_str()));
  const auto p = static_cast<std::size_t>(places);
  if (digits.size() <= p) digits.insert(0, p + 1 - digits.size(), '0');
  std::string whole = digits.substr(0, digits.size() - p);
  std::string fraction = digits.substr(digits.size() - p);
  while (!fraction.empty() && fraction.back() == '0') fraction.pop_back();

  std::string out;
  if (negative && (whole != "0" || !fraction.empty())) out.push_back('-');
  out += whole;
  if (!fraction.empty()) out += "." + fraction;
  return std::u16string(out.begin(), out.end());
}

}  // namespace fmwrapper::detail
