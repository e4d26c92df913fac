// fmx::Text: UTF-16 text. Positions and sizes count UTF-16 units; a range that runs past the end
// is cut at the end, and a position past the end is an empty range there.
#include <unicode/ustring.h>

#include <algorithm>
#include <cstring>

#include "encoding.h"
#include "find.h"
#include "impl.h"

using namespace fmwrapper::detail;
using fmx::_fmxcpt;
using fmx::uint32;

namespace {

std::u16string_view range(std::u16string_view s, uint32 position, uint32 size) {
  if (position >= s.size()) return {};
  return s.substr(position, size);
}

std::u16string caseMapped(const std::u16string& s, bool upper) {
  std::u16string out(s.size() + 16, u'\0');
  for (int attempt = 0; attempt < 2; ++attempt) {
    UErrorCode err = U_ZERO_ERROR;
    const int32_t cap = static_cast<int32_t>(out.size());
    const int32_t len = static_cast<int32_t>(s.size());
    // The root locale: the same mapping whatever the machine's language.
    const int32_t n = upper ? u_strToUpper(out.data(), cap, s.data(), len, "", &err)
                            : u_strToLower(out.data(), cap, s.data(), len, "", &err);
    if (err == U_BUFFER_OVERFLOW_ERROR) {
      out.assign(static_cast<std::size_t>(n), u'\0');
      continue;
    }
    if (U_FAILURE(err)) throw std::bad_alloc();
    out.resize(static_cast<std::size_t>(n));
    return out;
  }
  throw std::bad_alloc();
}

std::size_t unicodeLength(const fmx::uint16* s) {
  std::size_t n = 0;
  while (s[n] != 0) ++n;
  return n;
}

}  // namespace

extern "C" {

fmx::Text* FM_Text_Constructor1(_fmxcpt& _x) noexcept {
  return construct<fmx::Text, TextObj>(_x, [] { return std::make_unique<TextObj>(); });
}

uint32 FM_Text_GetSize(const void* self, _fmxcpt& _x) noexcept {
  return guard(_x, uint32{0}, [&] { return static_cast<uint32>(text(self).s.size()); });
}

void FM_Text_Assign(void* self, const char* s, fmx::int32 encoding, _fmxcpt& _x) noexcept {
  guardVoid(_x,
            [&] { text(self).s = s ? decode(std::string_view(s), encoding) : std::u16string(); });
}

void FM_Text_AssignWithLength(void* self, const char* s, uint32 strlength, fmx::int32 encoding,
                              _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] {
    text(self).s = s ? decode(std::string_view(s, strlength), encoding) : std::u16string();
  });
}

void FM_Text_AssignUnicode(void* self, const fmx::uint16* s, _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] {
    std::u16string& t = text(self).s;
    if (!s) {
      t.clear();
      return;
    }
    t.assign(reinterpret_cast<const char16_t*>(s), unicodeLength(s));
  });
}

void FM_Text_AssignUnicodeWithLength(void* self, const fmx::uint16* s, uint32 strlength,
                                     _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] {
    std::u16string& t = text(self).s;
    if (!s) {
      t.clear();
      return;
    }
    t.assign(reinterpret_cast<const char16_t*>(s), strlength);
  });
}

void FM_Text_GetUnicode(const void* self, fmx::uint16* s, uint32 position, uint32 size,
                        _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] {
    if (!s) return;
    const std::u16string_view r = range(text(self).s, position, size);
    if (!r.empty()) std::memcpy(s, r.data(), r.size() * sizeof(char16_t));
  });
}

void FM_Text_GetBytes(const void* self, char* buffer, uint32 bufferSize, uint32 position,
                      uint32 size, fmx::int32 encoding, _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] {
    if (!buffer || bufferSize == 0) return;
    buffer[0] = '\0';
    const std::string bytes = encode(range(text(self).s, position, size), encoding, bufferSize - 1);
    std::memcpy(buffer, bytes.data(), bytes.size());
    buffer[bytes.size()] = '\0';
  });
}

void FM_Text_SetText(void* self, const fmx::Text& other, uint32 position, uint32 size,
                     _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] { text(self).s = std::u16string(range(text(other).s, position, size)); });
}

void FM_Text_AppendText(void* self, const fmx::Text& other, uint32 position, uint32 size,
                        _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] {
    const std::u16string part(range(text(other).s, position, size));
    text(self).s += part;
  });
}

void FM_Text_InsertText(void* self, const fmx::Text& other, uint32 position, _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] {
    const std::u16string part(text(other).s);
    std::u16string& t = text(self).s;
    t.insert(std::min<std::size_t>(position, t.size()), part);
  });
}

void FM_Text_DeleteText(void* self, uint32 position, uint32 size, _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] {
    std::u16string& t = text(self).s;
    if (position < t.size()) t.erase(position, size);
  });
}

uint32 FM_Text_Find(const void* self, const fmx::Text& other, uint32 position,
                    _fmxcpt& _x) noexcept {
  return guard(_x, fmx::kNotFound,
               [&] { return findForward(text(self).s, text(other).s, position, false); });
}

uint32 FM_Text_FindPrev(const void* self, const fmx::Text& other, uint32 position,
                        _fmxcpt& _x) noexcept {
  return guard(_x, fmx::kNotFound,
               [&] { return findBackward(text(self).s, text(other).s, position, false); });
}

uint32 FM_Text_FindIgnoringCase(const void* self, const fmx::Text& other, uint32 position,
                                _fmxcpt& _x) noexcept {
  return guard(_x, fmx::kNotFound,
               [&] { return findForward(text(self).s, text(other).s, position, true); });
}

uint32 FM_Text_FindPrevIgnoringCase(const void* self, const fmx::Text& other, uint32 position,
                                    _fmxcpt& _x) noexcept {
  return guard(_x, fmx::kNotFound,
               [&] { return findBackward(text(self).s, text(other).s, position, true); });
}

void FM_Text_Uppercase(void* self, _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] { text(self).s = caseMapped(text(self).s, true); });
}

void FM_Text_Lowercase(void* self, _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] { text(self).s = caseMapped(text(self).s, false); });
}

fmx::Text* FM_Text_operatorAS(void* self, const fmx::Text& source, _fmxcpt& _x) noexcept {
  return guard(_x, static_cast<fmx::Text*>(self), [&] {
    text(self).s = text(source).s;
    return static_cast<fmx::Text*>(self);
  });
}

bool FM_Text_operatorEQ(const void* self, const fmx::Text& compareWith, _fmxcpt& _x) noexcept {
  return guard(_x, false, [&] { return text(self).s == text(compareWith).s; });
}

// Orders by UTF-16 units, which is code point order within the Basic Multilingual Plane.
bool FM_Text_operatorLT(const void* self, const fmx::Text& compareWith, _fmxcpt& _x) noexcept {
  return guard(_x, false, [&] { return text(self).s < text(compareWith).s; });
}

void FM_Text_Delete(void* self, _fmxcpt& _x) noexcept {
  destroy<TextObj>(self, _x);
}

}  // extern "C"
