// fmx::FixPt: exact rational numbers (GMP). Sums, differences and products are exact; a quotient
// is rounded to the dividend's precision in decimal places, halves away from zero. Conversions to
// whole numbers truncate toward zero and clamp to the target's range.
#include <charconv>
#include <cmath>
#include <limits>

#include "impl.h"
#include "number.h"

using namespace fmwrapper::detail;
using fmx::_fmxcpt;
using fmx::int32;
using fmx::int64;

namespace {

// The host keeps between 0 and 400 decimal places.
int32 clampPrecision(int32 p) {
  return p < 0 ? 0 : (p > 400 ? 400 : p);
}

FixPtObj& self(void* p) {
  return *static_cast<FixPtObj*>(p);
}
const FixPtObj& self(const void* p) {
  return *static_cast<const FixPtObj*>(p);
}

std::unique_ptr<FixPtObj> make(int32 val, int32 precision) {
  auto o = std::make_unique<FixPtObj>();
  mpq_set_si(o->v, val, 1);
  o->precision = clampPrecision(precision);
  return o;
}

// The whole part, truncated toward zero, clamped to [lo, hi].
int64 truncated(const mpq_t v, int64 lo, int64 hi) {
  mpz_t q;
  mpz_init(q);
  mpz_tdiv_q(q, mpq_numref(v), mpq_denref(v));
  int64 r;
  if (!mpz_fits_slong_p(q)) {
    r = mpz_sgn(q) < 0 ? lo : hi;
  } else {
    r = mpz_get_si(q);
    r = r < lo ? lo : (r > hi ? hi : r);
  }
  mpz_clear(q);
  return r;
}

}  // namespace

extern "C" {

fmx::FixPt* FM_FixPt_Constructor1(int32 val, int32 precision, _fmxcpt& _x) noexcept {
  return construct<fmx::FixPt, FixPtObj>(_x, [&] { return make(val, precision); });
}

fmx::FixPt* FM_FixPt_Constructor2(int32 val, const fmx::FixPt& precisionExample,
                                  _fmxcpt& _x) noexcept {
  return construct<fmx::FixPt, FixPtObj>(
      _x, [&] { return make(val, fixpt(precisionExample).precision); });
}

void FM_FixPt_AssignInt(void* p, int32 that, _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] { mpq_set_si(self(p).v, that, 1); });
}

void FM_FixPt_AssignInt64(void* p, int64 that, _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] {
    static_assert(sizeof(long) == sizeof(int64));
    mpq_set_si(self(p).v, static_cast<long>(that), 1);
  });
}

// Takes the shortest decimal that reads back as the same double, so 0.1 becomes exactly 1/10.
void FM_FixPt_AssignDouble(void* p, double that, _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] {
    if (!std::isfinite(that)) throw BadRequest{};
    char buf[1024];  // room for any double in fixed notation
    const auto res = std::to_chars(buf, buf + sizeof buf, that, std::chars_format::fixed);
    if (res.ec != std::errc()) throw BadRequest{};
    const std::string s(buf, res.ptr);
    parseNumber(std::u16string(s.begin(), s.end()), self(p).v);
  });
}

void FM_FixPt_AssignFixPt(void* p, const fmx::FixPt& that, _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] { mpq_set(self(p).v, fixpt(that).v); });
}

bool FM_FixPt_IsNearZero(const void* p, _fmxcpt& _x) noexcept {
  return guard(_x, false, [&] {
    // Nearer to zero than the last decimal place the number keeps.
    mpq_t limit;
    mpq_t a;
    mpq_inits(limit, a, nullptr);
    mpz_ui_pow_ui(mpq_denref(limit), 10, static_cast<unsigned long>(self(p).precision));
    mpz_set_ui(mpq_numref(limit), 1);
    mpq_canonicalize(limit);
    mpq_abs(a, self(p).v);
    const bool near = mpq_cmp(a, limit) < 0;
    mpq_clears(limit, a, nullptr);
    return near;
  });
}

