// Host interface: text. Text is held by the host as UTF-16; positions and sizes count UTF-16 units.
#pragma once

#include "fmx/FMXTypes.h"

namespace fmx {

class Text {
 public:
  enum Encoding : int32 {
    kEncoding_Native = 0,
    kEncoding_UTF8 = 1,
    kEncoding_ASCII_DOS = 2,
    kEncoding_ASCII_Windows = 3,
    kEncoding_ASCII_Mac = 4,
    kEncoding_ISO_8859_1 = 5,
    kEncoding_ShiftJIS_Mac = 6,
    kEncoding_ShiftJIS_Win = 7
  };

  inline uint32 GetSize() const;
  inline void Assign(const char* s, int32 encoding = kEncoding_Native);
  inline void AssignWithLength(const char* s, uint32 strlength, int32 encoding = kEncoding_Native);
  inline void AssignUnicode(const uint16* s);
  inline void AssignUnicodeWithLength(const uint16* s, uint32 strlength);
  // Copies `size` units from `position` into `s` (no terminator is added).
  inline void GetUnicode(uint16* s, uint32 position, uint32 size) const;
  // Writes at most bufferSize - 1 bytes and a terminating zero.
  inline void GetBytes(char* buffer, uint32 bufferSize, uint32 position = 0,
                       uint32 size = kSize_End, int32 encoding = kEncoding_Native) const;
  inline void SetText(const Text& other, uint32 position = 0, uint32 size = kSize_End);
  inline void AppendText(const Text& other, uint32 position = 0, uint32 size = kSize_End);
  inline void InsertText(const Text& other, uint32 position);
  inline void DeleteText(uint32 position, uint32 size = kSize_End);
  // Position of the first match at or after `position`, or kNotFound.
  inline uint32 Find(const Text& other, uint32 position) const;
  inline uint32 FindPrev(const Text& other, uint32 position) const;
  inline uint32 FindIgnoringCase(const Text& other, uint32 position) const;
  inline uint32 FindPrevIgnoringCase(const Text& other, uint32 position) const;
  inline void Uppercase();
  inline void Lowercase();
  inline Text& operator=(const Text& source);
  inline bool operator==(const Text& compareWith) const;
  inline bool operator!=(const Text& compareWith) const { return !(*this == compareWith); }
  inline bool operator<(const Text& compareWith) const;
  inline void operator delete(void* obj);

 private:
  Text() = delete;
  Text(const Text&) = delete;
};

}  // namespace fmx

extern "C" {
fmx::Text* FM_Text_Constructor1(fmx::_fmxcpt& _x) noexcept;
fmx::uint32 FM_Text_GetSize(const void* self, fmx::_fmxcpt& _x) noexcept;
void FM_Text_Assign(void* self, const char* s, fmx::int32 encoding, fmx::_fmxcpt& _x) noexcept;
void FM_Text_AssignWithLength(void* self, const char* s, fmx::uint32 strlength, fmx::int32 encoding,
                              fmx::_fmxcpt& _x) noexcept;
void FM_Text_AssignUnicode(void* self, const fmx::uint16* s, fmx::_fmxcpt& _x) noexcept;
void FM_Text_AssignUnicodeWithLength(void* self, const fmx::uint16* s, fmx::uint32 strlength,
                                     fmx::_fmxcpt& _x) noexcept;
void FM_Text_GetUnicode(const void* self, fmx::uint16* s, fmx::uint32 position, fmx::uint32 size,
                        fmx::_fmxcpt& _x) noexcept;
void FM_Text_GetBytes(const void* self, char* buffer, fmx::uint32 bufferSize, fmx::uint32 position,
                      fmx::uint32 size, fmx::int32 encoding, fmx::_fmxcpt& _x) noexcept;
void FM_Text_SetText(void* self, const fmx::Text& other, fmx::uint32 position, fmx::uint32 size,
                     fmx::_fmxcpt& _x) noexcept;
void FM_Text_AppendText(void* self, const fmx::Text& other, fmx::uint32 position, fmx::uint32 size,
                        fmx::_fmxcpt& _x) noexcept;
void FM_Text_InsertText(void* self, const fmx::Text& other, fmx::uint32 position,
                        fmx::_fmxcpt& _x) noexcept;
void FM_Text_DeleteText(void* self, fmx::uint32 position, fmx::uint32 size,
                        fmx::_fmxcpt& _x) noexcept;
fmx::uint32 FM_Text_Find(const void* self, const fmx::Text& other, fmx::uint32 position,
                         fmx::_fmxcpt& _x) noexcept;
fmx::uint32 FM_Text_FindPrev(const void* self, const fmx::Text& other, fmx::uint32 position,
                             fmx::_fmxcpt& _x) noexcept;
fmx::uint32 FM_Text_FindIgnoringCase(const void* self, const fmx::Text& other, fmx::uint32 position,
                                     fmx::_fmxcpt& _x) noexcept;
fmx::uint32 FM_Text_FindPrevIgnoringCase(const void* self, const fmx::Text& other,
                                         fmx::uint32 position, fmx::_fmxcpt& _x) noexcept;
void FM_Text_Uppercase(void* self, fmx::_fmxcpt& _x) noexcept;
void FM_Text_Lowercase(void* self, fmx::_fmxcpt& _x) noexcept;
fmx::Text* FM_Text_operatorAS(void* self, const fmx::Text& source, fmx::_fmxcpt& _x) noexcept;
bool FM_Text_operatorEQ(const void* self, const fmx::Text& compareWith, fmx::_fmxcpt& _x) noexcept;
bool FM_Text_operatorLT(const void* self, const fmx::Text& compareWith, fmx::_fmxcpt& _x) noexcept;
void FM_Text_Delete(void* self, fmx::_fmxcpt& _x) noexcept;
}

