// Mosa_ListDialog: a prompt, an icon, up to four buttons and a resizable one-column list built from
// a "|"-separated text; answers the button and the chosen row (its number or its text).
#include "dialogs/list_dialog.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <new>

#include "dialogs/dialog_helpers.h"
#include "frame/handler_frame.h"
#include "frame/handlers.h"
#include "icons/icons.h"
#include "model/history.h"
#include "model/state.h"
#include "util/cstring.h"
#include "util/errors.h"

toolkit::DialogWindow* gAList = nullptr;
std::int16_t gCellHit = 0;

namespace {

constexpr std::int16_t kDlogList = 24266;
constexpr int kPromptItem = 6;
constexpr int kIconItem = 7;
constexpr int kScrollBarWidth = 16;
// The list's size is the window's less these margins (the scroll bar comes on top of the width).
constexpr int kListMarginWidth = 162;
constexpr int kListMarginHeight = 122;
constexpr int kMinWidth = 480;
constexpr int kMinWidthThreeButtons = 360;
constexpr int kMinHeight = 200;

// A dialog whose list could not be made or filled stays, hidden, until the next such failure or
// shut-down: one at most, however often it happens.
std::unique_ptr<toolkit::DialogWindow> gListDialogLeftHidden;

int minimumWidth(toolkit::DialogWindow* dialog) {
  return dialog->hasItem(4) && dialog->itemVisible(4) ? kMinWidth : kMinWidthThreeButtons;
}

// The first row from `start` on whose first character is `c`, ignoring case; -1 when none.
int searchFirstChar(toolkit::DialogWindow* dialog, int start, char16_t c) {
  const UniChar key = c;
  const int count = dialog->rowCount(kListItem);
  for (int row = start; row < count; ++row) {
    const std::u16string cell = dialog->rowText(kListItem, row);
    if (Mac_Cmp1stChar(reinterpret_cast<const UniChar*>(cell.data()), &key,
                       static_cast<std::uint32_t>(cell.size()), 1) == 0)
      return row;
  }
  return -1;
}

// One letter, one search: from the row after the selected one, then once more from the top.
bool typeSelect(toolkit::DialogWindow* dialog, char16_t c, std::int16_t* itemHit) {
  const int selected = dialog->selectedRow(kListItem);
  const int start = selected >= 0 ? selected + 1 : 0;
  int found = searchFirstChar(dialog, start, c);
  if (found < 0 && start != 0) found = searchFirstChar(dialog, 0, c);
  if (found < 0) return false;
  dialog->selectRow(kListItem, found);
  *itemHit = kListItem;
  return true;
}

bool moveSelection(toolkit::DialogWindow* dialog, bool up, std::int16_t* itemHit) {
  int row = dialog->selectedRow(kListItem);
  if (row >= 0)
    row = up ? std::max(row - 1, 0) : std::min(row + 1, static_cast<int>(gAListCount));
  else
    row = up ? gAListCount : 0;
  dialog->selectRow(kListItem, row);
  *itemHit = kListItem;
  return true;
}

// The grow box: the size a person dragged to, within the least size and the desktop.
void growWindow(toolkit::DialogWindow* dialog, int width, int height) {
  const toolkit::Rect screen = toolkit::screenBounds();
  const int minWidth = minimumWidth(dialog);
  width = std::clamp(width, minWidth, std::max(minWidth, screen.right));
  height = std::clamp(height, kMinHeight, std::max(kMinHeight, screen.bottom));
  const toolkit::Rect window = dialog->windowRect();
  if (width != window.width() || height != window.height())
    Mac_DoResizeListDialog(dialog, width, height);
}

void Zk7ListDialogBody(Zk7Call& call, fmx::int32& err) {
  Zk7SaveDialogHistory("", 0, "", "");
  if (err != kErrNone) return;

  ParSwitches7Tag rec{};
  Zk7ParseSwitches(call.switches, kDlgKindList, &rec);
  Zk7ActiveSwitchesGuard active(&rec);
  std::int32_t number = 0;
  const int width =
      XP_GetTaggedLong(call.switches, "-Width", &number) ? static_cast<std::int16_t>(number) : -1;
  const int height =
      XP_GetTaggedLong(call.switches, "-Height", &number) ? static_cast<std::int16_t>(number) : -1;

  UniChar prompt[kMosaRowUnits] = {};
  UniChar titles[kMosaButtons][kMosaRowUnits] = {};
  fmx::TextAutoPtr listTxt;
  {
    fmx::TextAutoPtr txt;
    XP7_GetNextTxtFromVect(call.args, txt, &call.index);
    XP7_TxtToUniStr(txt, prompt, kMosaRowUnits);
  }
  for (auto& title : titles) {
    fmx::TextAutoPtr txt;
    XP7_GetNextTxtFromVect(call.args, txt, &call.index);
    XP7_TxtToUniStr(txt, title, kMosaRowUnits);
  }
  XP7_GetNextTxtFromVect(call.args, listTxt, &call.index);
  if (!titles[0][0] && !titles[1][0] && !titles[2][0] && !titles[3][0])
    XP7_CStrToUniStrSimple("OK", titles[0], kMosaRowUnits - 1);
  if (listTxt->GetSize() == 0) err = kErrParam;
  if (err != kErrNone) return;

  std::unique_ptr<toolkit::DialogWindow> dialog = Mac_GetNewDialog(kDlogList);
  if (!dialog) {
    err = kErrNoDialogResource;
    return;
  }
  gLastMainDlgSize = {282, 480};
  Mac_SetDialogPosition(dialog.get());
  if (rec.dialogTitle[0]) dialog->setTitle(Mac_UniToU16(rec.dialogTitle));
  Mac_SetDialogButtonsUNI(dialog.get(), titles, &rec);
  dialog->setItemText(kPromptItem, Mac_UniToU16(prompt));
  Zk7_Mac_IconUserItem(*dialog, kIconItem, rec.icon);

  if (!dialog->hasItem(kListItem)) err = kErrMemory;  // no list can be made
  try {
    std::vector<std::u16string> rows;
    if (err == kErrNone)
      err = Zk7SetUpList(rows, &gAListCount, &gAInitialSelectItem, listTxt,
                         gRemoveEmptyLineAtEnd != 0);
    if (err == kErrNone) dialog->setRows(kListItem, std::move(rows));
  } catch (const std::bad_alloc&) {
    err = kErrMemory;
  }
  if (err != kErrNone) {
    gAListCount = 0;
    gListDialogLeftHidden = std::move(dialog);
    return;
  }
  gAList = dialog.get();
  dialog->setMinimumSize(minimumWidth(dialog.get()), kMinHeight);
  if (width != -1 || height != -1)
    Mac_ResizeMyDialog(dialog.get(), width, height, titles[3][0] != 0, Mac_DoResizeListDialog);
  dialog->show();
  if (gAInitialSelectItem >= 0) {
    dialog->selectRow(kListItem, gAInitialSelectItem);
    std::int16_t item = kListItem;
    Mac_HandleItemHit(dialog.get(), &item, &rec);
  }

  Mac_ModalProcs procs;
  procs.filter = Mac_ListFilter;
  std::int16_t itemHit = Mac_RunModalDialog(dialog.get(), &rec, procs);

  const int selected = dialog->selectedRow(kListItem);
  UniChar rowText[kListItemUnits + 1] = {};
  if (rec.returnListText) {
    if (selected >= 0) {
      const std::u16string text = dialog->rowText(kListItem, selected);
      const std::size_t size = std::min<std::size_t>(text.size(), kListItemUnits);
      std::copy_n(text.data(), size, rowText);
    }
  } else {
    gCellHit = static_cast<std::int16_t>(selected + 1);
  }
  gAList = nullptr;
  gAListCount = 0;
  dialog.reset();
  if (itemHit == 0) return;  // the run stopped

  Zk7MakeButtonResultUNI(rec, &itemHit, titles, call.resultTxt);
  XP7_AppendCStrToTxt(gSeparatorStr, call.resultTxt, fmx::Text::kEncoding_ASCII_Mac);
  Zk7MakeListResultUNI(rec, gCellHit, rowText, call.resultTxt);

  const bool buttonText = rec.returnButtonText && itemHit >= 1 && itemHit <= kMosaButtons;
  UniChar listPart[kListItemUnits + 1] = {};
  if (rec.returnListText) {
    XP7_UniStrToUniStrCopy(rowText, listPart, kListItemUnits);
  } else {
    char digits[24];
    XP_NumToCString(gCellHit, digits);
    XP7_CStrToUniStrSimple(digits, listPart, kListItemUnits);
  }
  static const UniChar kNone[1] = {0};
  Zk7SaveDialogHistoryUNI(buttonText ? titles[itemHit - 1] : kNone, itemHit, listPart, kNone);
}

}  // namespace

