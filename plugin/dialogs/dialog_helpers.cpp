#include "dialogs/dialog_helpers.h"

#include <algorithm>
#include <map>
#include <optional>

#include "frame/frame.h"
#include "frame/handler_frame.h"
#include "model/state.h"
#include "util/hosttext.h"

const ParSwitches7Tag* gActiveSwitches = nullptr;
Mac_DialogSize gLastMainDlgSize = {282, 480};

namespace {

// Templates are read once per bundle folder; a dialog opened again does not touch the disk.
const std::optional<toolkit::DialogTemplate>& cachedTemplate(const std::string& resources,
                                                             std::int16_t id) {
  static std::map<std::pair<std::string, std::int16_t>, std::optional<toolkit::DialogTemplate>>
      cache;
  auto key = std::make_pair(resources, id);
  auto found = cache.find(key);
  if (found == cache.end()) found = cache.emplace(key, toolkit::loadTemplate(resources, id)).first;
  return found->second;
}

bool buttonShown(toolkit::DialogWindow* dialog, int n) {
  return dialog->hasItem(n) && dialog->itemVisible(n);
}

int listItem(toolkit::DialogWindow* dialog) {
  for (int n = 1; n <= 64; ++n)
    if (dialog->hasItem(n) && dialog->itemKind(n) == toolkit::ItemKind::List) return n;
  return 0;
}

}  // namespace

std::u16string Mac_UniToU16(const UniChar* s) {
  std::u16string out;
  if (s)
    for (; *s; ++s) out += static_cast<char16_t>(*s);
  return out;
}

std::unique_ptr<toolkit::DialogWindow> Mac_GetNewDialog(std::int16_t dlogId, bool persistent) {
  XP_UseResFile(gThisResPath);
  const auto& tmpl = cachedTemplate(XP_BundleFolder() + "/Resources", dlogId);
  if (!tmpl) return nullptr;
  return toolkit::DialogWindow::create(*tmpl, persistent);
}

void Mac_SetDialogButtonsUNI(toolkit::DialogWindow* dialog,
                             const UniChar titles[kMosaButtons][kMosaRowUnits],
                             const ParSwitches7Tag* sw) {
  const int defaultNumber = sw ? sw->defaultButton : 1;
  dialog->setDefaultItem(0);
  for (int n = 1; n <= kMosaButtons; ++n) {
    const UniChar* title = titles[n - 1];
    if (title[0] == 0) {
      dialog->setItemVisible(n, false);
      continue;
    }
    if (n == defaultNumber) dialog->setDefaultItem(n);
    dialog->setItemText(n, Mac_UniToU16(title));
    if (sw && sw->buttonNeedsInput[n - 1]) dialog->setItemEnabled(n, false);
  }
}

void Mac_SetDialogPosition(toolkit::DialogWindow* dialog) {
  if (gCustomWindPosition == kPositionDefault) return;
  dialog->moveTo(gLeft, gTop);
  if (gCustomWindPosition == kPositionOnce) gCustomWindPosition = kPositionDefault;
}

void Mac_MoveButtons(toolkit::DialogWindow* dialog, int oldWidth, int oldHeight, int newWidth,
                     int newHeight) {
  const int dx = newWidth - oldWidth;
  const int dy = newHeight - oldHeight;
  for (int n = 1; n <= kMosaButtons; ++n) {
    if (!dialog->hasItem(n)) continue;
    toolkit::Rect r = dialog->itemRect(n);
    dialog->setItemRect(n, {r.left + dx, r.top + dy, r.right + dx, r.bottom + dy});
  }
}

void Mac_ResizeMyDialog(toolkit::DialogWindow* dialog, int width, int height, bool hasButton4,
                        Mac_LayoutProc layout) {
  const toolkit::Rect window = dialog->windowRect();
  const toolkit::Rect screen = toolkit::screenBounds();
  if (width == -1) {
    width = window.width();
  } else {
    if (window.left + width > screen.right) width = screen.right - window.left - 8;
    width = std::max(width, hasButton4 ? 480 : 360);
  }
  if (height == -1) {
    height = window.height();
  } else {
    if (window.top + height > screen.bottom) height = screen.bottom - window.top - 28;
    height = std::max(height, 200);
  }
  layout(dialog, width, height);
}

bool Mac_ReturnEscapeKeyHit(const toolkit::Event& event, std::int16_t returnItem,
                            std::int16_t* itemHit) {
  if (event.type != toolkit::Event::Type::Key) return false;
  switch (event.character) {
    case toolkit::kCharReturn:
    case toolkit::kCharEnter:
      *itemHit = returnItem;
      return true;
    case toolkit::kCharEscape:
      *itemHit = kItemEscape;
      return true;
    default:
      return false;
  }
}

bool Mac_SimpleModalDialogFilterF(toolkit::DialogWindow*, const toolkit::Event& event,
                                  std::int16_t* itemHit) {
  return Mac_ReturnEscapeKeyHit(event, 1, itemHit);
}

void Zk7GetButtonTitlesUNI(Zk7Call& call, UniChar titles[kMosaButtons][kMosaRowUnits]) {
  for (int i = 0; i < kMosaButtons; ++i) {
    fmx::TextAutoPtr txt;
    XP7_GetNextTxtFromVect(call.args, txt, &call.index);
    XP7_TxtToUniStr(txt, titles[i], kMosaRowUnits);
  }
  if (!titles[0][0] && !titles[1][0] && !titles[2][0] && !titles[3][0])
    XP7_CStrToUniStrSimple("OK", titles[0], kMosaRowUnits - 1);
}

bool Mac_HandleItemHit(toolkit::DialogWindow* dialog, std::int16_t* itemHit,
                       const ParSwitches7Tag* sw) {
  const int list = listItem(dialog);
  switch (*itemHit) {
    case 1:
    case 2:
    case 3:
    case 4:
      return true;
    case kItemEscape:
      return sw && !sw->ignoreEscape;
    case kItemListDoubleClick:
      if (!list || dialog->selectedRow(list) < 0) return false;
      [[fallthrough]];
    case kItemReturnKey: {
      const int n = sw ? sw->defaultButton : 1;
      if (n < 1 || n > kMosaButtons || !buttonShown(dialog, n)) {
        toolkit::beep();
        return false;
      }
      if (!dialog->itemEnabled(n)) return false;
      *itemHit = static_cast<std::int16_t>(n);
      return true;
    }
    default:
      if (list && sw) {
        const bool selected = dialog->selectedRow(list) >= 0;
        for (int n = 1; n <= kMosaButtons; ++n)
          if (sw->buttonNeedsInput[n - 1]) dialog->setItemEnabled(n, selected);
      }
      return false;
  }
}

std::int16_t Mac_RunModalDialog(toolkit::DialogWindow* dialog, const ParSwitches7Tag* sw,
                                const Mac_ModalProcs& procs) {
  try {
    for (;;) {
      const toolkit::Event event = dialog->nextEvent();
      std::int16_t itemHit = 0;
      if (!procs.filter || !procs.filter(dialog, event, &itemHit)) {
        const toolkit::Outcome outcome = dialog->handleDefault(event);
        itemHit = static_cast<std::int16_t>(outcome.itemHit);
        if (outcome.textChanged && procs.textChanged)
          procs.textChanged(dialog, outcome.changedItem ? outcome.changedItem : outcome.itemHit);
      }
      if (itemHit != 0 && procs.itemHit(dialog, &itemHit, sw)) return itemHit;
    }
  } catch (const toolkit::NoAnswerLeft&) {
    return 0;
  }
}
