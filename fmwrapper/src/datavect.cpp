// fmx::DataVect: the argument vector of a function call. It holds copies of the values pushed.
#include "impl.h"

using namespace fmwrapper::detail;
using fmx::_fmxcpt;
using fmx::uint32;

namespace {

DataVectObj& vec(void* p) {
  return *static_cast<DataVectObj*>(p);
}
const DataVectObj& vec(const void* p) {
  return *static_cast<const DataVectObj*>(p);
}

// Room made at the first push: most calls take a few arguments.
constexpr std::size_t kUsualArguments = 8;

// The value at `position`; a position past the end is a bad request.
const DataObj& item(const void* p, uint32 position) {
  const auto& items = vec(p).items;
  if (position >= items.size()) throw BadRequest{};
  return *items[position];
}

}  // namespace

extern "C" {

fmx::DataVect* FM_DataVect_Constructor1(_fmxcpt& _x) noexcept {
  return construct<fmx::DataVect, DataVectObj>(_x, [] { return std::make_unique<DataVectObj>(); });
}

uint32 FM_DataVect_Size(const void* self, _fmxcpt& _x) noexcept {
  return guard(_x, uint32{0}, [&] { return static_cast<uint32>(vec(self).items.size()); });
}

void FM_DataVect_Clear(void* self, _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] { vec(self).items.clear(); });
}

bool FM_DataVect_IsEmpty(const void* self, _fmxcpt& _x) noexcept {
  return guard(_x, true, [&] { return vec(self).items.empty(); });
}

void FM_DataVect_PushBack(void* self, const fmx::Data& d, _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] {
    auto& items = vec(self).items;
    if (items.empty()) items.reserve(kUsualArguments);
    items.push_back(std::make_unique<DataObj>(data(d)));
  });
}

// Hands the last value to the caller, who deletes it; nullptr when the vector is empty.
fmx::Data* FM_DataVect_PopBack(void* self, _fmxcpt& _x) noexcept {
  return guard(_x, static_cast<fmx::Data*>(nullptr), [&] {
    auto& items = vec(self).items;
    if (items.empty()) return static_cast<fmx::Data*>(nullptr);
    DataObj* d = items.back().release();
    items.pop_back();
    objectMade();
    return reinterpret_cast<fmx::Data*>(d);
  });
}

const fmx::Data& FM_DataVect_At(const void* self, uint32 position, _fmxcpt& _x) noexcept {
  return *guard(_x, reinterpret_cast<const fmx::Data*>(&emptyData()),
                [&] { return reinterpret_cast<const fmx::Data*>(&item(self, position)); });
}

const fmx::Text* FM_DataVect_AtAsText(const void* self, uint32 position, _fmxcpt& _x) noexcept {
  return guard(_x, reinterpret_cast<const fmx::Text*>(&emptyData().text),
               [&] { return reinterpret_cast<const fmx::Text*>(&item(self, position).text); });
}

const fmx::FixPt* FM_DataVect_AtAsNumber(const void* self, uint32 position, _fmxcpt& _x) noexcept {
  return guard(_x, reinterpret_cast<const fmx::FixPt*>(&numberOf(emptyData())), [&] {
    return reinterpret_cast<const fmx::FixPt*>(&numberOf(item(self, position)));
  });
}

bool FM_DataVect_AtAsBoolean(const void* self, uint32 position, _fmxcpt& _x) noexcept {
  return guard(_x, false, [&] { return mpq_sgn(numberOf(item(self, position)).v) != 0; });
}

const fmx::BinaryData* FM_DataVect_AtAsBinaryData(const void* self, uint32 position,
                                                  _fmxcpt& _x) noexcept {
  return guard(_x, reinterpret_cast<const fmx::BinaryData*>(&emptyData().binary), [&] {
    return reinterpret_cast<const fmx::BinaryData*>(&item(self, position).binary);
  });
}

void FM_DataVect_Delete(void* self, _fmxcpt& _x) noexcept {
  destroy<DataVectObj>(self, _x);
}

}  // extern "C"
