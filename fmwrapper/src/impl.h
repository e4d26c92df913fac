// The objects behind the opaque fmx:: handles, and the guard every FM_* function runs through.
#pragma once

#include <gmp.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "fmx/FMWrapper.h"

namespace fmwrapper::detail {

struct TextObj {
  std::u16string s;
};

struct QuadCharObj {
  std::array<fmx::uchar, 4> c{};
};

struct LocaleObj {
  fmx::int32 type = fmx::Locale::kType_System;
};

// An exact rational value; `precision` is the number of decimal places a division keeps.
struct FixPtObj {
  FixPtObj() { mpq_init(v); }
  FixPtObj(const FixPtObj& o) : precision(o.precision) {
    mpq_init(v);
    mpq_set(v, o.v);
  }
  FixPtObj& operator=(const FixPtObj& o) {
    if (this != &o) {
      mpq_set(v, o.v);
      precision = o.precision;
    }
    return *this;
  }
  ~FixPtObj() { mpq_clear(v); }
  mpq_t v;
  fmx::int32 precision = fmx::FixPt::kDefltFixedPrecision;
};

struct Stream {
  std::array<fmx::uchar, 4> type{};
  std::vector<fmx::uchar> bytes;
};

struct BinaryObj {
  std::vector<Stream> streams;
};

// A value's number form, made when first asked for: most values are texts, and making a number
// costs allocations.
class NumberSlot {
 public:
  FixPtObj& get() const {
    if (!number_) number_.emplace();
    return *number_;
  }
  fmx::int32 precision() const {
    return number_ ? number_->precision : fmx::FixPt::kDefltFixedPrecision;
  }
  void setZero() {
    if (number_) mpq_set_ui(number_->v, 0, 1);
  }

 private:
  mutable std::optional<FixPtObj> number_;
};

// A calculation value. GetAsText and GetAsNumber hand out references to the text and number
// forms, valid until the value changes. The number form of a text is read when first asked for.
struct DataObj {
  DataObj() {}  // its own constructor: made with (), the object is not zeroed before it is built
  fmx::int32 type = fmx::Data::kDTInvalid;
  TextObj text;
  NumberSlot number;
  mutable bool numberStale = false;
  BinaryObj binary;
  LocaleObj locale;
};

struct DataVectObj {
  std::vector<std::unique_ptr<DataObj>> items;
};

struct ExprEnvObj {};

// A process-wide empty value, answered by look-ups that fail.
const DataObj& emptyData();
// The number form of a value, read from its text when needed.
const FixPtObj& numberOf(const DataObj& d);

template <typename Obj, typename Handle>
Obj* obj(Handle* h) {
  return reinterpret_cast<Obj*>(h);
}
template <typename Obj, typename Handle>
const Obj* obj(const Handle* h) {
  return reinterpret_cast<const Obj*>(h);
}
inline TextObj& text(void* self) {
  return *static_cast<TextObj*>(self);
}
inline const TextObj& text(const void* self) {
  return *static_cast<const TextObj*>(self);
}
inline const TextObj& text(const fmx::Text& t) {
  return *reinterpret_cast<const TextObj*>(&t);
}
inline const QuadCharObj& quad(const fmx::QuadChar& q) {
  return *reinterpret_cast<const QuadCharObj*>(&q);
}
inline const FixPtObj& fixpt(const fmx::FixPt& f) {
  return *reinterpret_cast<const FixPtObj*>(&f);
}
inline FixPtObj& fixpt(fmx::FixPt& f) {
  return *reinterpret_cast<FixPtObj*>(&f);
}
inline const BinaryObj& binary(const fmx::BinaryData& b) {
  return *reinterpret_cast<const BinaryObj*>(&b);
}
inline const DataObj& data(const fmx::Data& d) {
  return *reinterpret_cast<const DataObj*>(&d);
}
inline const LocaleObj& locale(const fmx::Locale& l) {
  return *reinterpret_cast<const LocaleObj*>(&l);
}

// Call counting, fault injection and live objects (calls.cpp); every FM_* call comes through
// here, so the common case is inline. The host calls on one thread: atomics only keep tools such
// as sanitizers quiet, and counters are bumped by a relaxed load and store, not a locked add.
extern std::atomic<std::uint64_t> gCalls;
extern std::atomic<std::uint64_t> gFaultAt;  // the call number that fails; 0 = none
extern std::atomic<std::int64_t> gLive;

template <typename T>
T bump(std::atomic<T>& counter, T by) {
  const T n = counter.load(std::memory_order_relaxed) + by;
  counter.store(n, std::memory_order_relaxed);
  return n;
}

// The fault that falls due on call `n`: its code, or 0 when that call may not fail (the fault
// then waits for the next one).
int faultDue(std::uint64_t n, bool mayFail);

// Counts the call and consumes a pending fault. Returns the fault's code, or 0.
inline int enterCall(bool mayFail) {
  const std::uint64_t n = bump<std::uint64_t>(gCalls, 1);
  const std::uint64_t at = gFaultAt.load(std::memory_order_relaxed);
  return at == 0 || n < at ? 0 : faultDue(n, mayFail);
}
inline void objectMade() {
  bump<std::int64_t>(gLive, 1);
}
inline void objectFreed() {
  bump<std::int64_t>(gLive, -1);
}

// Runs `body` for an FM_* function: counts the call, reports an injected fault without doing
// anything, and turns whatever `body` throws into the pad's code. `fallback` is the answer on
// failure.
template <typename R, typename F>
R guard(fmx::_fmxcpt& x, R fallback, F&& body) noexcept {
  x.m_code = fmx::_fmxcpt::kNoErr;
  if (int fault = enterCall(true)) {
    x.m_code = fault;
    return fallback;
  }
  try {
    return body();
  } catch (const std::bad_alloc&) {
    x.m_code = fmx::_fmxcpt::kBadAlloc;
  } catch (...) {
    x.m_code = fmx::_fmxcpt::kUnknown;
  }
  return fallback;
}

template <typename F>
void guardVoid(fmx::_fmxcpt& x, F&& body) noexcept {
  guard(x, 0, [&] {
    body();
    return 0;
  });
}

// Constructors: a new object owned by the caller, counted as live.
template <typename Handle, typename Obj, typename F>
Handle* construct(fmx::_fmxcpt& x, F&& make) noexcept {
  return guard(x, static_cast<Handle*>(nullptr), [&] {
    std::unique_ptr<Obj> o = make();
    objectMade();
    return reinterpret_cast<Handle*>(o.release());
  });
}

// Deleting never fails: a fault that falls due on a delete passes on to the next call, so that
// fault injection never leaks objects.
template <typename Obj>
void destroy(void* self, fmx::_fmxcpt& x) noexcept {
  x.m_code = fmx::_fmxcpt::kNoErr;
  enterCall(false);
  if (!self) return;
  delete static_cast<Obj*>(self);
  objectFreed();
}

// Error codes the library answers through errcode results.
constexpr fmx::errcode kNoError = 0;
constexpr fmx::errcode kParamErr = -50;

// Thrown inside a body for a request that cannot be served; becomes pad code 2.
struct BadRequest {};

}  // namespace fmwrapper::detail
