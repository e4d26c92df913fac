// Mosa_BigInputDialog: a resizable dialog with a prompt, an icon, up to four buttons and a
// multi-line text of up to 64,000 characters; answers the button and the edited text.
#include <algorithm>
#include <string>

#include "dialogs/dialog_helpers.h"
#include "frame/handler_frame.h"
#include "frame/handlers.h"
#include "icons/icons.h"
#include "model/history.h"
#include "util/cstring.h"
#include "util/errors.h"
#include "util/hosttext.h"

namespace {

constexpr std::int16_t kDlogBigInput = 24230;
constexpr int kItemScrollBar = 5;
constexpr int kItemPrompt = 6;
constexpr int kItemIcon = 7;
constexpr int kItemText = 8;
constexpr int kArrowStep = 11;  // pixels an arrow of the bar scrolls; 1 with Option
constexpr int kPageOverlap = 11;

// The open dialog's record, reached by the filter.
struct BT_DlogDataTag {
  toolkit::DialogWindow* dialog = nullptr;
  std::uint32_t maxChars = kBigInputMaxChars;
  std::uint32_t minChars = 1;
  bool hasButton4 = false;
  bool buttonsEnabled = false;  // the state last applied to the needs-text buttons
};
BT_DlogDataTag* gBTDlogData = nullptr;

bool IsHighSurrogate(char16_t c) {
  return c >= 0xD800 && c <= 0xDBFF;
}

// The first `count` units of `text`, one fewer when that would split a surrogate pair.
std::u16string Zk7CutToUnits(const std::u16string& text, std::size_t count) {
  if (text.size() <= count) return text;
  if (count > 0 && IsHighSurrogate(text[count - 1])) --count;
  return text.substr(0, count);
}

std::uint32_t TextLength(toolkit::DialogWindow* dialog) {
  return static_cast<std::uint32_t>(dialog->itemText(kItemText).size());
}

// The bar mirrors the text: its value is the scrolled distance, its maximum how far the text can
// scroll, its thumb the visible part.
void BT_AdjustScrollBar(toolkit::DialogWindow* dialog) {
  const int view = dialog->textViewHeight(kItemText);
  const int maximum = std::max(0, dialog->textContentHeight(kItemText) - view);
  int value = dialog->textScroll(kItemText);
  dialog->setPageSize(kItemScrollBar, view);
  dialog->setItemMaximum(kItemScrollBar, maximum);
  if (value > maximum) {
    value = maximum;
    dialog->scrollTextTo(kItemText, value);
  }
  dialog->setItemValue(kItemScrollBar, value);
}

// Buttons flagged "-ButtonNNeedsText" are enabled once the text holds the least it must; the
// buttons are touched only when that changes.
void BT_ApplyNeedsText(BT_DlogDataTag* data) {
  const bool enough = TextLength(data->dialog) >= data->minChars;
  if (enough == data->buttonsEnabled || !gActiveSwitches) return;
  data->buttonsEnabled = enough;
  for (int n = 1; n <= kMosaButtons; ++n)
    if (gActiveSwitches->buttonNeedsInput[n - 1]) data->dialog->setItemEnabled(n, enough);
}

// Scrolls the text to the bar's new value, if the step keeps it within the bar's range.
void BT_ScrollBy(toolkit::DialogWindow* dialog, int step) {
  const int value = dialog->itemValue(kItemScrollBar);
  const int maximum = dialog->itemMaximum(kItemScrollBar);
  if ((step < 0 && value <= 0) || (step > 0 && value >= maximum) || step == 0) return;
  dialog->setItemValue(kItemScrollBar, std::clamp(value + step, 0, maximum));
  dialog->scrollTextTo(kItemText, dialog->itemValue(kItemScrollBar));
}

void BT_HandleScrollBar(toolkit::DialogWindow* dialog, const toolkit::Event& event) {
  const int page = dialog->textViewHeight(kItemText) - kPageOverlap;
  const int arrow = (event.modifiers & toolkit::kModOption) ? 1 : kArrowStep;
  switch (event.part) {
    case toolkit::ScrollPart::LineUp:
      BT_ScrollBy(dialog, -arrow);
      break;
    case toolkit::ScrollPart::LineDown:
      BT_ScrollBy(dialog, arrow);
      break;
    case toolkit::ScrollPart::PageUp:
      BT_ScrollBy(dialog, -page);
      break;
    case toolkit::ScrollPart::PageDown:
      BT_ScrollBy(dialog, page);
      break;
    case toolkit::ScrollPart::Thumb: {
      const int maximum = dialog->itemMaximum(kItemScrollBar);
      dialog->setItemValue(kItemScrollBar, std::clamp(event.value, 0, maximum));
      dialog->scrollTextTo(kItemText, dialog->itemValue(kItemScrollBar));
      break;
    }
    case toolkit::ScrollPart::None:
      break;
  }
}

// Replaces the selection by the clipboard's text, cut with a beep to what the maximum leaves room
// for. A clipboard without text changes nothing.
std::int16_t MBT_Paste(toolkit::DialogWindow* dialog, std::uint32_t maxChars) {
  std::optional<std::u16string> clip = toolkit::clipboardText();
  if (!clip) return 0;
  std::u16string text;
  text.reserve(clip->size());
  for (std::size_t i = 0; i < clip->size(); ++i) {
    const char16_t c = (*clip)[i];
    if (c == u'\r' && i + 1 < clip->size() && (*clip)[i + 1] == u'\n') continue;
    text += c == u'\n' ? u'\r' : c;
  }
  const auto [start, end] = dialog->selection(kItemText);
  const std::int64_t length = TextLength(dialog);
  const std::int64_t selected = end - start;
  if (length - selected + static_cast<std::int64_t>(text.size()) > maxChars) {
    toolkit::beep();
    const std::int64_t room = std::max<std::int64_t>(0, maxChars - length + selected);
    text = Zk7CutToUnits(text, static_cast<std::size_t>(room));
  }
  dialog->replaceSelection(kItemText, text);
  return 0;
}

// A key the filter did not take for the buttons: printable characters only while there is room;
// control keys (Return, Backspace, Delete, arrows) always act.
void BT_HandleKeyPress(toolkit::DialogWindow* dialog, const toolkit::Event& event) {
  BT_DlogDataTag* data = gBTDlogData;
  const char16_t c = event.character;
  if (event.modifiers & toolkit::kModCommand) {
    switch (c) {
      case u'a':
        dialog->setSelection(kItemText, 0, static_cast<int>(TextLength(dialog)));
        dialog->scrollSelectionIntoView(kItemText);
        break;
      case u'c':
      case u'x': {
        const auto [start, end] = dialog->selection(kItemText);
        if (start == end) break;
        const std::u16string all = dialog->itemText(kItemText);
        toolkit::setClipboardText(
            all.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(end - start)));
        if (c == u'x') dialog->replaceSelection(kItemText, u"");
        break;
      }
      case u'v':
        MBT_Paste(dialog, data->maxChars);
        dialog->scrollSelectionIntoView(kItemText);
        break;
      case u'z':
      case u'Z':
        dialog->handleDefault(event);  // the text's own undo and redo
        break;
      default:
        break;
    }
  } else if (c > 31 && c != toolkit::kCharDelete && TextLength(dialog) >= data->maxChars) {
    toolkit::beep();
  } else {
    dialog->handleDefault(event);
  }
  BT_AdjustScrollBar(dialog);
  BT_ApplyNeedsText(data);
}

