// Call counting, fault injection and the count of live objects.
#include <atomic>

#include "fmwrapper/host_api.h"
#include "impl.h"

namespace fmwrapper {
namespace detail {

std::atomic<std::uint64_t> gCalls{0};
std::atomic<std::uint64_t> gFaultAt{0};
std::atomic<std::int64_t> gLive{0};

namespace {

std::atomic<int> gFaultCode{0};

}  // namespace

int faultDue(std::uint64_t n, bool mayFail) {
  if (!mayFail) {
    gFaultAt = n + 1;
    return 0;
  }
  gFaultAt = 0;
  return gFaultCode;
}

}  // namespace detail

using detail::gCalls;
using detail::gFaultAt;
using detail::gLive;

void injectFault(std::uint64_t k, int code) {
  if (k == 0 || (code != fmx::_fmxcpt::kBadAlloc && code != fmx::_fmxcpt::kUnknown)) {
    gFaultAt = 0;
    return;
  }
  gFaultAt = gCalls + k;
  detail::gFaultCode = code;
}

std::uint64_t callCount() {
  return gCalls;
}
std::int64_t liveObjects() {
  return gLive;
}

}  // namespace fmwrapper