namespace fmx {

inline uint32 Text::GetSize() const {
  _fmxcpt _x;
  uint32 r = FM_Text_GetSize(this, _x);
  _x.Check();
  return r;
}
inline void Text::Assign(const char* s, int32 encoding) {
  _fmxcpt _x;
  FM_Text_Assign(this, s, encoding, _x);
  _x.Check();
}
inline void Text::AssignWithLength(const char* s, uint32 strlength, int32 encoding) {
  _fmxcpt _x;
  FM_Text_AssignWithLength(this, s, strlength, encoding, _x);
  _x.Check();
}
inline void Text::AssignUnicode(const uint16* s) {
  _fmxcpt _x;
  FM_Text_AssignUnicode(this, s, _x);
  _x.Check();
}
inline void Text::AssignUnicodeWithLength(const uint16* s, uint32 strlength) {
  _fmxcpt _x;
  FM_Text_AssignUnicodeWithLength(this, s, strlength, _x);
  _x.Check();
}
inline void Text::GetUnicode(uint16* s, uint32 position, uint32 size) const {
  _fmxcpt _x;
  FM_Text_GetUnicode(this, s, position, size, _x);
  _x.Check();
}
inline void Text::GetBytes(char* buffer, uint32 bufferSize, uint32 position, uint32 size,
                           int32 encoding) const {
  _fmxcpt _x;
  FM_Text_GetBytes(this, buffer, bufferSize, position, size, encoding, _x);
  _x.Check();
}
inline void Text::SetText(const Text& other, uint32 position, uint32 size) {
  _fmxcpt _x;
  FM_Text_SetText(this, other, position, size, _x);
  _x.Check();
}
inline void Text::AppendText(const Text& other, uint32 position, uint32 size) {
  _fmxcpt _x;
  FM_Text_AppendText(this, other, position, size, _x);
  _x.Check();
}
inline void Text::InsertText(const Text& other, uint32 position) {
  _fmxcpt _x;
  FM_Text_InsertText(this, other, position, _x);
  _x.Check();
}
inline void Text::DeleteText(uint32 position, uint32 size) {
  _fmxcpt _x;
  FM_Text_DeleteText(this, position, size, _x);
  _x.Check();
}
inline uint32 Text::Find(const Text& other, uint32 position) const {
  _fmxcpt _x;
  uint32 r = FM_Text_Find(this, other, position, _x);
  _x.Check();
  return r;
}
inline uint32 Text::FindPrev(const Text& other, uint32 position) const {
  _fmxcpt _x;
  uint32 r = FM_Text_FindPrev(this, other, position, _x);
  _x.Check();
  return r;
}
inline uint32 Text::FindIgnoringCase(const Text& other, uint32 position) const {
  _fmxcpt _x;
  uint32 r = FM_Text_FindIgnoringCase(this, other, position, _x);
  _x.Check();
  return r;
}
inline uint32 Text::FindPrevIgnoringCase(const Text& other, uint32 position) const {
  _fmxcpt _x;
  uint32 r = FM_Text_FindPrevIgnoringCase(this, other, position, _x);
  _x.Check();
  return r;
}
inline void Text::Uppercase() {
  _fmxcpt _x;
  FM_Text_Uppercase(this, _x);
  _x.Check();
}
inline void Text::Lowercase() {
  _fmxcpt _x;
  FM_Text_Lowercase(this, _x);
  _x.Check();
}
inline Text& Text::operator=(const Text& source) {
  _fmxcpt _x;
  Text* r = FM_Text_operatorAS(this, source, _x);
  _x.Check();
  return *r;
}
inline bool Text::operator==(const Text& compareWith) const {
  _fmxcpt _x;
  bool r = FM_Text_operatorEQ(this, compareWith, _x);
  _x.Check();
  return r;
}
inline bool Text::operator<(const Text& compareWith) const {
  _fmxcpt _x;
  bool r = FM_Text_operatorLT(this, compareWith, _x);
  _x.Check();
  return r;
}
inline void Text::operator delete(void* obj) {
  _fmxcpt _x;
  FM_Text_Delete(obj, _x);
}

class TextUniquePtr : public OwnedPtr<Text> {
 public:
  TextUniquePtr() {
    _fmxcpt _x;
    reset(FM_Text_Constructor1(_x));
    _x.Check();
  }
};
using TextAutoPtr = TextUniquePtr;

}  // namespace fmx
