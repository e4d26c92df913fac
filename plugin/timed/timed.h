// The progress window that stays open between calls, the self-closing flash dialog and the plain
// delay, and the tick clock they share.
#pragma once

#include <cstdint>

#include "fmx/FMWrapper.h"
#include "model/switches.h"
#include "toolkit/dialog.h"

// The progress window, null when closed. It lives until a closing command or the idle task's
// defunct check disposes of it; the plug-in's shut-down leaves it alone.
extern toolkit::DialogWindow* gProgressDialog;
extern std::uint32_t gMaxVal;
extern std::uint32_t gDoneAmount;
extern std::uint32_t gLastProgressTicks;

// Ticks (1/60 s) from the toolkit's clock; on the headless toolkit the clock is virtual.
std::uint32_t XP_CurrentTicksTime();
// Blocks the calling thread for that many ticks; no events are handled meanwhile.
void XP_Delay(std::uint32_t ticks);
// A decimal number as the platform's 32-bit strtol reads it: blanks and a sign allowed, digits up
// to the first other character, 0 without digits, and out-of-range values held at the limits.
std::int32_t XP_CStringToLong32(const char* text);

// Sets the progress indicator (item 2) from the amount done and the total.
void Zk7SetProgressBar(toolkit::DialogWindow& dialog, std::uint32_t done, std::uint32_t total);
// Shows the flash window `dlogId` with `message` until `ticks` pass or the person closes it with a
// click, Return or Space. Answers 0 when the time ran out or there was no window, -1 when closed.
std::int32_t Zk7RunFlashDialog(std::int16_t dlogId, std::uint32_t ticks, const fmx::Text& message,
                               const ParSwitches7Tag* rec);
