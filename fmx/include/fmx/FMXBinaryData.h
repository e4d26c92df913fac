// Host interface: container data, a list of streams, each a four-character type and its bytes.
#pragma once

#include "fmx/FMXTypes.h"

namespace fmx {

class BinaryData {
 public:
  inline BinaryData& operator=(const BinaryData& source);
  inline bool operator==(const BinaryData& compareWith) const;
  inline int32 GetCount() const;
  // Index of the first stream of that type, or -1.
  inline int32 GetIndex(const QuadChar& dataType) const;
  inline uint32 GetTotalSize() const;
  inline void GetType(int32 index, QuadChar& dataType) const;
  inline uint32 GetSize(int32 index) const;
  inline errcode GetData(int32 index, uint32 offset, uint32 amount, void* buffer) const;
  inline errcode Add(const QuadChar& dataType, uint32 amount, void* buffer);
  inline bool Remove(const QuadChar& dataType);
  inline void RemoveAll();
  inline void operator delete(void* obj);

 private:
  BinaryData() = delete;
  BinaryData(const BinaryData&) = delete;
};

}  // namespace fmx

extern "C" {
fmx::BinaryData* FM_BinaryData_Constructor1(fmx::_fmxcpt& _x) noexcept;
fmx::BinaryData* FM_BinaryData_Constructor2(const fmx::BinaryData& sourceData,
                                            fmx::_fmxcpt& _x) noexcept;
fmx::BinaryData* FM_BinaryData_operatorAS(void* self, const fmx::BinaryData& source,
                                          fmx::_fmxcpt& _x) noexcept;
bool FM_BinaryData_operatorEQ(const void* self, const fmx::BinaryData& compareWith,
                              fmx::_fmxcpt& _x) noexcept;
fmx::int32 FM_BinaryData_GetCount(const void* self, fmx::_fmxcpt& _x) noexcept;
fmx::int32 FM_BinaryData_GetIndex(const void* self, const fmx::QuadChar& dataType,
                                  fmx::_fmxcpt& _x) noexcept;
fmx::uint32 FM_BinaryData_GetTotalSize(const void* self, fmx::_fmxcpt& _x) noexcept;
void FM_BinaryData_GetType(const void* self, fmx::int32 index, fmx::QuadChar& dataType,
                           fmx::_fmxcpt& _x) noexcept;
fmx::uint32 FM_BinaryData_GetSize(const void* self, fmx::int32 index, fmx::_fmxcpt& _x) noexcept;
fmx::errcode FM_BinaryData_GetData(const void* self, fmx::int32 index, fmx::uint32 offset,
                                   fmx::uint32 amount, void* buffer, fmx::_fmxcpt& _x) noexcept;
fmx::errcode FM_BinaryData_Add(void* self, const fmx::QuadChar& dataType, fmx::uint32 amount,
                               void* buffer, fmx::_fmxcpt& _x) noexcept;
bool FM_BinaryData_Remove(void* self, const fmx::QuadChar& dataType, fmx::_fmxcpt& _x) noexcept;
void FM_BinaryData_RemoveAll(void* self, fmx::_fmxcpt& _x) noexcept;
void FM_BinaryData_Delete(void* self, fmx::_fmxcpt& _x) noexcept;
}

namespace fmx {

inline BinaryData& BinaryData::operator=(const BinaryData& source) {
  _fmxcpt _x;
  BinaryData* r = FM_BinaryData_operatorAS(this, source, _x);
  _x.Check();
  return *r;
}
inline bool BinaryData::operator==(const BinaryData& compareWith) const {
  _fmxcpt _x;
  bool r = FM_BinaryData_operatorEQ(this, compareWith, _x);
  _x.Check();
  return r;
}
inline int32 BinaryData::GetCount() const {
  _fmxcpt _x;
  int32 r = FM_BinaryData_GetCount(this, _x);
  _x.Check();
  return r;
}
inline int32 BinaryData::GetIndex(const QuadChar& dataType) const {
  _fmxcpt _x;
  int32 r = FM_BinaryData_GetIndex(this, dataType, _x);
  _x.Check();
  return r;
}
inline uint32 BinaryData::GetTotalSize() const {
  _fmxcpt _x;
  uint32 r = FM_BinaryData_GetTotalSize(this, _x);
  _x.Check();
  return r;
}
inline void BinaryData::GetType(int32 index, QuadChar& dataType) const {
  _fmxcpt _x;
  FM_BinaryData_GetType(this, index, dataType, _x);
  _x.Check();
}
inline uint32 BinaryData::GetSize(int32 index) const {
  _fmxcpt _x;
  uint32 r = FM_BinaryData_GetSize(this, index, _x);
  _x.Check();
  return r;
}
inline errcode BinaryData::GetData(int32 index, uint32 offset, uint32 amount, void* buffer) const {
  _fmxcpt _x;
  errcode r = FM_BinaryData_GetData(this, index, offset, amount, buffer, _x);
  _x.Check();
  return r;
}
inline errcode BinaryData::Add(const QuadChar& dataType, uint32 amount, void* buffer) {
  _fmxcpt _x;
  errcode r = FM_BinaryData_Add(this, dataType, amount, buffer, _x);
  _x.Check();
  return r;
}
inline bool BinaryData::Remove(const QuadChar& dataType) {
  _fmxcpt _x;
  bool r = FM_BinaryData_Remove(this, dataType, _x);
  _x.Check();
  return r;
}
inline void BinaryData::RemoveAll() {
  _fmxcpt _x;
  FM_BinaryData_RemoveAll(this, _x);
  _x.Check();
}
inline void BinaryData::operator delete(void* obj) {
  _fmxcpt _x;
  FM_BinaryData_Delete(obj, _x);
}

class BinaryDataUniquePtr : public OwnedPtr<BinaryData> {
 public:
  BinaryDataUniquePtr() {
    _fmxcpt _x;
    reset(FM_BinaryData_Constructor1(_x));
    _x.Check();
  }
  explicit BinaryDataUniquePtr(const BinaryData& sourceData) {
    _fmxcpt _x;
    reset(FM_BinaryData_Constructor2(sourceData, _x));
    _x.Check();
  }
};
using BinaryDataAutoPtr = BinaryDataUniquePtr;

}  // namespace fmx
