// Host interface: argument vectors, the expression environment and external-function registration.
#pragma once

#include "fmx/FMXData.h"
#include "fmx/FMXTypes.h"

namespace fmx {

class DataVect {
 public:
  inline uint32 Size() const;
  inline void Clear();
  inline bool IsEmpty() const;
  inline void PushBack(const Data& data);
  // The caller owns the returned value (nullptr when the vector is empty).
  inline Data* PopBack();
  inline const Data& At(uint32 position) const;
  inline const Text& AtAsText(uint32 position) const;
  inline const FixPt& AtAsNumber(uint32 position) const;
  inline bool AtAsBoolean(uint32 position) const;
  inline const BinaryData& AtAsBinaryData(uint32 position) const;
  inline void operator delete(void* obj);

 private:
  DataVect() = delete;
  DataVect(const DataVect&) = delete;
};

class ExprEnv;

// Signature of every external function the host calls.
using ExtPluginType = errcode (*)(int16 functionId, const ExprEnv& env, const DataVect& parms,
                                  Data& result);

class ExprEnv {
 public:
  // Registration flags are the host's display flags; this plug-in passes them through unchanged.
  enum : uint32 { kMayEvaluateOnServer = 0x00000001, kDisplayInAllDialogs = 0x0000FF00 };

  inline errcode Evaluate(const Text& expression, Data& result) const;
  static inline errcode RegisterExternalFunction(const QuadChar& pluginId, int16 functionId,
                                                 const Text& functionName,
                                                 const Text& functionPrototype, int16 minArgs,
                                                 int16 maxArgs, uint32 typeFlags,
                                                 ExtPluginType funcPtr);
  static inline errcode UnRegisterExternalFunction(const QuadChar& pluginId, int16 functionId);
  inline void operator delete(void* obj);

 private:
  ExprEnv() = delete;
  ExprEnv(const ExprEnv&) = delete;
};

}  // namespace fmx

// The host interface returns references from some C functions, as the host's own interface does.
#if defined(__clang__)
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wreturn-type-c-linkage"
#endif
extern "C" {
fmx::DataVect* FM_DataVect_Constructor1(fmx::_fmxcpt& _x) noexcept;
fmx::uint32 FM_DataVect_Size(const void* self, fmx::_fmxcpt& _x) noexcept;
void FM_DataVect_Clear(void* self, fmx::_fmxcpt& _x) noexcept;
bool FM_DataVect_IsEmpty(const void* self, fmx::_fmxcpt& _x) noexcept;
void FM_DataVect_PushBack(void* self, const fmx::Data& data, fmx::_fmxcpt& _x) noexcept;
fmx::Data* FM_DataVect_PopBack(void* self, fmx::_fmxcpt& _x) noexcept;
const fmx::Data& FM_DataVect_At(const void* self, fmx::uint32 position, fmx::_fmxcpt& _x) noexcept;
const fmx::Text* FM_DataVect_AtAsText(const void* self, fmx::uint32 position,
                                      fmx::_fmxcpt& _x) noexcept;
const fmx::FixPt* FM_DataVect_AtAsNumber(const void* self, fmx::uint32 position,
                                         fmx::_fmxcpt& _x) noexcept;
bool FM_DataVect_AtAsBoolean(const void* self, fmx::uint32 position, fmx::_fmxcpt& _x) noexcept;
const fmx::BinaryData* FM_DataVect_AtAsBinaryData(const void* self, fmx::uint32 position,
                                                  fmx::_fmxcpt& _x) noexcept;
void FM_DataVect_Delete(void* self, fmx::_fmxcpt& _x) noexcept;

fmx::ExprEnv* FM_ExprEnv_Constructor1(fmx::_fmxcpt& _x) noexcept;
fmx::errcode FM_ExprEnv_Evaluate(const void* self, const fmx::Text& expression, fmx::Data& result,
                                 fmx::_fmxcpt& _x) noexcept;
fmx::errcode FM_ExprEnv_RegisterExternalFunction(
    const fmx::QuadChar& pluginId, fmx::int16 functionId, const fmx::Text& functionName,
    const fmx::Text& functionPrototype, fmx::int16 minArgs, fmx::int16 maxArgs,
    fmx::uint32 typeFlags, fmx::ExtPluginType funcPtr, fmx::_fmxcpt& _x) noexcept;
fmx::errcode FM_ExprEnv_UnRegisterExternalFunction(const fmx::QuadChar& pluginId,
                                                   fmx::int16 functionId,
                                                   fmx::_fmxcpt& _x) noexcept;
void FM_ExprEnv_Delete(void* self, fmx::_fmxcpt& _x) noexcept;
}
#if defined(__clang__)
#pragma clang diagnostic pop
#endif

