// fmx::BinaryData: container data, a list of streams, each a four-character type and its bytes.
#include <cstring>

#include "impl.h"

using namespace fmwrapper::detail;
using fmx::_fmxcpt;
using fmx::int32;
using fmx::uint32;

namespace {

BinaryObj& bin(void* p) {
  return *static_cast<BinaryObj*>(p);
}
const BinaryObj& bin(const void* p) {
  return *static_cast<const BinaryObj*>(p);
}

int32 indexOf(const BinaryObj& b, const fmx::QuadChar& type) {
  const auto& t = quad(type).c;
  for (std::size_t i = 0; i < b.streams.size(); ++i) {
    if (b.streams[i].type == t) return static_cast<int32>(i);
  }
  return -1;
}

const Stream* at(const BinaryObj& b, int32 index) {
  if (index < 0 || static_cast<std::size_t>(index) >= b.streams.size()) return nullptr;
  return &b.streams[static_cast<std::size_t>(index)];
}

}  // namespace

extern "C" {

fmx::BinaryData* FM_BinaryData_Constructor1(_fmxcpt& _x) noexcept {
  return construct<fmx::BinaryData, BinaryObj>(_x, [] { return std::make_unique<BinaryObj>(); });
}

fmx::BinaryData* FM_BinaryData_Constructor2(const fmx::BinaryData& sourceData,
                                            _fmxcpt& _x) noexcept {
  return construct<fmx::BinaryData, BinaryObj>(
      _x, [&] { return std::make_unique<BinaryObj>(binary(sourceData)); });
}

fmx::BinaryData* FM_BinaryData_operatorAS(void* self, const fmx::BinaryData& source,
                                          _fmxcpt& _x) noexcept {
  return guard(_x, static_cast<fmx::BinaryData*>(self), [&] {
    if (self != &source) bin(self).streams = binary(source).streams;
    return static_cast<fmx::BinaryData*>(self);
  });
}

bool FM_BinaryData_operatorEQ(const void* self, const fmx::BinaryData& compareWith,
                              _fmxcpt& _x) noexcept {
  return guard(_x, false, [&] {
    const auto& a = bin(self).streams;
    const auto& b = binary(compareWith).streams;
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
      if (a[i].type != b[i].type || a[i].bytes != b[i].bytes) return false;
    }
    return true;
  });
}

int32 FM_BinaryData_GetCount(const void* self, _fmxcpt& _x) noexcept {
  return guard(_x, int32{0}, [&] { return static_cast<int32>(bin(self).streams.size()); });
}

int32 FM_BinaryData_GetIndex(const void* self, const fmx::QuadChar& dataType,
                             _fmxcpt& _x) noexcept {
  return guard(_x, int32{-1}, [&] { return indexOf(bin(self), dataType); });
}

uint32 FM_BinaryData_GetTotalSize(const void* self, _fmxcpt& _x) noexcept {
  return guard(_x, uint32{0}, [&] {
    std::size_t total = 0;
    for (const auto& s : bin(self).streams) total += s.bytes.size();
    return static_cast<uint32>(total);
  });
}

// An index out of range is a bad request; the type is left alone.
void FM_BinaryData_GetType(const void* self, int32 index, fmx::QuadChar& dataType,
                           _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] {
    const Stream* s = at(bin(self), index);
    if (!s) throw BadRequest{};
    reinterpret_cast<QuadCharObj&>(dataType).c = s->type;
  });
}

// 0 for an index out of range.
uint32 FM_BinaryData_GetSize(const void* self, int32 index, _fmxcpt& _x) noexcept {
  return guard(_x, uint32{0}, [&] {
    const Stream* s = at(bin(self), index);
    return s ? static_cast<uint32>(s->bytes.size()) : uint32{0};
  });
}

// Copies `amount` bytes from `offset`; a read outside the stream copies nothing and answers -50.
fmx::errcode FM_BinaryData_GetData(const void* self, int32 index, uint32 offset, uint32 amount,
                                   void* buffer, _fmxcpt& _x) noexcept {
  return guard(_x, kParamErr, [&] {
    const Stream* s = at(bin(self), index);
    if (!s || (!buffer && amount > 0)) return kParamErr;
    const std::size_t size = s->bytes.size();
    if (offset > size || amount > size - offset) return kParamErr;
    if (amount > 0) std::memcpy(buffer, s->bytes.data() + offset, amount);
    return kNoError;
  });
}

// Adds a stream at the end. A type that is already present is refused (-50): each type occurs
// once in a container.
fmx::errcode FM_BinaryData_Add(void* self, const fmx::QuadChar& dataType, uint32 amount,
                               void* buffer, _fmxcpt& _x) noexcept {
  return guard(_x, kParamErr, [&] {
    BinaryObj& b = bin(self);
    if (indexOf(b, dataType) >= 0 || (!buffer && amount > 0)) return kParamErr;
    Stream s;
    s.type = quad(dataType).c;
    const auto* bytes = static_cast<const fmx::uchar*>(buffer);
    if (amount > 0) s.bytes.assign(bytes, bytes + amount);
    b.streams.push_back(std::move(s));
    return kNoError;
  });
}

bool FM_BinaryData_Remove(void* self, const fmx::QuadChar& dataType, _fmxcpt& _x) noexcept {
  return guard(_x, false, [&] {
    BinaryObj& b = bin(self);
    const int32 i = indexOf(b, dataType);
    if (i < 0) return false;
    b.streams.erase(b.streams.begin() + i);
    return true;
  });
}

void FM_BinaryData_RemoveAll(void* self, _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] { bin(self).streams.clear(); });
}

void FM_BinaryData_Delete(void* self, _fmxcpt& _x) noexcept {
  destroy<BinaryObj>(self, _x);
}

}  // extern "C"
