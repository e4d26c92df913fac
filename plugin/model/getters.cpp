// The functions that read back what the last dialog left: its button, an input, a pop-up's text.
#include "frame/handlers.h"
#include "model/preamble.h"
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
  fmx::LocaleAutoPtr locale;
  char switches[kSwitchesBytes];
  fmx::uint32 index = 0;
  // The host passes exactly one argument, so the switches are never read.
  if (args.Size() >= 2) Zk7BeginCall(args, 2, locale, switches, &index);
  fmx::TextAutoPtr txt;
  if (gLastButtonTextClickedTxt()->GetSize() > 0)
    XP7_TxtToTxt(gLastButtonTextClickedTxt(), txt);
  else
    XP7_longToTxt(gLastButtonNumberClicked, txt);
  Zk7SetTextResult(txt, locale, result);
  return 0;
}

MOSA_HANDLER(ZkMosa7_DoGetInput) {
  (void)funcId, (void)env;
  fmx::LocaleAutoPtr locale;
  char switches[kSwitchesBytes];
  fmx::uint32 index = 0;
  fmx::int32 err = Zk7BeginCall(args, 1, locale, switches, &index);
  const std::int32_t entry = err == kErrNone ? EntryFromSwitches(switches, "-text") : 0;
  if (entry == 0) err = kErrParam;
  if (err != kErrNone) {
    Zk7SetErrorResult(err, locale, result);
    return 0;
  }
  fmx::TextAutoPtr txt;
  // Entry 1 after a big input dialog is that dialog's whole text, not limited to a row.
  if (gHistoryTxt_Stored && entry == 1)
    XP7_TxtToTxt(gHistoryTxt(), txt);
  else
    txt->AssignUnicode(gInputTextUNI[entry - 1]);
  Zk7SetTextResult(txt, locale, result);
  return 0;
}

MOSA_HANDLER(ZkMosa7_DoGetPopup) {
  (void)funcId, (void)env;
  fmx::LocaleAutoPtr locale;
  char switches[kSwitchesBytes];
  fmx::uint32 index = 0;
  fmx::int32 err = Zk7BeginCall(args, 1, locale, switches, &index);
  const std::int32_t entry = err == kErrNone ? EntryFromSwitches(switches, "-popup") : 0;
  if (entry == 0) err = kErrParam;
  if (err != kErrNone) {
    Zk7SetErrorResult(err, locale, result);
    return 0;
  }
  fmx::TextAutoPtr txt;
  XP7_TxtToTxt(gPopupTxt(entry - 1), txt);
  Zk7SetTextResult(txt, locale, result);
  return 0;
}
