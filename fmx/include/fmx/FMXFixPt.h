// Host interface: fixed-point numbers with a precision in decimal digits.
#pragma once

#include "fmx/FMXTypes.h"

namespace fmx {

class FixPt {
 public:
  enum { kDefltFixedPrecision = 16 };

  inline void AssignInt(int32 that);
  inline void AssignInt64(int64 that);
  inline void AssignDouble(double that);
  inline void AssignFixPt(const FixPt& that);
  inline bool IsNearZero() const;
  inline bool IsZero() const;
  inline int32 GetPrecision() const;
  inline void SetPrecision(int32 precision);
  inline void Increment(int32 n);
  inline void Decrement(int32 n);
  inline void Negate();
  inline void Add(const FixPt& arg, FixPt& result) const;
  inline void Subtract(const FixPt& arg, FixPt& result) const;
  inline void Multiply(const FixPt& arg, FixPt& result) const;
  inline errcode Divide(const FixPt& arg, FixPt& result) const;
  inline bool AsBool() const;
  inline int32 AsLong() const;
  inline int64 AsLong64() const;
  inline double AsFloat() const;
  inline bool operator==(const FixPt& that) const;
  inline bool operator<(const FixPt& that) const;
  inline void operator delete(void* obj);

 private:
  FixPt() = delete;
  FixPt(const FixPt&) = delete;
};

}  // namespace fmx

extern "C" {
fmx::FixPt* FM_FixPt_Constructor1(fmx::int32 val, fmx::int32 precision, fmx::_fmxcpt& _x) noexcept;
fmx::FixPt* FM_FixPt_Constructor2(fmx::int32 val, const fmx::FixPt& precisionExample,
                                  fmx::_fmxcpt& _x) noexcept;
void FM_FixPt_AssignInt(void* self, fmx::int32 that, fmx::_fmxcpt& _x) noexcept;
void FM_FixPt_AssignInt64(void* self, fmx::int64 that, fmx::_fmxcpt& _x) noexcept;
void FM_FixPt_AssignDouble(void* self, double that, fmx::_fmxcpt& _x) noexcept;
void FM_FixPt_AssignFixPt(void* self, const fmx::FixPt& that, fmx::_fmxcpt& _x) noexcept;
bool FM_FixPt_IsNearZero(const void* self, fmx::_fmxcpt& _x) noexcept;
bool FM_FixPt_IsZero(const void* self, fmx::_fmxcpt& _x) noexcept;
fmx::int32 FM_FixPt_GetPrecision(const void* self, fmx::_fmxcpt& _x) noexcept;
void FM_FixPt_SetPrecision(void* self, fmx::int32 precision, fmx::_fmxcpt& _x) noexcept;
void FM_FixPt_Increment(void* self, fmx::int32 n, fmx::_fmxcpt& _x) noexcept;
void FM_FixPt_Decrement(void* self, fmx::int32 n, fmx::_fmxcpt& _x) noexcept;
void FM_FixPt_Negate(void* self, fmx::_fmxcpt& _x) noexcept;
void FM_FixPt_Add(const void* self, const fmx::FixPt& arg, fmx::FixPt& result,
                  fmx::_fmxcpt& _x) noexcept;
void FM_FixPt_Subtract(const void* self, const fmx::FixPt& arg, fmx::FixPt& result,
                       fmx::_fmxcpt& _x) noexcept;
void FM_FixPt_Multiply(const void* self, const fmx::FixPt& arg, fmx::FixPt& result,
                       fmx::_fmxcpt& _x) noexcept;
fmx::errcode FM_FixPt_Divide(const void* self, const fmx::FixPt& arg, fmx::FixPt& result,
                             fmx::_fmxcpt& _x) noexcept;
bool FM_FixPt_AsBool(const void* self, fmx::_fmxcpt& _x) noexcept;
fmx::int32 FM_FixPt_AsLong(const void* self, fmx::_fmxcpt& _x) noexcept;
fmx::int64 FM_FixPt_AsLong64(const void* self, fmx::_fmxcpt& _x) noexcept;
double FM_FixPt_AsFloat(const void* self, fmx::_fmxcpt& _x) noexcept;
bool FM_FixPt_operatorEQ(const void* self, const fmx::FixPt& that, fmx::_fmxcpt& _x) noexcept;
bool FM_FixPt_operatorLT(const void* self, const fmx::FixPt& that, fmx::_fmxcpt& _x) noexcept;
void FM_FixPt_Delete(void* self, fmx::_fmxcpt& _x) noexcept;
}