std::int16_t Zk7SetUpList(std::vector<std::u16string>& rows, std::int16_t* lastRow,
                          std::int16_t* initialRow, fmx::TextAutoPtr& listText,
                          bool removeEmptyLineAtEnd) {
  *lastRow = 0;
  *initialRow = -1;
  // The text is taken whole and emptied at once: cutting it item by item would copy what is left
  // of it once per item.
  const std::u16string text = XP7_TxtToU16String(*listText);
  listText->DeleteText(0, fmx::kSize_End);
  const std::u16string initial = Mac_UniToU16(gInitialSelectStr);
  rows.reserve(static_cast<std::size_t>(std::count(text.begin(), text.end(), u'|')) + 1);
  std::uint32_t total = 0;
  std::size_t pos = 0;
  while (pos < text.size()) {
    const std::size_t separator = text.find(u'|', pos);
    const bool last = separator == std::u16string::npos;
    const std::size_t end = last ? text.size() : separator;
    std::u16string item = text.substr(pos, std::min<std::size_t>(end - pos, kListItemUnits));
    pos = last ? text.size() : separator + 1;
    std::replace(item.begin(), item.end(), u'\r', u'_');
    if (last && removeEmptyLineAtEnd && item.empty()) break;
    if (rows.size() > static_cast<std::size_t>(INT16_MAX)) return kErrTooMuch;
    rows.emplace_back();
    *lastRow = static_cast<std::int16_t>(rows.size() - 1);
    total += static_cast<std::uint32_t>(item.size());
    if (total > kListTotalUnits) return kErrTooMuch;
    if (!initial.empty() && item == initial) *initialRow = *lastRow;
    rows.back() = std::move(item);
  }
  return kErrNone;
}

