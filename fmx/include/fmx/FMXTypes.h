// Host interface: fixed-width types, the error pad, owning pointers, QuadChar and Locale.
//
// Every FM_* function is extern "C", takes the error pad last and never throws. The value classes
// are opaque: a pointer to one is a handle to an object that lives inside the host library. Their
// inline methods call the FM_* function and then check the pad, turning code 1 into
// std::bad_alloc and code 2 into std::exception.
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <new>

namespace fmx {

using int16 = std::int16_t;
using uint16 = std::uint16_t;
using int32 = std::int32_t;
using uint32 = std::uint32_t;
using int64 = std::int64_t;
using uint64 = std::uint64_t;
using uchar = unsigned char;
using unichar16 = std::uint16_t;
using errcode = int16;
using ptrtype = std::uintptr_t;

// Text positions and sizes count UTF-16 units; this size means "up to the end".
constexpr uint32 kSize_End = 0xFFFFFFFFu;
constexpr uint32 kNotFound = 0xFFFFFFFFu;

class _fmxcpt {
 public:
  enum Code : int32 { kNoErr = 0, kBadAlloc = 1, kUnknown = 2 };

  _fmxcpt() = default;
  void Check() const {
    if (m_code == kNoErr) return;
    if (m_code == kBadAlloc) throw std::bad_alloc();
    throw std::exception();
  }

  int32 m_vers = 1;
  int32 m_code = kNoErr;
};

// Owning pointer for the opaque value classes. The object is made by an FM_*_Constructor call and
// released with `delete`, which each class routes to its FM_*_Delete through operator delete.
template <typename T>
class OwnedPtr {
 public:
  OwnedPtr() = default;
  explicit OwnedPtr(T* p) : ptr_(p) {}
  OwnedPtr(const OwnedPtr&) = delete;
  OwnedPtr& operator=(const OwnedPtr&) = delete;
  OwnedPtr(OwnedPtr&& o) noexcept : ptr_(o.release()) {}
  OwnedPtr& operator=(OwnedPtr&& o) noexcept {
    reset(o.release());
    return *this;
  }
  ~OwnedPtr() { reset(); }

  T* get() const { return ptr_; }
  T& operator*() const { return *ptr_; }
  T* operator->() const { return ptr_; }
  explicit operator bool() const { return ptr_ != nullptr; }
  T* release() {
    T* p = ptr_;
    ptr_ = nullptr;
    return p;
  }
  void reset(T* p = nullptr) {
    T* old = ptr_;
    ptr_ = p;
    if (old) delete old;
  }

 private:
  T* ptr_ = nullptr;
};

class QuadChar {
 public:
  inline QuadChar& operator=(const QuadChar& value);
  inline uchar operator[](int i) const;
  inline bool operator==(const QuadChar& value) const;
  inline bool operator!=(const QuadChar& value) const { return !(*this == value); }
  inline bool operator<(const QuadChar& value) const;
  inline uint32 GetMacType() const;
  inline void SetMacType(uint32 value);
  inline void operator delete(void* obj);

 private:
  QuadChar() = delete;
  QuadChar(const QuadChar&) = delete;
};

class Locale {
 public:
  enum Type : int32 {
    kType_None = 0,
    kType_System = 1,
    kType_UnicodeRaw = 2,
    kType_UnicodeStandard = 3,
    kType_Catalog = 4
  };
  inline Locale& operator=(const Locale& rhs);
  inline void operator delete(void* obj);

 private:
  Locale() = delete;
  Locale(const Locale&) = delete;
};

class Text;
class FixPt;
class Data;
class DataVect;
class ExprEnv;
class BinaryData;

}  // namespace fmx

