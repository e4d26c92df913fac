// The functions that read back what the last dialog left: its button, an input, a pop-up's text.
#include "frame/handler_frame.h"
#include "frame/handlers.h"
#include "model/state.h"
#include "util/cstring.h"
#include "util/errors.h"
#include "util/hosttext.h"

namespace {

// The entry that "-text3" or "-popup3" names; 0 when the tag is missing or out of 1..9.
std::int32_t EntryFromSwitches(const char* switches, const char* tag) {
  std::int32_t entry = 0;
  if (!XP_GetTaggedLong(switches, tag, &entry) || entry < 1 || entry > kMosaEntries) return 0;
  return entry;
}

}  // namespace

MOSA_HANDLER(ZkMosa7_DoGetButton) {
  (void)funcId, (void)env;
  // The host passes exactly one argument, and the switches are ignored.
  return Zk7HandlerFrame(args, result, 0, [](Zk7Call& call, fmx::int32& err) {
    if (err != kErrNone) return;
    if (gLastButtonTextClickedTxt()->GetSize() > 0)
      XP7_TxtToTxt(gLastButtonTextClickedTxt(), call.resultTxt);
    else
      XP7_longToTxt(gLastButtonNumberClicked, call.resultTxt);
  });
}

MOSA_HANDLER(ZkMosa7_DoGetInput) {
  (void)funcId, (void)env;
  return Zk7HandlerFrame(args, result, 1, [](Zk7Call& call, fmx::int32& err) {
    const std::int32_t entry = err == kErrNone ? EntryFromSwitches(call.switches, "-text") : 0;
    if (entry == 0) err = kErrParam;
    if (err != kErrNone) return;
    // Entry 1 after a big input dialog is that dialog's whole text, not limited to a row.
    if (gHistoryTxt_Stored && entry == 1)
      XP7_TxtToTxt(gHistoryTxt(), call.resultTxt);
    else
      call.resultTxt->AssignUnicode(gInputTextUNI[entry - 1]);
  });
}

MOSA_HANDLER(ZkMosa7_DoGetPopup) {
  (void)funcId, (void)env;
  return Zk7HandlerFrame(args, result, 1, [](Zk7Call& call, fmx::int32& err) {
    const std::int32_t entry = err == kErrNone ? EntryFromSwitches(call.switches, "-popup") : 0;
    if (entry == 0) err = kErrParam;
    if (err != kErrNone) return;
    XP7_TxtToTxt(gPopupTxt(entry - 1), call.resultTxt);
  });
}
