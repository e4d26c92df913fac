// Mosa_InputDialog: a message, one to nine labelled inputs (edit fields, pop-up menus or check
// boxes) and up to four buttons; answers the button when asked for it and every input's value.
//
// The rules this dialog keeps where a script could expect either:
// - The button part opens the result only with "-ReturnButtonText", and is then the pressed
//   button's title (0 for Escape); otherwise the result begins with the separator. Mosa_GetButton
//   reports the pressed button's title afterwards, or 0 after Escape.
// - A pop-up's value is the chosen item's text, empty when none is chosen; a check box's value is
//   "1" or "0". The result carries these, and the input rows keep them.
// - "-StartField" N puts the first focus on input N when that is a shown edit field; otherwise
//   the first shown edit field has it. The focused field's text starts selected, so typing
//   replaces a default.
// - Bullet fields: once the result is built their rows are emptied unless "-KeepBulletText" is
//   given, so a password does not stay in memory for Mosa_GetInput.
// - "-ButtonNNeedsSelection" leaves that button disabled: nothing in this dialog is a selection.
// - The grow box never makes the window smaller than it opened.
// - Tab goes through the shown edit fields top to bottom, then the buttons left to right.
#include <algorithm>
#include <vector>

#include "dialogs/dialog_helpers.h"
#include "frame/handler_frame.h"
#include "frame/handlers.h"
#include "icons/icons.h"
#include "model/history.h"
#include "util/cstring.h"
#include "util/errors.h"
#include "util/hosttext.h"

