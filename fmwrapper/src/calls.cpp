// Call counting, fault injection and the count of live objects.
#include <atomic>

#include "fmwrapper/host_api.h"
#include "impl.h"

namespace fmwrapper {
namespace {

// The host calls on one thread; atomics only keep tools such as sanitizers quiet about helpers,
// so the counters are bumped by a relaxed load and store: no locked instruction on every call.
std::atomic<std::uint64_t> gCalls{0};
std::atomic<std::uint64_t> gFaultAt{0};  // the call number that fails; 0 = none
std::atomic<int> gFaultCode{0};
std::atomic<std::int64_t> gLive{0};

}  // namespace

void injectFault(std::uint64_t k, int code) {
  if (k == 0 || (code != fmx::_fmxcpt::kBadAlloc && code != fmx::_fmxcpt::kUnknown)) {
    gFaultAt = 0;
    return;
  }
  gFaultAt = gCalls + k;
  gFaultCode = code;
}

std::uint64_t callCount() {
  return gCalls;
}
std::int64_t liveObjects() {
  return gLive;
}

namespace detail {

template <typename T>
T bump(std::atomic<T>& counter, T by) {
  const T n = counter.load(std::memory_order_relaxed) + by;
  counter.store(n, std::memory_order_relaxed);
  return n;
}

int enterCall(bool mayFail) {
  const std::uint64_t n = bump<std::uint64_t>(gCalls, 1);
  const std::uint64_t at = gFaultAt.load(std::memory_order_relaxed);
  if (at == 0 || n < at) return 0;
  if (!mayFail) {
    gFaultAt = n + 1;
    return 0;
  }
  gFaultAt = 0;
  return gFaultCode;
}

void objectMade() {
  bump<std::int64_t>(gLive, 1);
}
void objectFreed() {
  bump<std::int64_t>(gLive, -1);
}

}  // namespace detail
}  // namespace fmwrapper