// Lays the dialog out for a new content size: the text and its bar grow with the window, the
// buttons keep their distance from the bottom-right corner.
void Mac_DoResizeBigInputTextDialog(toolkit::DialogWindow* dialog, int width, int height) {
  dialog->resize(width, height);
  Mac_MoveButtons(dialog, gLastMainDlgSize.width, gLastMainDlgSize.height, width, height);
  toolkit::Rect prompt = dialog->itemRect(kItemPrompt);
  prompt.right = width - 20;
  dialog->setItemRect(kItemPrompt, prompt);
  toolkit::Rect text = dialog->itemRect(kItemText);
  text.right = width - 72;
  text.bottom = height - 56;
  dialog->setItemRect(kItemText, text);
  const int barTop = dialog->itemRect(kItemScrollBar).top;
  dialog->setItemRect(kItemScrollBar, {width - 72, barTop, width - 56, barTop + height - 132});
  dialog->scrollSelectionIntoView(kItemText);
  BT_AdjustScrollBar(dialog);
  gLastMainDlgSize = {static_cast<std::int16_t>(height), static_cast<std::int16_t>(width)};
}

// The grow box: at least 200 high and 480 wide (360 without a fourth button), within the screen.
void BT_HandleGrow(toolkit::DialogWindow* dialog, const toolkit::Event& event) {
  const toolkit::Rect window = dialog->windowRect();
  const toolkit::Rect screen = toolkit::screenBounds();
  const int minWidth = gBTDlogData->hasButton4 ? 480 : 360;
  const int width =
      std::clamp(event.width, minWidth, std::max(minWidth, screen.right - window.left));
  const int height = std::clamp(event.height, 200, std::max(200, screen.bottom - window.top));
  if (width != window.width() || height != window.height())
    Mac_DoResizeBigInputTextDialog(dialog, width, height);
}

bool MBT_BigTextDlogFilter(toolkit::DialogWindow* dialog, const toolkit::Event& event,
                           std::int16_t* itemHit) {
  using Type = toolkit::Event::Type;
  switch (event.type) {
    case Type::Key:
      if (event.character == toolkit::kCharTab) return false;
      if (event.character == toolkit::kCharEscape) {
        *itemHit = kItemEscape;
        return true;
      }
      if (event.character == toolkit::kCharEnter) {
        *itemHit = kItemReturnKey;
        return true;
      }
      BT_HandleKeyPress(dialog, event);
      return true;
    case Type::Resize:
      BT_HandleGrow(dialog, event);
      return true;
    case Type::Scroll:
      BT_AdjustScrollBar(dialog);
      return true;
    case Type::Click:
      if (event.item == kItemScrollBar) {
        BT_HandleScrollBar(dialog, event);
        return true;
      }
      if (event.item == kItemText) {
        dialog->handleDefault(event);
        BT_AdjustScrollBar(dialog);
        return true;
      }
      return false;
    default:
      return false;
  }
}

