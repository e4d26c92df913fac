// Mosa_DelayTicks: pauses the script for a number of ticks without showing anything.
#include <climits>
#include <new>

#include "frame/handlers.h"
#include "model/preamble.h"
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
  fmx::LocaleAutoPtr locale;
  fmx::int32 err = kErrNone;
  try {
    char switches[kSwitchesBytes];
    fmx::uint32 index = 0;
    err = Zk7BeginCall(args, 2, locale, switches, &index);
    if (err == kErrNone) {
      char pause[kSwitchesBytes];
      XP7_GetNextCStringFromVect(args, pause, sizeof pause, &index, fmx::Text::kEncoding_Native);
      // Unlike the flash dialog's time, an empty text waits a second and zero not at all.
      std::uint32_t ticks = kEmptyDelayTicks;
      if (pause[0]) {
        ticks = static_cast<std::uint32_t>(XP_CStringToLong32(pause));
        if (ticks > kMaxDelayTicks) ticks = kMaxDelayTicks;  // negative counts as very large
      }
      XP_Delay(ticks);
    }
  } catch (const std::bad_alloc&) {
    err = kErrMemory;
  } catch (...) {
    err = kErrParam;
  }
  try {
    Zk7SetErrorResult(err, locale, result);
  } catch (...) {
  }
  return 0;
}
