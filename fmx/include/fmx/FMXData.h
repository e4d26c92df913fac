// Host interface: a calculation value (text, number or container data) with its locale.
#pragma once

#include "fmx/FMXBinaryData.h"
#include "fmx/FMXFixPt.h"
#include "fmx/FMXText.h"
#include "fmx/FMXTypes.h"

namespace fmx {

class Data {
 public:
  enum DataType : int32 {
    kDTInvalid = 0,
    kDTText = 1,
    kDTNumber = 2,
    kDTDate = 3,
    kDTTime = 4,
    kDTTimeStamp = 5,
    kDTBinary = 6,
    kDTBoolean = 7
  };

  inline bool IsEmpty() const;
  inline bool IsValid() const;
  inline const Text& GetAsText() const;
  inline const FixPt& GetAsNumber() const;
  inline bool GetAsBoolean() const;
  inline const BinaryData& GetBinaryData() const;
  inline const Locale& GetLocale() const;
  inline int32 GetNativeType() const;
  inline void ConvertData(int32 nativeType);
  inline errcode SetAsText(const Text& textData, const Locale& sourceLocale,
                           int32 nativeType = kDTText);
  inline errcode SetAsNumber(const FixPt& numericData, int32 nativeType = kDTNumber);
  inline errcode SetBinaryData(const BinaryData& binaryData, bool forceBinaryNativeType = true);
  inline void Clear(int32 newNativeType = kDTInvalid);
  inline Data& operator=(const Data& source);
  inline bool operator==(const Data& compareWith) const;
  inline void operator delete(void* obj);

 private:
  Data() = delete;
  Data(const Data&) = delete;
};

}  // namespace fmx

// The host interface returns references from some C functions, as the host's own interface does.
#if defined(__clang__)
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wreturn-type-c-linkage"
#endif
extern "C" {
fmx::Data* FM_Data_Constructor1(fmx::_fmxcpt& _x) noexcept;
bool FM_Data_IsEmpty(const void* self, fmx::_fmxcpt& _x) noexcept;
bool FM_Data_IsValid(const void* self, fmx::_fmxcpt& _x) noexcept;
const fmx::Text& FM_Data_GetAsText(const void* self, fmx::_fmxcpt& _x) noexcept;
const fmx::FixPt& FM_Data_GetAsNumber(const void* self, fmx::_fmxcpt& _x) noexcept;
bool FM_Data_GetAsBoolean(const void* self, fmx::_fmxcpt& _x) noexcept;
const fmx::BinaryData& FM_Data_GetBinaryData(const void* self, fmx::_fmxcpt& _x) noexcept;
const fmx::Locale& FM_Data_GetLocale(const void* self, fmx::_fmxcpt& _x) noexcept;
fmx::int32 FM_Data_GetNativeType(const void* self, fmx::_fmxcpt& _x) noexcept;
void FM_Data_ConvertData(void* self, fmx::int32 nativeType, fmx::_fmxcpt& _x) noexcept;
fmx::errcode FM_Data_SetAsText(void* self, const fmx::Text& textData,
                               const fmx::Locale& sourceLocale, fmx::int32 nativeType,
                               fmx::_fmxcpt& _x) noexcept;
fmx::errcode FM_Data_SetAsNumber(void* self, const fmx::FixPt& numericData, fmx::int32 nativeType,
                                 fmx::_fmxcpt& _x) noexcept;
fmx::errcode FM_Data_SetBinaryData(void* self, const fmx::BinaryData& binaryData,
                                   bool forceBinaryNativeType, fmx::_fmxcpt& _x) noexcept;
void FM_Data_Clear(void* self, fmx::int32 newNativeType, fmx::_fmxcpt& _x) noexcept;
fmx::Data* FM_Data_operatorAS(void* self, const fmx::Data& source, fmx::_fmxcpt& _x) noexcept;
bool FM_Data_operatorEQ(const void* self, const fmx::Data& compareWith, fmx::_fmxcpt& _x) noexcept;
void FM_Data_Delete(void* self, fmx::_fmxcpt& _x) noexcept;
}
#if defined(__clang__)
#pragma clang diagnostic pop
#endif

namespace fmx {

inline bool Data::IsEmpty() const {
  _fmxcpt _x;
  bool r = FM_Data_IsEmpty(this, _x);
  _x.Check();
  return r;
}
inline bool Data::IsValid() const {
  _fmxcpt _x;
  bool r = FM_Data_IsValid(this, _x);
  _x.Check();
  return r;
}
inline const Text& Data::GetAsText() const {
  _fmxcpt _x;
  const Text& r = FM_Data_GetAsText(this, _x);
  _x.Check();
  return r;
}
inline const FixPt& Data::GetAsNumber() const {
  _fmxcpt _x;
  const FixPt& r = FM_Data_GetAsNumber(this, _x);
  _x.Check();
  return r;
}
inline bool Data::GetAsBoolean() const {
  _fmxcpt _x;
  bool r = FM_Data_GetAsBoolean(this, _x);
  _x.Check();
  return r;
}
inline const BinaryData& Data::GetBinaryData() const {
  _fmxcpt _x;
  const BinaryData& r = FM_Data_GetBinaryData(this, _x);
  _x.Check();
  return r;
}
inline const Locale& Data::GetLocale() const {
  _fmxcpt _x;
  const Locale& r = FM_Data_GetLocale(this, _x);
  _x.Check();
  return r;
}
inline int32 Data::GetNativeType() const {
  _fmxcpt _x;
  int32 r = FM_Data_GetNativeType(this, _x);
  _x.Check();
  return r;
}
inline void Data::ConvertData(int32 nativeType) {
  _fmxcpt _x;
  FM_Data_ConvertData(this, nativeType, _x);
  _x.Check();
}
inline errcode Data::SetAsText(const Text& textData, const Locale& sourceLocale, int32 nativeType) {
  _fmxcpt _x;
  errcode r = FM_Data_SetAsText(this, textData, sourceLocale, nativeType, _x);
  _x.Check();
  return r;
}
inline errcode Data::SetAsNumber(const FixPt& numericData, int32 nativeType) {
  _fmxcpt _x;
  errcode r = FM_Data_SetAsNumber(this, numericData, nativeType, _x);
  _x.Check();
  return r;
}
inline errcode Data::SetBinaryData(const BinaryData& binaryData, bool forceBinaryNativeType) {
  _fmxcpt _x;
  errcode r = FM_Data_SetBinaryData(this, binaryData, forceBinaryNativeType, _x);
  _x.Check();
  return r;
}
inline void Data::Clear(int32 newNativeType) {
  _fmxcpt _x;
  FM_Data_Clear(this, newNativeType, _x);
  _x.Check();
}
inline Data& Data::operator=(const Data& source) {
  _fmxcpt _x;
  Data* r = FM_Data_operatorAS(this, source, _x);
  _x.Check();
  return *r;
}
inline bool Data::operator==(const Data& compareWith) const {
  _fmxcpt _x;
  bool r = FM_Data_operatorEQ(this, compareWith, _x);
  _x.Check();
  return r;
}
inline void Data::operator delete(void* obj) {
  _fmxcpt _x;
  FM_Data_Delete(obj, _x);
}

class DataUniquePtr : public OwnedPtr<Data> {
 public:
  DataUniquePtr() {
    _fmxcpt _x;
    reset(FM_Data_Constructor1(_x));
    _x.Check();
  }
};
using DataAutoPtr = DataUniquePtr;

}  // namespace fmx
