// The functions that store labels, inputs, pop-ups, title, position, preference and the list
// pre-selection before a dialog. Each answers "0", or "$$-50" and leaves the state as it was.
#include "frame/handlers.h"
#include "model/preamble.h"
#include "model/state.h"
#include "util/cstring.h"
#include "util/errors.h"
#include "util/hosttext.h"

namespace {

constexpr std::uint32_t kMinDefunctTicks = 20;

// Rows 1 to 9 from the next nine arguments; arguments not given empty their rows.
void ReadRows(const fmx::DataVect& args, fmx::uint32* index, UniChar rows[][kMosaRowUnits]) {
  fmx::TextAutoPtr txt;
  for (int row = 0; row < kMosaEntries; ++row) {
    XP7_GetNextTxtFromVect(args, txt, index);
    XP7_TxtToUniStr(txt, rows[row], kMosaRowUnits);
  }
}

}  // namespace

MOSA_HANDLER(ZkMosa7_DoSetLabels) {
  (void)funcId, (void)env;
  fmx::LocaleAutoPtr locale;
  char switches[kSwitchesBytes];
  fmx::uint32 index = 0;
  const fmx::int32 err = Zk7BeginCall(args, 2, locale, switches, &index);
  // Kept as it always was: a refused call still stores, starting from argument 1.
  ReadRows(args, &index, gLabelTextsUNI);
  Zk7SetErrorResult(err, locale, result);
  return 0;
}

MOSA_HANDLER(ZkMosa7_DoSetInput) {
  (void)funcId, (void)env;
  fmx::LocaleAutoPtr locale;
  char switches[kSwitchesBytes];
  fmx::uint32 index = 0;
  const fmx::int32 err = Zk7BeginCall(args, 2, locale, switches, &index);
  if (err == kErrNone) {
    if (gHistoryTxt_Stored) {
      gHistoryTxt()->DeleteText(0, fmx::kSize_End);
      gHistoryTxt_Stored = 0;
    }
    ReadRows(args, &index, gInputTextUNI);
  }
  Zk7SetErrorResult(err, locale, result);
  return 0;
}

MOSA_HANDLER(ZkMosa7_DoSetPopup) {
  (void)funcId, (void)env;
  fmx::LocaleAutoPtr locale;
  char switches[kSwitchesBytes];
  fmx::uint32 index = 0;
  fmx::int32 err = Zk7BeginCall(args, 2, locale, switches, &index);
  std::int32_t entry = 0;
  if (err == kErrNone &&
      (!XP_GetTaggedLong(switches, "-popup", &entry) || entry < 1 || entry > kMosaEntries))
    err = kErrParam;
  if (err == kErrNone) {
    gItemSelected[entry - 1] = XP_HasSwitch(switches, "-NoSelection") ? kMosaNoSelection : 1;
    XP7_GetNextTxtFromVect(args, gPopupTxt(entry - 1), &index);
  }
  Zk7SetErrorResult(err, locale, result);
  return 0;
}

MOSA_HANDLER(ZkMosa7_DoSetDialogTitle) {
  (void)funcId, (void)env;
  fmx::LocaleAutoPtr locale;
  char switches[kSwitchesBytes];
  fmx::uint32 index = 0;
  const fmx::int32 err = Zk7BeginCall(args, 2, locale, switches, &index);
  if (err == kErrNone) {
    fmx::TextAutoPtr txt;
    XP7_GetNextTxtFromVect(args, txt, &index);
    XP7_TxtToUniStr(txt, gDefaultDialogTitleUNI, kMosaRowUnits);
  }
  Zk7SetErrorResult(err, locale, result);
  return 0;
}

MOSA_HANDLER(ZkMosa7_DoSetPosition) {
  (void)funcId, (void)env;
  fmx::LocaleAutoPtr locale;
  char switches[kSwitchesBytes];
  fmx::uint32 index = 0;
  const fmx::int32 err = Zk7BeginCall(args, 1, locale, switches, &index);
  if (err == kErrNone) {
    // "-once" wins over "-all", which wins over "-default"; none of them means once.
    gCustomWindPosition = kPositionOnce;
    if (!XP_HasSwitch(switches, "-once")) {
      if (XP_HasSwitch(switches, "-all"))
        gCustomWindPosition = kPositionAlways;
      else if (XP_HasSwitch(switches, "-default"))
        gCustomWindPosition = kPositionDefault;
    }
    gAnimateWindPosition = XP_HasSwitch(switches, "-Animation42") ? 1 : 0;
    gLeft = static_cast<std::int16_t>(XP7_GetNextlongFromVect(args, &index));
    gTop = static_cast<std::int16_t>(XP7_GetNextlongFromVect(args, &index));
  }
  Zk7SetErrorResult(err, locale, result);
  return 0;
}

MOSA_HANDLER(ZkMosa7_DoSetPreference) {
  (void)funcId, (void)env;
  fmx::LocaleAutoPtr locale;
  char switches[kSwitchesBytes];
  fmx::uint32 index = 0;
  fmx::int32 err = Zk7BeginCall(args, 2, locale, switches, &index);
  if (err == kErrNone && !XP_HasSwitch(switches, "-progressbardefunctticks")) err = kErrParam;
  if (err == kErrNone) {
    const auto ticks = static_cast<std::uint32_t>(XP7_GetNextlongFromVect(args, &index));
    gProgressDefunctTicks = ticks == 0 ? kMinDefunctTicks : ticks;
  }
  Zk7SetErrorResult(err, locale, result);
  return 0;
}

MOSA_HANDLER(ZkMosa7_DoSetListInput) {
  (void)funcId, (void)env;
  fmx::LocaleAutoPtr locale;
  char switches[kSwitchesBytes];
  fmx::uint32 index = 0;
  const fmx::int32 err = Zk7BeginCall(args, 2, locale, switches, &index);
  if (err == kErrNone) {
    // Kept in UTF-16 (255 units), as the list's items are.
    fmx::TextAutoPtr txt;
    XP7_GetNextTxtFromVect(args, txt, &index);
    XP7_TxtToUniStr(txt, gInitialSelectStr, kMosaRowUnits);
  }
  Zk7SetErrorResult(err, locale, result);
  return 0;
}