int Mac_Cmp1stChar(const UniChar* cellData, const UniChar* searchData, std::uint32_t cellLen,
                   std::uint32_t searchLen) {
  if (cellLen == 0 || searchLen == 0) return 1;
  return u_tolower(cellData[0]) == u_tolower(searchData[0]) ? 0 : 1;
}

bool Mac_ListFilter(toolkit::DialogWindow* dialog, const toolkit::Event& event,
                    std::int16_t* itemHit) {
  using Type = toolkit::Event::Type;
  switch (event.type) {
    case Type::Click:
      if (event.item != kListItem) return false;
      // A click selects the clicked row only; below the last row it selects none.
      dialog->selectRow(kListItem, event.row);
      *itemHit = event.doubleClick ? kItemListDoubleClick : kListItem;
      return true;
    case Type::Resize:
      growWindow(dialog, event.width, event.height);
      return true;
    case Type::Key:
      if (Mac_ReturnEscapeKeyHit(event, kItemReturnKey, itemHit)) return true;
      switch (event.character) {
        case toolkit::kCharUp:
        case toolkit::kCharDown:
          return moveSelection(dialog, event.character == toolkit::kCharUp, itemHit);
        default:
          if (event.character < toolkit::kCharSpace) return false;
          return typeSelect(dialog, event.character, itemHit);
      }
    default:
      return false;
  }
}

void Mac_DoResizeListDialog(toolkit::DialogWindow* dialog, int width, int height) {
  dialog->resize(width, height);
  Mac_MoveButtons(dialog, gLastMainDlgSize.width, gLastMainDlgSize.height, width, height);
  const toolkit::Rect list = dialog->itemRect(kListItem);
  dialog->setItemRect(kListItem,
                      {list.left, list.top, list.left + width - kListMarginWidth + kScrollBarWidth,
                       list.top + height - kListMarginHeight});
  gLastMainDlgSize = {static_cast<std::int16_t>(height), static_cast<std::int16_t>(width)};
}

void Zk7DisposeLeftListDialog() {
  gListDialogLeftHidden.reset();
}

MOSA_HANDLER(ZkMosa7_DoListDialog) {
  (void)funcId, (void)env;
  return Zk7HandlerFrame(args, result, 2, Zk7ListDialogBody);
}