namespace {

constexpr std::int16_t kDlogInputDialog = 24274;
constexpr int kItemMessage = 5;
constexpr int kItemIcon = 42;
constexpr int kFieldPitch = 32;      // the height each input takes in the template
constexpr int kFieldMaxChars = 255;  // an input row's room

int EditItem(int input) {
  return 5 + input;
}
int LabelItem(int input) {
  return 14 + input;
}
int PopupItem(int input) {
  return 23 + input;
}
int CheckboxItem(int input) {
  return 32 + input;
}

// The dialog in progress, for its filters; one input dialog runs at a time.
int gInputFieldCount = 0;

std::u16string RowText(const UniChar* row) {
  return Mac_UniToU16(row);
}

void TextToRow(const std::u16string& text, UniChar* row) {
  const std::size_t n = std::min<std::size_t>(text.size(), kMosaRowUnits - 1);
  for (std::size_t i = 0; i < n; ++i) row[i] = text[i];
  row[n] = 0;
}

// A row read as a number, as the system reads one; anything else than ASCII digits and signs
// stops the number.
long RowNumber(const UniChar* row) {
  char ascii[kMosaRowUnits];
  int i = 0;
  for (; row[i] && i < kMosaRowUnits - 1; ++i) ascii[i] = row[i] < 128 ? char(row[i]) : '?';
  ascii[i] = 0;
  return XP_CStringToNum(ascii, nullptr);
}

// The pop-up's items: the text split at carriage returns, empty pieces skipped, each cut to the
// row's room. An item "-" is a separator line.
std::vector<std::u16string> PopupEntries(int input) {
  const std::u16string all = XP7_TxtToU16String(*gPopupTxt(input - 1));
  std::vector<std::u16string> entries;
  std::size_t start = 0;
  while (start <= all.size()) {
    std::size_t end = all.find(u'\r', start);
    if (end == std::u16string::npos) end = all.size();
    if (end > start) entries.push_back(all.substr(start, std::min<std::size_t>(end - start, 255)));
    start = end + 1;
  }
  return entries;
}

void Mac_SetupPopup(toolkit::DialogWindow* dialog, int input) {
  const int item = PopupItem(input);
  const std::vector<std::u16string> entries = PopupEntries(input);
  dialog->setMenu(item, entries);
  dialog->setItemEnabled(item, !entries.empty());
  int chosen = 0;
  if (gItemSelected[input - 1] != kMosaNoSelection) {
    const std::u16string wanted = RowText(gInputTextUNI[input - 1]);
    for (std::size_t i = 0; i < entries.size() && !chosen; ++i)
      if (entries[i] != u"-" && entries[i] == wanted) chosen = static_cast<int>(i) + 1;
  }
  dialog->setItemValue(item, chosen);
  dialog->setItemVisible(item, true);
}

// Shows input `input` as the kind the switches chose for it.
void Mac_SetupInput(toolkit::DialogWindow* dialog, int input, const ParSwitches7Tag* sw) {
  const UniChar* label = gLabelTextsUNI[input - 1];
  const UniChar* value = gInputTextUNI[input - 1];
  switch (sw->fieldKind[input - 1]) {
    case kFieldKindPopup:
      Mac_SetupPopup(dialog, input);
      dialog->setItemText(LabelItem(input), RowText(label));
      dialog->setItemLabel(PopupItem(input), RowText(label));
      break;
    case kFieldKindCheckbox:
      dialog->setItemText(CheckboxItem(input), RowText(label));
      dialog->setItemValue(CheckboxItem(input), RowNumber(value) != 0 ? 1 : 0);
      dialog->setItemVisible(CheckboxItem(input), true);
      break;
    default:
      dialog->setItemText(EditItem(input), RowText(value));
      dialog->setMasked(EditItem(input), sw->bullet[input - 1] != 0);
      dialog->setItemVisible(EditItem(input), true);
      dialog->setItemText(LabelItem(input), RowText(label));
      dialog->setItemLabel(EditItem(input), RowText(label));
      break;
  }
}

bool IsShownEdit(toolkit::DialogWindow* dialog, int item) {
  return item >= EditItem(1) && item <= EditItem(gInputFieldCount) && dialog->itemVisible(item);
}

void Mac_FocusField(toolkit::DialogWindow* dialog, int item) {
  dialog->setFocus(item);
  if (dialog->itemKind(item) == toolkit::ItemKind::Edit)
    dialog->setSelection(item, 0, static_cast<int>(dialog->itemText(item).size()));
}

void Mac_SetInitialFocus(toolkit::DialogWindow* dialog, const ParSwitches7Tag* sw) {
  if (sw->startField >= 1 && sw->startField <= gInputFieldCount &&
      IsShownEdit(dialog, EditItem(sw->startField))) {
    Mac_FocusField(dialog, EditItem(sw->startField));
    return;
  }
  for (int input = 1; input <= gInputFieldCount; ++input) {
    if (IsShownEdit(dialog, EditItem(input))) {
      Mac_FocusField(dialog, EditItem(input));
      return;
    }
  }
  dialog->setFocus(0);
}

// The Tab order: the shown edit fields top to bottom, then the enabled buttons left to right.
void Mac_TabToNextField(toolkit::DialogWindow* dialog, bool backwards) {
  std::vector<int> order;
  for (int input = 1; input <= gInputFieldCount; ++input)
    if (IsShownEdit(dialog, EditItem(input))) order.push_back(EditItem(input));
  std::vector<int> buttons;
  for (int n = 1; n <= kMosaButtons; ++n)
    if (dialog->itemVisible(n) && dialog->itemEnabled(n)) buttons.push_back(n);
  std::sort(buttons.begin(), buttons.end(),
            [&](int a, int b) { return dialog->itemRect(a).left < dialog->itemRect(b).left; });
  order.insert(order.end(), buttons.begin(), buttons.end());
  if (order.empty()) return;
  const auto at = std::find(order.begin(), order.end(), dialog->focus());
  std::size_t next = 0;
  if (at == order.end()) {
    next = backwards ? order.size() - 1 : 0;
  } else {
    const auto index = static_cast<std::size_t>(at - order.begin());
    next = backwards ? (index + order.size() - 1) % order.size() : (index + 1) % order.size();
  }
  Mac_FocusField(dialog, order[next]);
}

// The fly-in: from a twentieth of the stored place to the place itself, in 19 steps of 5 ticks.
void Mac_FlyIn(toolkit::DialogWindow* dialog) {
  const auto left = gLeft;
  const auto top = gTop;
  for (int k = 19; k >= 1; --k) {
    dialog->moveTo(static_cast<std::int16_t>(left / k), static_cast<std::int16_t>(top / k));
    dialog->bringToFront();  // drawn where it is now
    toolkit::delay(5);
  }
}

// The grow box: the window takes the new size (never below the size it opened with), the buttons
// keep their distance from the bottom-right corner.
void Mac_GrowInputDialog(toolkit::DialogWindow* dialog, const toolkit::Event& event) {
  const toolkit::Rect before = dialog->windowRect();
  dialog->handleDefault(event);
  const toolkit::Rect after = dialog->windowRect();
  Mac_MoveButtons(dialog, before.width(), before.height(), after.width(), after.height());
  gLastMainDlgSize = {static_cast<std::int16_t>(after.height()),
                      static_cast<std::int16_t>(after.width())};
}

// Holds a field to its room: a key that would add a character to a full field is refused with a
// beep; command keys and keys that replace a selection pass.
bool Mac_MyEditKeyFilter(toolkit::DialogWindow* dialog, const toolkit::Event& event) {
  const int field = dialog->focus();
  if (!IsShownEdit(dialog, field) || (event.modifiers & toolkit::kModCommand)) return false;
  const bool adds = event.character >= 32 && event.character != toolkit::kCharDelete;
  const auto [start, end] = dialog->selection(field);
  if (adds && start == end && dialog->itemText(field).size() > kFieldMaxChars - 1) {
    toolkit::beep();
    return true;
  }
  return false;
}

// After every change of a field's text, a paste too: more than its room beeps and is cut to it.
// A field of exactly its room beeps on every change.
void Mac_MyControlEditTextValidationProc(toolkit::DialogWindow* dialog, int item) {
  if (!IsShownEdit(dialog, item)) return;
  const std::u16string text = dialog->itemText(item);
  if (text.size() <= kFieldMaxChars - 1) return;
  toolkit::beep();
  if (text.size() > kFieldMaxChars) {
    const auto [start, end] = dialog->selection(item);
    dialog->setItemText(item, text.substr(0, kFieldMaxChars));
    dialog->setSelection(item, std::min(start, kFieldMaxChars), std::min(end, kFieldMaxChars));
  }
}

bool Mac_InputDialogFilterB(toolkit::DialogWindow* dialog, const toolkit::Event& event,
                            std::int16_t* itemHit) {
  if (event.type == toolkit::Event::Type::Resize) {
    Mac_GrowInputDialog(dialog, event);
    return true;
  }
  if (event.type != toolkit::Event::Type::Key) return false;
  if (Mac_ReturnEscapeKeyHit(event, kItemReturnKey, itemHit)) return true;
  if (event.character == toolkit::kCharTab) {
    Mac_TabToNextField(dialog, (event.modifiers & toolkit::kModShift) != 0);
    return true;
  }
  return Mac_MyEditKeyFilter(dialog, event);
}

// What input `input` holds when the dialog ends, into its row.
void Mac_StoreInput(toolkit::DialogWindow* dialog, int input, const ParSwitches7Tag* sw) {
  UniChar* row = gInputTextUNI[input - 1];
  switch (sw->fieldKind[input - 1]) {
    case kFieldKindPopup: {
      const int chosen = dialog->itemValue(PopupItem(input));
      const std::vector<std::u16string> entries = dialog->menu(PopupItem(input));
      TextToRow(chosen >= 1 && chosen <= static_cast<int>(entries.size())
                    ? entries[static_cast<std::size_t>(chosen - 1)]
                    : std::u16string(),
                row);
      break;
    }
    case kFieldKindCheckbox:
      TextToRow(dialog->itemValue(CheckboxItem(input)) ? u"1" : u"0", row);
      break;
    default:
      TextToRow(dialog->itemText(EditItem(input)), row);
      break;
  }
}

// Runs the dialog; answers the error and, through `button`, the item that ended it (0 when the run
// stopped with no answer left).
fmx::int32 Mac_RunInputDialogUNI(const ParSwitches7Tag* sw, int fieldCount,
                                 const fmx::Text& message,
                                 const UniChar titles[kMosaButtons][kMosaRowUnits],
                                 std::int16_t* button) {
  *button = 0;
  std::unique_ptr<toolkit::DialogWindow> dialog = Mac_GetNewDialog(kDlogInputDialog);
  if (!dialog) return kErrNoDialogResource;
  gInputFieldCount = fieldCount;

  // Each missing input gives back its room: the window is shorter, the buttons move up.
  const int shrink = (kMosaEntries - fieldCount) * kFieldPitch;
  const toolkit::Rect window = dialog->windowRect();
  dialog->resize(window.width(), window.height() - shrink);
  for (int n = 1; n <= kMosaButtons; ++n) {
    const toolkit::Rect r = dialog->itemRect(n);
    dialog->setItemRect(n, {r.left, r.top - shrink, r.right, r.bottom - shrink});
  }
  dialog->setMinimumSize(window.width(), window.height() - shrink);

  dialog->setTitle(Mac_UniToU16(sw->dialogTitle));
  Mac_SetDialogButtonsUNI(dialog.get(), titles, sw);
  dialog->setItemText(kItemMessage, XP7_TxtToU16String(message));
  for (int input = 1; input <= kMosaEntries; ++input) {
    dialog->setItemVisible(EditItem(input), false);
    dialog->setItemVisible(PopupItem(input), false);
    dialog->setItemVisible(CheckboxItem(input), false);
    if (input > fieldCount) {
      dialog->setItemVisible(LabelItem(input), false);
      continue;
    }
    Mac_SetupInput(dialog.get(), input, sw);
  }
  Mac_SetInitialFocus(dialog.get(), sw);

  Mac_SetDialogPosition(dialog.get());
  Zk7_Mac_IconUserItem(*dialog, kItemIcon, sw->icon);
  if (gAnimateWindPosition) {
    dialog->moveTo(static_cast<std::int16_t>(gLeft / 20), static_cast<std::int16_t>(gTop / 20));
    dialog->show();
    Mac_FlyIn(dialog.get());
  } else {
    dialog->show();
  }

  Mac_ModalProcs procs;
  procs.filter = Mac_InputDialogFilterB;
  procs.itemHit = Mac_HandleItemHit;
  procs.textChanged = Mac_MyControlEditTextValidationProc;
  *button = Mac_RunModalDialog(dialog.get(), sw, procs);
  if (*button != 0)
    for (int input = 1; input <= fieldCount; ++input) Mac_StoreInput(dialog.get(), input, sw);
  gInputFieldCount = 0;
  return kErrNone;
}

void Zk7InputDialogBody(Zk7Call& call, fmx::int32& err) {
  if (err != kErrNone) return;
  ParSwitches7Tag rec{};
  Zk7ParseSwitches(call.switches, kDlgKindInput, &rec);
  Zk7ActiveSwitchesGuard active(&rec);

  const int fieldCount = std::clamp(XP7_GetNextlongFromVect(call.args, &call.index), 1, 9);
  fmx::TextAutoPtr message;
  XP7_GetNextTxtFromVect(call.args, message, &call.index);
  UniChar titles[kMosaButtons][kMosaRowUnits] = {};
  Zk7GetButtonTitlesUNI(call, titles);

  std::int16_t button = 0;
  err = Mac_RunInputDialogUNI(&rec, fieldCount, *message, titles, &button);
  if (err != kErrNone || button == 0) return;  // no dialog, or the run stopped

  fmx::TextAutoPtr buttonPart;
  Zk7MakeButtonResultUNI(rec, &button, titles, buttonPart);
  gLastButtonNumberClicked = button;
  if (button >= 1 && button <= kMosaButtons) {
    gLastButtonTextClickedTxt()->AssignUnicode(titles[button - 1]);
  } else {
    gLastButtonTextClickedTxt()->DeleteText(0, fmx::kSize_End);
  }
  if (rec.returnButtonText) {
    XP7_TxtToTxt(buttonPart, call.resultTxt);
  } else {
    call.resultTxt->DeleteText(0, fmx::kSize_End);
  }
  Zk7CleanupHistory();
  for (int input = 1; input <= fieldCount; ++input) {
    XP7_AppendCStrToTxt(gSeparatorStr, call.resultTxt, fmx::Text::kEncoding_ASCII_Mac);
    XP7_AppendUniStrToTxt(gInputTextUNI[input - 1], call.resultTxt);
  }
  if (rec.removeBulletText) {
    for (int input = 1; input <= fieldCount; ++input)
      if (rec.bullet[input - 1] && rec.fieldKind[input - 1] == kFieldKindText)
        gInputTextUNI[input - 1][0] = 0;
  }
}

}  // namespace

MOSA_HANDLER(ZkMosa7_DoInputDialog) {
  (void)funcId, (void)env;
  return Zk7HandlerFrame(args, result, 4, Zk7InputDialogBody);
}
