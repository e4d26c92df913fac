// The functions that store labels, inputs, pop-ups, title, position, preference and the list
// pre-selection before a dialog. Each answers "0", or "$$-50" and leaves the state as it was.
#include "frame/handler_frame.h"
#include "frame/handlers.h"
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
  return Zk7HandlerFrame(args, result, 2, [](Zk7Call& call, fmx::int32& err) {
    // Kept as it always was: a refused call still stores, starting from argument 1, and still
    // answers its error.
    (void)err;
    ReadRows(call.args, &call.index, gLabelTextsUNI);
  });
}

MOSA_HANDLER(ZkMosa7_DoSetInput) {
  (void)funcId, (void)env;
  return Zk7HandlerFrame(args, result, 2, [](Zk7Call& call, fmx::int32& err) {
    if (err != kErrNone) return;
    if (gHistoryTxt_Stored) {
      gHistoryTxt()->DeleteText(0, fmx::kSize_End);
      gHistoryTxt_Stored = 0;
    }
    ReadRows(call.args, &call.index, gInputTextUNI);
  });
}

MOSA_HANDLER(ZkMosa7_DoSetPopup) {
  (void)funcId, (void)env;
  return Zk7HandlerFrame(args, result, 2, [](Zk7Call& call, fmx::int32& err) {
    std::int32_t entry = 0;
    if (err == kErrNone &&
        (!XP_GetTaggedLong(call.switches, "-popup", &entry) || entry < 1 || entry > kMosaEntries))
      err = kErrParam;
    if (err != kErrNone) return;
    gItemSelected[entry - 1] = XP_HasSwitch(call.switches, "-NoSelection") ? kMosaNoSelection : 1;
    XP7_GetNextTxtFromVect(call.args, gPopupTxt(entry - 1), &call.index);
  });
}

MOSA_HANDLER(ZkMosa7_DoSetDialogTitle) {
  (void)funcId, (void)env;
  return Zk7HandlerFrame(args, result, 2, [](Zk7Call& call, fmx::int32& err) {
    if (err != kErrNone) return;
    fmx::TextAutoPtr txt;
    XP7_GetNextTxtFromVect(call.args, txt, &call.index);
    XP7_TxtToUniStr(txt, gDefaultDialogTitleUNI, kMosaRowUnits);
  });
}

MOSA_HANDLER(ZkMosa7_DoSetPosition) {
  (void)funcId, (void)env;
  return Zk7HandlerFrame(args, result, 1, [](Zk7Call& call, fmx::int32& err) {
    if (err != kErrNone) return;
    const char* switches = call.switches;
    // "-once" wins over "-all", which wins over "-default"; none of them means once.
    gCustomWindPosition = kPositionOnce;
    if (!XP_HasSwitch(switches, "-once")) {
      if (XP_HasSwitch(switches, "-all"))
        gCustomWindPosition = kPositionAlways;
      else if (XP_HasSwitch(switches, "-default"))
        gCustomWindPosition = kPositionDefault;
    }
    gAnimateWindPosition = XP_HasSwitch(switches, "-Animation42") ? 1 : 0;
    gLeft = static_cast<std::int16_t>(XP7_GetNextlongFromVect(call.args, &call.index));
    gTop = static_cast<std::int16_t>(XP7_GetNextlongFromVect(call.args, &call.index));
  });
}

MOSA_HANDLER(ZkMosa7_DoSetPreference) {
  (void)funcId, (void)env;
  return Zk7HandlerFrame(args, result, 2, [](Zk7Call& call, fmx::int32& err) {
    if (err == kErrNone && !XP_HasSwitch(call.switches, "-progressbardefunctticks"))
      err = kErrParam;
    if (err != kErrNone) return;
    const auto ticks = static_cast<std::uint32_t>(XP7_GetNextlongFromVect(call.args, &call.index));
    gProgressDefunctTicks = ticks == 0 ? kMinDefunctTicks : ticks;
  });
}

MOSA_HANDLER(ZkMosa7_DoSetListInput) {
  (void)funcId, (void)env;
  return Zk7HandlerFrame(args, result, 2, [](Zk7Call& call, fmx::int32& err) {
    if (err != kErrNone) return;
    // Kept in UTF-16 (255 units), as the list's items are.
    fmx::TextAutoPtr txt;
    XP7_GetNextTxtFromVect(call.args, txt, &call.index);
    XP7_TxtToUniStr(txt, gInitialSelectStr, kMosaRowUnits);
  });
}
