// fmx::QuadChar (a four-character code) and fmx::Locale.
#include "impl.h"

using namespace fmwrapper::detail;
using fmx::_fmxcpt;

namespace {

QuadCharObj& qc(void* p) {
  return *static_cast<QuadCharObj*>(p);
}
const QuadCharObj& qc(const void* p) {
  return *static_cast<const QuadCharObj*>(p);
}

}  // namespace

extern "C" {

fmx::QuadChar* FM_QuadChar_Constructor1(_fmxcpt& _x) noexcept {
  return construct<fmx::QuadChar, QuadCharObj>(_x, [] { return std::make_unique<QuadCharObj>(); });
}

fmx::QuadChar* FM_QuadChar_Constructor2(char c0, char c1, char c2, char c3, _fmxcpt& _x) noexcept {
  return construct<fmx::QuadChar, QuadCharObj>(_x, [&] {
    auto o = std::make_unique<QuadCharObj>();
    o->c = {static_cast<fmx::uchar>(c0), static_cast<fmx::uchar>(c1), static_cast<fmx::uchar>(c2),
            static_cast<fmx::uchar>(c3)};
    return o;
  });
}

fmx::QuadChar* FM_QuadChar_Constructor3(const fmx::QuadChar& value, _fmxcpt& _x) noexcept {
  return construct<fmx::QuadChar, QuadCharObj>(
      _x, [&] { return std::make_unique<QuadCharObj>(quad(value)); });
}

fmx::QuadChar* FM_QuadChar_operatorAS(void* self, const fmx::QuadChar& value,
                                      _fmxcpt& _x) noexcept {
  return guard(_x, static_cast<fmx::QuadChar*>(self), [&] {
    qc(self).c = quad(value).c;
    return static_cast<fmx::QuadChar*>(self);
  });
}

// Characters 0 to 3; any other index is a bad request.
fmx::uchar FM_QuadChar_operatorAR(const void* self, int i, _fmxcpt& _x) noexcept {
  return guard(_x, fmx::uchar{0}, [&] {
    if (i < 0 || i > 3) throw BadRequest{};
    return qc(self).c[static_cast<std::size_t>(i)];
  });
}

bool FM_QuadChar_operatorEQ(const void* self, const fmx::QuadChar& value, _fmxcpt& _x) noexcept {
  return guard(_x, false, [&] { return qc(self).c == quad(value).c; });
}

bool FM_QuadChar_operatorLT(const void* self, const fmx::QuadChar& value, _fmxcpt& _x) noexcept {
  return guard(_x, false, [&] { return qc(self).c < quad(value).c; });
}

// The Mac type: the four characters as a big-endian number ('Z7mo' = 0x5A376D6F).
fmx::uint32 FM_QuadChar_GetMacType(const void* self, _fmxcpt& _x) noexcept {
  return guard(_x, fmx::uint32{0}, [&] {
    const auto& c = qc(self).c;
    return (fmx::uint32{c[0]} << 24) | (fmx::uint32{c[1]} << 16) | (fmx::uint32{c[2]} << 8) |
           fmx::uint32{c[3]};
  });
}

void FM_QuadChar_SetMacType(void* self, fmx::uint32 value, _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] {
    qc(self).c = {static_cast<fmx::uchar>(value >> 24), static_cast<fmx::uchar>(value >> 16),
                  static_cast<fmx::uchar>(value >> 8), static_cast<fmx::uchar>(value)};
  });
}

void FM_QuadChar_Delete(void* self, _fmxcpt& _x) noexcept {
  destroy<QuadCharObj>(self, _x);
}

// Locales only carry their type: text conversions here do not depend on a locale.
fmx::Locale* FM_Locale_Constructor1(fmx::int32 inputType, _fmxcpt& _x) noexcept {
  return construct<fmx::Locale, LocaleObj>(_x, [&] {
    if (inputType < fmx::Locale::kType_None || inputType > fmx::Locale::kType_Catalog) {
      throw BadRequest{};
    }
    auto o = std::make_unique<LocaleObj>();
    o->type = inputType;
    return o;
  });
}

fmx::Locale* FM_Locale_Constructor2(const fmx::Locale& copyThis, _fmxcpt& _x) noexcept {
  return construct<fmx::Locale, LocaleObj>(
      _x, [&] { return std::make_unique<LocaleObj>(locale(copyThis)); });
}

fmx::Locale* FM_Locale_operatorAS(void* self, const fmx::Locale& rhs, _fmxcpt& _x) noexcept {
  return guard(_x, static_cast<fmx::Locale*>(self), [&] {
    static_cast<LocaleObj*>(self)->type = locale(rhs).type;
    return static_cast<fmx::Locale*>(self);
  });
}

void FM_Locale_Delete(void* self, _fmxcpt& _x) noexcept {
  destroy<LocaleObj>(self, _x);
}

}  // extern "C"
