// Mosa_Dialog: a message, an icon and up to four buttons; answers the number of the button.
#include "dialogs/dialog_helpers.h"
#include "frame/handler_frame.h"
#include "frame/handlers.h"
#include "icons/icons.h"
#include "model/history.h"
#include "util/cstring.h"
#include "util/errors.h"
#include "util/hosttext.h"

namespace {

constexpr std::int16_t kDlogStandard = 24272;
constexpr std::int16_t kDlogInput = 24252;
constexpr std::int16_t kDlogUserPassword = 24262;
constexpr std::int16_t kDlogPassword = 24280;

bool hasWord(const char* switches, const char* word) {
  return XP_Position(switches, XP_Strlen(switches), word, XP_Strlen(word), 0, 1, 0) >= 0;
}

// The template is chosen by plain words anywhere in the switches, even inside a title.
std::int16_t Zk7DialogIdFromSwitches(const char* switches) {
  if (switches[0] == 0) return kDlogStandard;
  if (hasWord(switches, "input")) return kDlogInput;
  if (hasWord(switches, "userpassword")) return kDlogUserPassword;
  if (hasWord(switches, "password")) return kDlogPassword;
  return kDlogStandard;
}

// The plain dialog ends on a button only: Escape never closes it, with or without "-StopOnESC".
bool Mac_ButtonEndsDialog(toolkit::DialogWindow*, std::int16_t* itemHit, const ParSwitches7Tag*) {
  return *itemHit >= 1 && *itemHit <= kMosaButtons;
}

// Runs the dialog until a button ends it; answers that button, or 0 when there is no dialog.
std::int16_t Mac_RunDialogUNI(std::int16_t dlogId, const fmx::Text& message,
                              const UniChar titles[kMosaButtons][kMosaRowUnits]) {
  std::unique_ptr<toolkit::DialogWindow> dialog = Mac_GetNewDialog(dlogId);
  if (!dialog) return 0;
  Mac_SetDialogButtonsUNI(dialog.get(), titles, gActiveSwitches);
  Mac_SetDialogPosition(dialog.get());
  // The title a script set, as the other dialogs show it; the template has none of its own.
  if (gActiveSwitches) dialog->setTitle(Mac_UniToU16(gActiveSwitches->dialogTitle));
  dialog->setItemText(5, XP7_TxtToU16String(message));
  if (gActiveSwitches) Zk7_Mac_IconUserItem(*dialog, 6, gActiveSwitches->icon);
  dialog->show();

  Mac_ModalProcs procs;
  procs.filter = Mac_SimpleModalDialogFilterF;
  procs.itemHit = Mac_ButtonEndsDialog;
  const std::int16_t itemHit = Mac_RunModalDialog(dialog.get(), gActiveSwitches, procs);
  if (itemHit == 0) return 0;  // the run stopped
  Zk7SaveDialogHistory("", itemHit, "", "");
  return itemHit;
}

void Zk7DialogBody(Zk7Call& call, fmx::int32& err) {
  if (err != kErrNone) return;
  ParSwitches7Tag rec{};
  Zk7ParseSwitches(call.switches, kDlgKindStandard, &rec);
  Zk7ActiveSwitchesGuard active(&rec);

  fmx::TextAutoPtr message;
  XP7_GetNextTxtFromVect(call.args, message, &call.index);
  UniChar titles[kMosaButtons][kMosaRowUnits] = {};
  Zk7GetButtonTitlesUNI(call, titles);
  // One more text after the titles; the registration never lets it be given.
  UniChar extra[kMosaRowUnits] = {};
  {
    fmx::TextAutoPtr txt;
    XP7_GetNextTxtFromVect(call.args, txt, &call.index);
    XP7_TxtToUniStr(txt, extra, kMosaRowUnits);
  }

  const std::int16_t dlogId = Zk7DialogIdFromSwitches(call.switches);
  if (dlogId == kDlogInput || dlogId == kDlogUserPassword || dlogId == kDlogPassword)
    err = kErrRefused;
  if (err != kErrNone) return;

  std::int16_t answer = Mac_RunDialogUNI(dlogId, *message, titles);
  if (answer < 1 || answer > kMosaButtons) {
    answer = 0;
    gLastButtonNumberClicked = 0;
  }
  XP7_longToTxt(answer, call.resultTxt);
  if (extra[0]) {
    XP7_AppendCStrToTxt(gSeparatorStr, call.resultTxt, fmx::Text::kEncoding_ASCII_Mac);
    XP7_AppendUniStrToTxt(extra, call.resultTxt);
  }
}

}  // namespace

MOSA_HANDLER(ZkMosa7_DoDialog) {
  (void)funcId, (void)env;
  return Zk7HandlerFrame(args, result, 2, Zk7DialogBody);
}