bool FM_FixPt_IsZero(const void* p, _fmxcpt& _x) noexcept {
  return guard(_x, false, [&] { return mpq_sgn(self(p).v) == 0; });
}

int32 FM_FixPt_GetPrecision(const void* p, _fmxcpt& _x) noexcept {
  return guard(_x, int32{0}, [&] { return self(p).precision; });
}

void FM_FixPt_SetPrecision(void* p, int32 precision, _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] { self(p).precision = clampPrecision(precision); });
}

void FM_FixPt_Increment(void* p, int32 n, _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] {
    mpq_t d;
    mpq_init(d);
    mpq_set_si(d, n, 1);
    mpq_add(self(p).v, self(p).v, d);
    mpq_clear(d);
  });
}

void FM_FixPt_Decrement(void* p, int32 n, _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] {
    mpq_t d;
    mpq_init(d);
    mpq_set_si(d, n, 1);
    mpq_sub(self(p).v, self(p).v, d);
    mpq_clear(d);
  });
}

void FM_FixPt_Negate(void* p, _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] { mpq_neg(self(p).v, self(p).v); });
}

void FM_FixPt_Add(const void* p, const fmx::FixPt& arg, fmx::FixPt& result, _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] { mpq_add(fixpt(result).v, self(p).v, fixpt(arg).v); });
}

void FM_FixPt_Subtract(const void* p, const fmx::FixPt& arg, fmx::FixPt& result,
                       _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] { mpq_sub(fixpt(result).v, self(p).v, fixpt(arg).v); });
}

void FM_FixPt_Multiply(const void* p, const fmx::FixPt& arg, fmx::FixPt& result,
                       _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] { mpq_mul(fixpt(result).v, self(p).v, fixpt(arg).v); });
}

// Division by zero leaves the result alone and answers an error code.
fmx::errcode FM_FixPt_Divide(const void* p, const fmx::FixPt& arg, fmx::FixPt& result,
                             _fmxcpt& _x) noexcept {
  return guard(_x, kParamErr, [&] {
    if (mpq_sgn(fixpt(arg).v) == 0) return kParamErr;
    const int32 places = self(p).precision;
    mpq_div(fixpt(result).v, self(p).v, fixpt(arg).v);
    roundToPlaces(fixpt(result).v, places);
    return kNoError;
  });
}

bool FM_FixPt_AsBool(const void* p, _fmxcpt& _x) noexcept {
  return guard(_x, false, [&] { return mpq_sgn(self(p).v) != 0; });
}

int32 FM_FixPt_AsLong(const void* p, _fmxcpt& _x) noexcept {
  return guard(_x, int32{0}, [&] {
    return static_cast<int32>(
        truncated(self(p).v, std::numeric_limits<int32>::min(), std::numeric_limits<int32>::max()));
  });
}

int64 FM_FixPt_AsLong64(const void* p, _fmxcpt& _x) noexcept {
  return guard(_x, int64{0}, [&] {
    return truncated(self(p).v, std::numeric_limits<int64>::min(),
                     std::numeric_limits<int64>::max());
  });
}

double FM_FixPt_AsFloat(const void* p, _fmxcpt& _x) noexcept {
  return guard(_x, 0.0, [&] { return mpq_get_d(self(p).v); });
}

bool FM_FixPt_operatorEQ(const void* p, const fmx::FixPt& that, _fmxcpt& _x) noexcept {
  return guard(_x, false, [&] { return mpq_equal(self(p).v, fixpt(that).v) != 0; });
}

bool FM_FixPt_operatorLT(const void* p, const fmx::FixPt& that, _fmxcpt& _x) noexcept {
  return guard(_x, false, [&] { return mpq_cmp(self(p).v, fixpt(that).v) < 0; });
}

void FM_FixPt_Delete(void* p, _fmxcpt& _x) noexcept {
  destroy<FixPtObj>(p, _x);
}

}  // extern "C"
