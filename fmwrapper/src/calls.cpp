// Call counting, fault injection and the count of live objects.
#include <atomic>

#include "fmwrapper/host_api.h"
#include "impl.h"

namespace fmwrapper {
namespace {

// The host calls on one thread; atomics only keep tools such as sanitizers quiet about helpers.
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

int enterCall(bool mayFail) {
  const std::uint64_t n = ++gCalls;
  const std::uint64_t at = gFaultAt;
  if (at == 0 || n < at) return 0;
  if (!mayFail) {
    gFaultAt = n + 1;
    return 0;
  }
  gFaultAt = 0;
  return gFaultCode;
}

void objectMade() {
  ++gLive;
}
void objectFreed() {
  --gLive;
}

}  // namespace detail
}  // namespace fmwrapper