namespace fmx {

inline uint32 DataVect::Size() const {
  _fmxcpt _x;
  uint32 r = FM_DataVect_Size(this, _x);
  _x.Check();
  return r;
}
inline void DataVect::Clear() {
  _fmxcpt _x;
  FM_DataVect_Clear(this, _x);
  _x.Check();
}
inline bool DataVect::IsEmpty() const {
  _fmxcpt _x;
  bool r = FM_DataVect_IsEmpty(this, _x);
  _x.Check();
  return r;
}
inline void DataVect::PushBack(const Data& data) {
  _fmxcpt _x;
  FM_DataVect_PushBack(this, data, _x);
  _x.Check();
}
inline Data* DataVect::PopBack() {
  _fmxcpt _x;
  Data* r = FM_DataVect_PopBack(this, _x);
  _x.Check();
  return r;
}
inline const Data& DataVect::At(uint32 position) const {
  _fmxcpt _x;
  const Data& r = FM_DataVect_At(this, position, _x);
  _x.Check();
  return r;
}
inline const Text& DataVect::AtAsText(uint32 position) const {
  _fmxcpt _x;
  const Text* r = FM_DataVect_AtAsText(this, position, _x);
  _x.Check();
  return *r;
}
inline const FixPt& DataVect::AtAsNumber(uint32 position) const {
  _fmxcpt _x;
  const FixPt* r = FM_DataVect_AtAsNumber(this, position, _x);
  _x.Check();
  return *r;
}
inline bool DataVect::AtAsBoolean(uint32 position) const {
  _fmxcpt _x;
  bool r = FM_DataVect_AtAsBoolean(this, position, _x);
  _x.Check();
  return r;
}
inline const BinaryData& DataVect::AtAsBinaryData(uint32 position) const {
  _fmxcpt _x;
  const BinaryData* r = FM_DataVect_AtAsBinaryData(this, position, _x);
  _x.Check();
  return *r;
}
inline void DataVect::operator delete(void* obj) {
  _fmxcpt _x;
  FM_DataVect_Delete(obj, _x);
}

inline errcode ExprEnv::Evaluate(const Text& expression, Data& result) const {
  _fmxcpt _x;
  errcode r = FM_ExprEnv_Evaluate(this, expression, result, _x);
  _x.Check();
  return r;
}
inline errcode ExprEnv::RegisterExternalFunction(const QuadChar& pluginId, int16 functionId,
                                                 const Text& functionName,
                                                 const Text& functionPrototype, int16 minArgs,
                                                 int16 maxArgs, uint32 typeFlags,
                                                 ExtPluginType funcPtr) {
  _fmxcpt _x;
  errcode r =
      FM_ExprEnv_RegisterExternalFunction(pluginId, functionId, functionName, functionPrototype,
                                          minArgs, maxArgs, typeFlags, funcPtr, _x);
  _x.Check();
  return r;
}
inline errcode ExprEnv::UnRegisterExternalFunction(const QuadChar& pluginId, int16 functionId) {
  _fmxcpt _x;
  errcode r = FM_ExprEnv_UnRegisterExternalFunction(pluginId, functionId, _x);
  _x.Check();
  return r;
}
inline void ExprEnv::operator delete(void* obj) {
  _fmxcpt _x;
  FM_ExprEnv_Delete(obj, _x);
}

class DataVectUniquePtr : public OwnedPtr<DataVect> {
 public:
  DataVectUniquePtr() {
    _fmxcpt _x;
    reset(FM_DataVect_Constructor1(_x));
    _x.Check();
  }
};
using DataVectAutoPtr = DataVectUniquePtr;

class ExprEnvUniquePtr : public OwnedPtr<ExprEnv> {
 public:
  ExprEnvUniquePtr() {
    _fmxcpt _x;
    reset(FM_ExprEnv_Constructor1(_x));
    _x.Check();
  }
};

}  // namespace fmx