namespace fmx {

#define FMX_FIXPT_VOID(name, call) \
  {                                \
    _fmxcpt _x;                    \
    call;                          \
    _x.Check();                    \
  }
inline void FixPt::AssignInt(int32 that) FMX_FIXPT_VOID(
    AssignInt, FM_FixPt_AssignInt(this, that, _x)) inline void FixPt::AssignInt64(int64 that)
    FMX_FIXPT_VOID(AssignInt64,
                   FM_FixPt_AssignInt64(this, that,
                                        _x)) inline void FixPt::AssignDouble(double that)
        FMX_FIXPT_VOID(AssignDouble,
                       FM_FixPt_AssignDouble(this, that,
                                             _x)) inline void FixPt::AssignFixPt(const FixPt& that)
            FMX_FIXPT_VOID(AssignFixPt,
                           FM_FixPt_AssignFixPt(
                               this, that, _x)) inline void FixPt::SetPrecision(int32 precision)
                FMX_FIXPT_VOID(SetPrecision,
                               FM_FixPt_SetPrecision(this, precision,
                                                     _x)) inline void FixPt::Increment(int32 n)
                    FMX_FIXPT_VOID(Increment,
                                   FM_FixPt_Increment(this, n,
                                                      _x)) inline void FixPt::Decrement(int32 n)
                        FMX_FIXPT_VOID(Decrement,
                                       FM_FixPt_Decrement(this, n, _x)) inline void FixPt::Negate()
                            FMX_FIXPT_VOID(
                                Negate,
                                FM_FixPt_Negate(this,
                                                _x)) inline void FixPt::Add(const FixPt& arg,
                                                                            FixPt& result) const
    FMX_FIXPT_VOID(Add, FM_FixPt_Add(this, arg, result,
                                     _x)) inline void FixPt::Subtract(const FixPt& arg,
                                                                      FixPt& result) const
    FMX_FIXPT_VOID(Subtract, FM_FixPt_Subtract(this, arg, result,
                                               _x)) inline void FixPt::Multiply(const FixPt& arg,
                                                                                FixPt& result) const
    FMX_FIXPT_VOID(Multiply, FM_FixPt_Multiply(this, arg, result, _x))
#undef FMX_FIXPT_VOID

#define FMX_FIXPT_VALUE(type, call) \
  {                                 \
    _fmxcpt _x;                     \
    type r = call;                  \
    _x.Check();                     \
    return r;                       \
  }
        inline errcode FixPt::Divide(const FixPt& arg, FixPt& result) const
    FMX_FIXPT_VALUE(errcode,
                    FM_FixPt_Divide(this, arg, result, _x)) inline bool FixPt::IsNearZero() const
    FMX_FIXPT_VALUE(bool, FM_FixPt_IsNearZero(this, _x)) inline bool FixPt::IsZero() const
    FMX_FIXPT_VALUE(bool, FM_FixPt_IsZero(this, _x)) inline int32 FixPt::GetPrecision() const
    FMX_FIXPT_VALUE(int32, FM_FixPt_GetPrecision(this, _x)) inline bool FixPt::AsBool() const
    FMX_FIXPT_VALUE(bool, FM_FixPt_AsBool(this, _x)) inline int32 FixPt::AsLong() const
    FMX_FIXPT_VALUE(int32, FM_FixPt_AsLong(this, _x)) inline int64 FixPt::AsLong64() const
    FMX_FIXPT_VALUE(int64, FM_FixPt_AsLong64(this, _x)) inline double FixPt::AsFloat() const
    FMX_FIXPT_VALUE(double,
                    FM_FixPt_AsFloat(this,
                                     _x)) inline bool FixPt::operator==(const FixPt& that) const
    FMX_FIXPT_VALUE(bool,
                    FM_FixPt_operatorEQ(this, that,
                                        _x)) inline bool FixPt::operator<(const FixPt& that) const
    FMX_FIXPT_VALUE(bool, FM_FixPt_operatorLT(this, that, _x))
#undef FMX_FIXPT_VALUE

        inline void FixPt::operator delete(void* obj) {
  _fmxcpt _x;
  FM_FixPt_Delete(obj, _x);
}

class FixPtUniquePtr : public OwnedPtr<FixPt> {
 public:
  explicit FixPtUniquePtr(int32 val = 0, int32 precision = FixPt::kDefltFixedPrecision) {
    _fmxcpt _x;
    reset(FM_FixPt_Constructor1(val, precision, _x));
    _x.Check();
  }
  FixPtUniquePtr(int32 val, const FixPt& precisionExample) {
    _fmxcpt _x;
    reset(FM_FixPt_Constructor2(val, precisionExample, _x));
    _x.Check();
  }
};
using FixPtAutoPtr = FixPtUniquePtr;

}  // namespace fmx