extern "C" {
fmx::QuadChar* FM_QuadChar_Constructor1(fmx::_fmxcpt& _x) noexcept;
fmx::QuadChar* FM_QuadChar_Constructor2(char c0, char c1, char c2, char c3,
                                        fmx::_fmxcpt& _x) noexcept;
fmx::QuadChar* FM_QuadChar_Constructor3(const fmx::QuadChar& value, fmx::_fmxcpt& _x) noexcept;
fmx::QuadChar* FM_QuadChar_operatorAS(void* self, const fmx::QuadChar& value,
                                      fmx::_fmxcpt& _x) noexcept;
fmx::uchar FM_QuadChar_operatorAR(const void* self, int i, fmx::_fmxcpt& _x) noexcept;
bool FM_QuadChar_operatorEQ(const void* self, const fmx::QuadChar& value,
                            fmx::_fmxcpt& _x) noexcept;
bool FM_QuadChar_operatorLT(const void* self, const fmx::QuadChar& value,
                            fmx::_fmxcpt& _x) noexcept;
fmx::uint32 FM_QuadChar_GetMacType(const void* self, fmx::_fmxcpt& _x) noexcept;
void FM_QuadChar_SetMacType(void* self, fmx::uint32 value, fmx::_fmxcpt& _x) noexcept;
void FM_QuadChar_Delete(void* self, fmx::_fmxcpt& _x) noexcept;

fmx::Locale* FM_Locale_Constructor1(fmx::int32 inputType, fmx::_fmxcpt& _x) noexcept;
fmx::Locale* FM_Locale_Constructor2(const fmx::Locale& copyThis, fmx::_fmxcpt& _x) noexcept;
fmx::Locale* FM_Locale_operatorAS(void* self, const fmx::Locale& rhs, fmx::_fmxcpt& _x) noexcept;
void FM_Locale_Delete(void* self, fmx::_fmxcpt& _x) noexcept;
}

namespace fmx {

inline QuadChar& QuadChar::operator=(const QuadChar& value) {
  _fmxcpt _x;
  QuadChar* r = FM_QuadChar_operatorAS(this, value, _x);
  _x.Check();
  return *r;
}
inline uchar QuadChar::operator[](int i) const {
  _fmxcpt _x;
  uchar r = FM_QuadChar_operatorAR(this, i, _x);
  _x.Check();
  return r;
}
inline bool QuadChar::operator==(const QuadChar& value) const {
  _fmxcpt _x;
  bool r = FM_QuadChar_operatorEQ(this, value, _x);
  _x.Check();
  return r;
}
inline bool QuadChar::operator<(const QuadChar& value) const {
  _fmxcpt _x;
  bool r = FM_QuadChar_operatorLT(this, value, _x);
  _x.Check();
  return r;
}
inline uint32 QuadChar::GetMacType() const {
  _fmxcpt _x;
  uint32 r = FM_QuadChar_GetMacType(this, _x);
  _x.Check();
  return r;
}
inline void QuadChar::SetMacType(uint32 value) {
  _fmxcpt _x;
  FM_QuadChar_SetMacType(this, value, _x);
  _x.Check();
}
inline void QuadChar::operator delete(void* obj) {
  _fmxcpt _x;
  FM_QuadChar_Delete(obj, _x);
}

inline Locale& Locale::operator=(const Locale& rhs) {
  _fmxcpt _x;
  Locale* r = FM_Locale_operatorAS(this, rhs, _x);
  _x.Check();
  return *r;
}
inline void Locale::operator delete(void* obj) {
  _fmxcpt _x;
  FM_Locale_Delete(obj, _x);
}

class QuadCharUniquePtr : public OwnedPtr<QuadChar> {
 public:
  QuadCharUniquePtr() {
    _fmxcpt _x;
    reset(FM_QuadChar_Constructor1(_x));
    _x.Check();
  }
  QuadCharUniquePtr(char c0, char c1, char c2, char c3) {
    _fmxcpt _x;
    reset(FM_QuadChar_Constructor2(c0, c1, c2, c3, _x));
    _x.Check();
  }
  explicit QuadCharUniquePtr(const QuadChar& value) {
    _fmxcpt _x;
    reset(FM_QuadChar_Constructor3(value, _x));
    _x.Check();
  }
};
using QuadCharAutoPtr = QuadCharUniquePtr;

class LocaleUniquePtr : public OwnedPtr<Locale> {
 public:
  explicit LocaleUniquePtr(int32 inputType = Locale::kType_System) {
    _fmxcpt _x;
    reset(FM_Locale_Constructor1(inputType, _x));
    _x.Check();
  }
  explicit LocaleUniquePtr(const Locale& copyThis) {
    _fmxcpt _x;
    reset(FM_Locale_Constructor2(copyThis, _x));
    _x.Check();
  }
};
using LocaleAutoPtr = LocaleUniquePtr;

}  // namespace fmx
