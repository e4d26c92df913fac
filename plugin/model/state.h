// The process-wide dialog state: what setters store before a dialog, what dialogs leave behind for
// the getters. One instance per process, plain globals with fixed-size storage.
#pragma once

#include <cstdint>

#include "fmx/FMWrapper.h"
#include "util/hosttext.h"

constexpr int kMosaEntries = 9;     // labels, inputs and pop-ups are numbered 1 to 9
constexpr int kMosaRowUnits = 256;  // 255 UTF-16 units and a terminating zero
constexpr std::int32_t kMosaNoSelection = -42;

extern UniChar gLabelTextsUNI[kMosaEntries][kMosaRowUnits];
extern UniChar gInputTextUNI[kMosaEntries][kMosaRowUnits];
// Made on first use (the host library must be loaded before a host text can exist).
fmx::TextAutoPtr& gPopupTxt(int row);  // row 0..8 is pop-up 1..9
extern std::int32_t gItemSelected[kMosaEntries];
extern UniChar gDefaultDialogTitleUNI[kMosaRowUnits];

enum : std::uint16_t { kPositionDefault = 0, kPositionOnce = 1, kPositionAlways = 2 };
extern std::uint16_t gCustomWindPosition;
extern unsigned char gAnimateWindPosition;
extern std::int16_t gLeft;
extern std::int16_t gTop;

// The list pre-selection, kept in UTF-16 like the list's items so that any item can be named.
extern UniChar gInitialSelectStr[kMosaRowUnits];
constexpr std::uint32_t kDefaultDefunctTicks = 1800;  // 30 seconds
extern std::uint32_t gProgressDefunctTicks;

extern std::int32_t gLastButtonNumberClicked;
fmx::TextAutoPtr& gLastButtonTextClickedTxt();
fmx::TextAutoPtr& gHistoryTxt();
extern unsigned char gHistoryTxt_Stored;

extern const char* gSeparatorStr;
extern std::int32_t gRemoveEmptyLineAtEnd;
extern std::int16_t gAListCount;
extern std::int16_t gAInitialSelectItem;

// Frees the host texts above; called at shut-down so nothing outlives the host library.
void Zk7ReleaseDialogState();
