// Mosa_Dialog: a message, an icon and up to four buttons; answers the number of the button.
#include <new>

#include "dialogs/dialog_helpers.h"
#include "frame/handlers.h"
#include "icons/icons.h"
#include "model/history.h"
#include "model/preamble.h"
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

// Runs the dialog until a button ends it; answers that button, or 0 when there is no dialog.
std::int16_t Mac_RunDialogUNI(std::int16_t dlogId, const fmx::Text& message,
                              const UniChar titles[kMosaButtons][kMosaRowUnits]) {
  std::unique_ptr<toolkit::DialogWindow> dialog = Mac_GetNewDialog(dlogId);
  if (!dialog) return 0;
  Mac_SetDialogButtonsUNI(dialog.get(), titles, gActiveSwitches);
  Mac_SetDialogPosition(dialog.get());
  dialog->setItemText(5, XP7_TxtToU16String(message));
  if (gActiveSwitches) Zk7_Mac_IconUserItem(*dialog, 6, gActiveSwitches->icon);
  dialog->show();

  std::int16_t itemHit = 0;
  try {
    while (itemHit < 1 || itemHit > kMosaButtons) {
      const toolkit::Event event = dialog->nextEvent();
      itemHit = 0;
      if (!Mac_SimpleModalDialogFilterF(dialog.get(), event, &itemHit))
        itemHit = static_cast<std::int16_t>(dialog->handleDefault(event).itemHit);
    }
  } catch (const toolkit::NoAnswerLeft&) {
    return 0;  // the run stops; the session has recorded why
  }
  Zk7SaveDialogHistory("", itemHit, "", "");
  return itemHit;
}

}  // namespace

MOSA_HANDLER(ZkMosa7_DoDialog) {
  (void)funcId, (void)env;
  fmx::LocaleAutoPtr locale;
  fmx::TextAutoPtr resultTxt;
  fmx::int32 err = kErrNone;
  try {
    char switches[kSwitchesBytes];
    fmx::uint32 index = 0;
    err = Zk7BeginCall(args, 2, locale, switches, &index);
    if (err == kErrNone) {
      ParSwitches7Tag rec{};
      Zk7ParseSwitches(switches, kDlgKindStandard, &rec);
      Zk7ActiveSwitchesGuard active(&rec);

      fmx::TextAutoPtr message;
      XP7_GetNextTxtFromVect(args, message, &index);
      UniChar titles[kMosaButtons][kMosaRowUnits] = {};
      for (auto& title : titles) {
        fmx::TextAutoPtr txt;
        XP7_GetNextTxtFromVect(args, txt, &index);
        XP7_TxtToUniStr(txt, title, kMosaRowUnits);
      }
      // One more text after the titles; the registration never lets it be given.
      UniChar extra[kMosaRowUnits] = {};
      {
        fmx::TextAutoPtr txt;
        XP7_GetNextTxtFromVect(args, txt, &index);
        XP7_TxtToUniStr(txt, extra, kMosaRowUnits);
      }
      if (!titles[0][0] && !titles[1][0] && !titles[2][0] && !titles[3][0])
        XP7_CStrToUniStrSimple("OK", titles[0], kMosaRowUnits - 1);

      const std::int16_t dlogId = Zk7DialogIdFromSwitches(switches);
      if (dlogId == kDlogInput || dlogId == kDlogUserPassword || dlogId == kDlogPassword) {
        err = kErrRefused;
      } else {
        std::int16_t answer = Mac_RunDialogUNI(dlogId, *message, titles);
        if (answer < 1 || answer > kMosaButtons) {
          answer = 0;
          gLastButtonNumberClicked = 0;
        }
        XP7_longToTxt(answer, resultTxt);
        if (extra[0]) {
          XP7_AppendCStrToTxt(gSeparatorStr, resultTxt, fmx::Text::kEncoding_ASCII_Mac);
          XP7_AppendUniStrToTxt(extra, resultTxt);
        }
      }
    }
  } catch (const std::bad_alloc&) {
    err = kErrMemory;
  } catch (...) {
    err = kErrParam;
  }
  try {
    if (err != kErrNone) {
      Zk7SetErrorResult(err, locale, result);
    } else {
      Zk7SetTextResult(resultTxt, locale, result);
    }
  } catch (...) {
  }
  return 0;
}
