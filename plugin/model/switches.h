// The switches of one dialog call: words in the call's first argument, parsed into a record.
#pragma once

#include <cstdint>

#include "model/state.h"

// Dialog kinds the callers pass; only the big input dialog reads its buttons' switches differently.
enum : std::int16_t {
  kDlgKindBigInput = 1,
  kDlgKindStandard = 3,
  kDlgKindFlash = 5,
  kDlgKindList = 6,
  kDlgKindInput = 11
};

// What kind of control input field n is.
enum : std::int16_t { kFieldKindText = 0, kFieldKindPopup = 1, kFieldKindCheckbox = 2 };

constexpr std::int16_t kNoStartField = -42;
constexpr std::int32_t kBigInputMaxChars = 64000;

struct ParSwitches7Tag {
  unsigned char returnButtonText;     // "-ReturnButtonText"
  unsigned char returnListText;       // "-ReturnListText"
  unsigned char buttonNeedsInput[4];  // "-ButtonNNeedsText" (big input) / "-ButtonNNeedsSelection"
  std::uint16_t defaultButton;        // 1 to 4
  std::int16_t startField;            // kNoStartField when not given
  UniChar dialogTitle[kMosaRowUnits];
  unsigned char bullet[kMosaEntries];  // "-BulletN": field N shows bullets
  unsigned char removeBulletText;      // 0 with "-KeepBulletText"
  std::int16_t fieldKind[kMosaEntries];
  unsigned char ignoreEscape;  // 0 with "-StopOnESC"
  std::int32_t icon;           // kIconNone, kIconCustom, or the note, caution or stop icon
};

void Zk7ParseSwitches(const char* switches, std::int16_t dialogKind, ParSwitches7Tag* rec);
// The big input dialog's size and length switches; 0, or -92 for a bad "-MaxChars"/"-MinChars".
std::int16_t ZkParseBTSwitches(const char* switches, std::int16_t* width, std::int16_t* height,
                               std::int32_t* maxChars, std::int32_t* minChars);
// A number of ticks: 0 or no number gives the default, the result is capped at the maximum.
std::uint32_t Zk7ParseDelayTime(const char* text, std::uint32_t defaultTicks,
                                std::uint32_t maximum);