void Zk7BigInputBody(Zk7Call& call, fmx::int32& err) {
  Zk7CleanupHistory();
  if (err != kErrNone) return;
  ParSwitches7Tag rec{};
  Zk7ParseSwitches(call.switches, kDlgKindBigInput, &rec);
  Zk7ActiveSwitchesGuard active(&rec);
  std::int16_t width = -1;
  std::int16_t height = -1;
  std::int32_t maxChars = 0;
  std::int32_t minChars = 0;
  err = ZkParseBTSwitches(call.switches, &width, &height, &maxChars, &minChars);
  if (err != kErrNone) return;

  fmx::TextAutoPtr prompt;
  XP7_GetNextTxtFromVect(call.args, prompt, &call.index);
  UniChar titles[kMosaButtons][kMosaRowUnits] = {};
  Zk7GetButtonTitlesUNI(call, titles);
  fmx::TextAutoPtr defaultTxt;
  XP7_GetNextTxtFromVect(call.args, defaultTxt, &call.index);
  std::u16string text = XP7_TxtToU16String(*defaultTxt);
  if (text.size() > static_cast<std::size_t>(kBigInputMaxChars)) err = kErrTooMuch;
  if (err != kErrNone) return;

  std::unique_ptr<toolkit::DialogWindow> dialog = Mac_GetNewDialog(kDlogBigInput);
  if (!dialog) err = kErrNoDialogResource;
  if (err != kErrNone) return;
  // The buttons move from the template's layout, whatever size the list dialog left behind.
  const toolkit::Rect frame = dialog->windowRect();
  gLastMainDlgSize = {static_cast<std::int16_t>(frame.height()),
                      static_cast<std::int16_t>(frame.width())};
  if (rec.dialogTitle[0]) dialog->setTitle(Mac_UniToU16(rec.dialogTitle));
  Mac_SetDialogButtonsUNI(dialog.get(), titles, &rec);
  dialog->setItemText(kItemPrompt, XP7_TxtToU16String(*prompt));
  Zk7_Mac_IconUserItem(*dialog, kItemIcon, rec.icon);
  if (text.size() > static_cast<std::size_t>(maxChars)) {
    toolkit::beep();
    text = Zk7CutToUnits(text, static_cast<std::size_t>(maxChars));
  }
  dialog->setItemText(kItemText, text);
  dialog->setFocus(kItemText);

  BT_DlogDataTag data;
  data.dialog = dialog.get();
  data.maxChars = static_cast<std::uint32_t>(maxChars);
  data.minChars = static_cast<std::uint32_t>(minChars);
  data.hasButton4 = titles[3][0] != 0;
  gBTDlogData = &data;
  struct Clear {
    ~Clear() { gBTDlogData = nullptr; }
  } clear;
  const bool hasButton4 = data.hasButton4;
  dialog->setMinimumSize(hasButton4 ? 480 : 360, 200);
  if (width != -1 || height != -1)
    Mac_ResizeMyDialog(dialog.get(), width, height, hasButton4, Mac_DoResizeBigInputTextDialog);
  if (XP_HasSwitch(call.switches, "-SelectAllText"))
    dialog->setSelection(kItemText, 0, static_cast<int>(text.size()));
  dialog->scrollSelectionIntoView(kItemText);
  BT_AdjustScrollBar(dialog.get());
  BT_ApplyNeedsText(&data);
  dialog->show();

  Mac_ModalProcs procs;
  procs.filter = MBT_BigTextDlogFilter;
  std::int16_t button = Mac_RunModalDialog(dialog.get(), &rec, procs);
  if (button == 0) return;  // the run stopped
  text = dialog->itemText(kItemText);
  dialog.reset();

  Zk7MakeButtonResultUNI(rec, &button, titles, call.resultTxt);
  XP7_AppendCStrToTxt(Zk7GetSeparator(), call.resultTxt, fmx::Text::kEncoding_ASCII_Mac);
  std::u16string first = Zk7CutToUnits(text, kMosaRowUnits - 1);
  const UniChar empty[1] = {0};
  const bool titled = rec.returnButtonText && button >= 1 && button <= kMosaButtons;
  Zk7SaveDialogHistoryUNI(titled ? titles[button - 1] : empty, button,
                          reinterpret_cast<const UniChar*>(first.c_str()), empty);
  gHistoryTxt()->AssignUnicodeWithLength(reinterpret_cast<const fmx::uint16*>(text.data()),
                                         static_cast<fmx::uint32>(text.size()));
  gHistoryTxt_Stored = 1;
  call.resultTxt->AppendText(*gHistoryTxt());
}

}  // namespace

MOSA_HANDLER(ZkMosa7_DoBigInputDialog) {
  (void)funcId, (void)env;
  return Zk7HandlerFrame(args, result, 2, Zk7BigInputBody);
}
