// Mosa_DelayTicks: pauses the script for a number of ticks without showing anything.
#include <climits>

#include "frame/handler_frame.h"
#include "frame/handlers.h"
#include "timed/timed.h"
#include "util/cstring.h"
#include "util/errors.h"
#include "util/hosttext.h"

namespace {

constexpr std::uint32_t kEmptyDelayTicks = 60;
constexpr std::uint32_t kMaxDelayTicks = 7200;

}  // namespace

std::uint32_t XP_CurrentTicksTime() {
  return toolkit::tickCount();
}

void XP_Delay(std::uint32_t ticks) {
  toolkit::delay(ticks);
}

std::int32_t XP_CStringToLong32(const char* text) {
  const long value = XP_CStringToNum(text, nullptr);
  if (value > INT32_MAX) return INT32_MAX;
  if (value < INT32_MIN) return INT32_MIN;
  return static_cast<std::int32_t>(value);
}

MOSA_HANDLER(ZkMosa7_DoDelayTicks) {
  (void)funcId, (void)env;
  return Zk7HandlerFrame(args, result, 2, [](Zk7Call& call, fmx::int32& err) {
    if (err != kErrNone) return;
    char pause[kSwitchesBytes];
    XP7_GetNextCStringFromVect(call.args, pause, sizeof pause, &call.index,
                               fmx::Text::kEncoding_Native);
    // Unlike the flash dialog's time, an empty text waits a second and zero not at all.
    std::uint32_t ticks = kEmptyDelayTicks;
    if (pause[0]) {
      ticks = static_cast<std::uint32_t>(XP_CStringToLong32(pause));
      if (ticks > kMaxDelayTicks) ticks = kMaxDelayTicks;  // negative counts as very large
    }
    XP_Delay(ticks);
  });
}
