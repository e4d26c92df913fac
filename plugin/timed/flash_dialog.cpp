// Mosa_FlashDialog: a message that closes itself after a time, or earlier when the person clicks
// anywhere in it or presses Return or Space. Always answers "0".
#include <new>

#include "dialogs/dialog_helpers.h"
#include "frame/handler_frame.h"
#include "frame/handlers.h"
#include "icons/icons.h"
#include "model/history.h"
#include "model/state.h"
#include "timed/timed.h"
#include "util/errors.h"
#include "util/hosttext.h"

namespace {

constexpr std::int16_t kDlogFlash = 24254;
constexpr std::int16_t kDlogFlashIcon = 24256;
constexpr int kItemMessage = 1;
constexpr int kItemIcon = 2;
constexpr std::uint32_t kDefaultFlashTicks = 240;
constexpr std::uint32_t kMaxFlashTicks = 7200;

// Whether an event ends the flash window: a click anywhere in it, Return, or Space once it is
// released. Every other event is taken and dropped.
bool Zk7FlashEnds(toolkit::DialogWindow& dialog, const toolkit::Event& event) {
  using Type = toolkit::Event::Type;
  if (event.type == Type::Click) return true;
  if (event.type != Type::Key) return false;
  if (event.character == toolkit::kCharReturn) return true;
  if (event.character != toolkit::kCharSpace) return false;
  for (;;) {
    const toolkit::Event next = dialog.nextEvent();
    if (next.type == Type::KeyUp && next.character == toolkit::kCharSpace) return true;
  }
}

}  // namespace

std::int32_t Zk7RunFlashDialog(std::int16_t dlogId, std::uint32_t ticks, const fmx::Text& message,
                               const ParSwitches7Tag* rec) {
  std::unique_ptr<toolkit::DialogWindow> dialog = Mac_GetNewDialog(dlogId);
  if (!dialog) return 0;
  Mac_SetDialogPosition(dialog.get());
  try {
    dialog->setItemText(kItemMessage, XP7_TxtToU16String(message));
  } catch (const std::bad_alloc&) {
    // The window is shown without its text.
  }
  if (rec->icon != kIconNone) Zk7_Mac_IconUserItem(*dialog, kItemIcon, rec->icon);
  dialog->show();

  const std::uint32_t deadline = XP_CurrentTicksTime() + ticks;
  try {
    while (XP_CurrentTicksTime() < deadline) {
      if (Zk7FlashEnds(*dialog, dialog->nextEvent(deadline))) return -1;
    }
  } catch (const toolkit::NoAnswerLeft&) {
    // The run stops; the session has recorded why.
  }
  return 0;
}

MOSA_HANDLER(ZkMosa7_DoFlashDialog) {
  (void)funcId, (void)env;
  return Zk7HandlerFrame(args, result, 0, [](Zk7Call& call, fmx::int32& err) {
    // Fewer than three arguments answer "0" and show nothing.
    if (err != kErrNone || call.args.Size() < 3) return;
    char time[kSwitchesBytes];
    XP7_GetNextCStringFromVect(call.args, time, sizeof time, &call.index,
                               fmx::Text::kEncoding_Native);
    fmx::TextAutoPtr message;
    XP7_GetNextTxtFromVect(call.args, message, &call.index);
    // Empty, zero or no digits: the default; more than the most (a negative time too): the most.
    const std::uint32_t ticks = Zk7ParseDelayTime(time, kDefaultFlashTicks, kMaxFlashTicks);

    ParSwitches7Tag rec{};
    Zk7ParseSwitches(call.switches, kDlgKindFlash, &rec);
    const std::int16_t dlogId = rec.icon == kIconNone ? kDlogFlash : kDlogFlashIcon;
    std::int32_t answer = Zk7RunFlashDialog(dlogId, ticks, *message, &rec);
    const UniChar empty[1] = {0};
    Zk7SaveDialogHistoryUNI(empty, answer, empty, empty);
    // The runner never answers a button number, so this always gives 0; kept as it always was.
    if (answer < 1 || answer > kMosaButtons) {
      gLastButtonNumberClicked = 0;
      answer = 0;
    }
    XP7_longToTxt(answer, call.resultTxt);
  });
}
