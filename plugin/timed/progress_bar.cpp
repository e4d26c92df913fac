// Mosa_ProgressBar: a window with a message and a bar that stays open between calls. "show" sets
// the total, "incr" adds to the amount done, any other command closes it; the host's idle calls
// close a window the script has abandoned.
#include <new>

#include "dialogs/dialog_helpers.h"
#include "frame/handler_frame.h"
#include "frame/handlers.h"
#include "model/history.h"
#include "model/state.h"
#include "timed/timed.h"
#include "util/cstring.h"
#include "util/errors.h"
#include "util/hosttext.h"

toolkit::DialogWindow* gProgressDialog = nullptr;
std::uint32_t gMaxVal = 0;
std::uint32_t gDoneAmount = 0;
std::uint32_t gLastProgressTicks = 0;

namespace {

constexpr std::int16_t kDlogProgress = 24260;
constexpr int kItemMessage = 1;
constexpr int kItemBar = 2;
constexpr fmx::uint32 kCommandBytes = 256;  // 255 bytes and a terminator
constexpr std::uint32_t kBarLimit = 32767;

bool hasWord(const char* text, const char* word) {
  return XP_Position(text, XP_Strlen(text), word, XP_Strlen(word), 0, 1, 0) >= 0;
}

void Zk7DisposeProgressDialog() {
  delete gProgressDialog;
  gProgressDialog = nullptr;
}

// A window cannot outlive the code that drives it: when the module is unloaded an open window
// goes with it (the plug-in's shut-down leaves it alone).
struct Zk7ProgressDialogOwner {
  ~Zk7ProgressDialogOwner() { Zk7DisposeProgressDialog(); }
} gProgressDialogOwner;

// Shows or advances the window; answers an error number.
fmx::int32 Zk7UpdateProgressDialog(bool increment, const fmx::DataVect& args, fmx::uint32* index) {
  char amount[kCommandBytes];
  XP7_GetNextCStringFromVect(args, amount, sizeof amount, index, fmx::Text::kEncoding_Native);
  const auto n = static_cast<std::uint32_t>(XP_CStringToLong32(amount));
  if (increment) {
    gDoneAmount += n;  // wraps as an unsigned 32-bit number, so a negative amount goes back
  } else {
    gMaxVal = n;
    gDoneAmount = 0;
  }
  fmx::TextAutoPtr message;
  XP7_GetNextTxtFromVect(args, message, index);

  if (!gProgressDialog) {
    gProgressDialog = Mac_GetNewDialog(kDlogProgress, true).release();
    if (!gProgressDialog) return kErrNoDialogResource;
    Mac_SetDialogPosition(gProgressDialog);
  }
  toolkit::DialogWindow& dialog = *gProgressDialog;
  fmx::int32 err = kErrNone;
  if (message->GetSize() > 0) {
    try {
      dialog.setItemText(kItemMessage, XP7_TxtToU16String(*message));
    } catch (const std::bad_alloc&) {
      err = kErrMemory;  // the window is still shown and its bar set, with the old message
    }
  }
  Zk7SetProgressBar(dialog, gDoneAmount, gMaxVal);
  if (dialog.visible()) {
    dialog.bringToFront();
  } else {
    dialog.show();
  }
  dialog.commit();
  return err;
}

}  // namespace

void Zk7SetProgressBar(toolkit::DialogWindow& dialog, std::uint32_t done, std::uint32_t total) {
  if (!dialog.hasItem(kItemBar)) return;
  if (total == 0) {
    // Never switched back: the bar stays indeterminate until its window is made again.
    dialog.setIndeterminate(kItemBar, true);
    dialog.animateStep(kItemBar);
    return;
  }
  std::uint32_t maximum = total;
  std::uint32_t value = done;
  if (total > kBarLimit) {
    // The control holds 16-bit values; larger totals are scaled, in single precision as always.
    maximum = kBarLimit;
    const float scaled =
        static_cast<float>(done) * static_cast<float>(kBarLimit) / static_cast<float>(total);
    value =
        scaled >= static_cast<float>(kBarLimit) ? kBarLimit : static_cast<std::uint32_t>(scaled);
  }
  if (value > kBarLimit) value = kBarLimit;
  dialog.setItemMaximum(kItemBar, static_cast<std::int32_t>(maximum));
  dialog.setItemValue(kItemBar, static_cast<std::int32_t>(value));
}

void Zk7CheckProgressBarDefunct() {
  if (!gProgressDialog) return;
  // Strictly later than the defunct time after the last call; the sum wraps like the tick count.
  if (XP_CurrentTicksTime() > gLastProgressTicks + gProgressDefunctTicks)
    Zk7DisposeProgressDialog();
}

MOSA_HANDLER(ZkMosa7_DoProgressBar) {
  (void)funcId, (void)env;
  return Zk7HandlerFrame(args, result, 2, [](Zk7Call& call, fmx::int32& err) {
    if (err != kErrNone) return;
    // Every call, the closing one too, restarts the defunct time.
    gLastProgressTicks = XP_CurrentTicksTime();
    char command[kCommandBytes];
    XP7_GetNextCStringFromVect(call.args, command, sizeof command, &call.index,
                               fmx::Text::kEncoding_Native);
    // "incr" is looked for first, so a command holding both words increments.
    if (hasWord(command, "incr")) {
      err = Zk7UpdateProgressDialog(true, call.args, &call.index);
    } else if (hasWord(command, "show")) {
      err = Zk7UpdateProgressDialog(false, call.args, &call.index);
    } else {
      Zk7DisposeProgressDialog();
    }
    // The same empty record as the 8-bit form makes, with fewer host calls: a loop may come
    // through here a million times.
    const UniChar empty[1] = {0};
    Zk7SaveDialogHistoryUNI(empty, 0, empty, empty);
  });
}
