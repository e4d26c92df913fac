// The window model and the default handling of events on it (what a native dialog does with an
// event its filter let through).
#include <algorithm>
#include <utility>
#include <vector>

#include "session_state.h"

namespace toolkit {

const char* itemKindName(ItemKind kind) {
  switch (kind) {
    case ItemKind::Button:
      return "button";
    case ItemKind::Text:
      return "text";
    case ItemKind::Edit:
      return "edit";
    case ItemKind::Popup:
      return "popup";
    case ItemKind::Checkbox:
      return "checkbox";
    case ItemKind::Icon:
      return "icon";
    case ItemKind::List:
      return "list";
    case ItemKind::TextArea:
      return "textarea";
    case ItemKind::ScrollBar:
      return "scrollbar";
    case ItemKind::Progress:
      return "progress";
  }
  return "text";
}

}  // namespace toolkit

namespace toolkit::detail {

ItemState* WindowState::item(int n) {
  for (ItemState& i : items)
    if (i.n == n) return &i;
  return nullptr;
}

const ItemState* WindowState::item(int n) const {
  for (const ItemState& i : items)
    if (i.n == n) return &i;
  return nullptr;
}

int wrappedLineCount(const std::u16string& text, int widthPixels) {
  const std::size_t perLine = static_cast<std::size_t>(std::max(1, widthPixels / kCharWidth));
  int lines = 0;
  std::size_t start = 0;
  for (;;) {
    std::size_t end = text.find_first_of(u"\r\n", start);
    std::size_t length = (end == std::u16string::npos ? text.size() : end) - start;
    lines += static_cast<int>(std::max<std::size_t>(1, (length + perLine - 1) / perLine));
    if (end == std::u16string::npos) break;
    start = end + 1;
  }
  return lines;
}

namespace {

bool isTextItem(const ItemState& item) {
  return item.kind == ItemKind::Edit || item.kind == ItemKind::TextArea;
}

bool takesFocus(const ItemState& item) {
  return isTextItem(item) && item.visible && item.enabled;
}

void clampSelection(ItemState& item) {
  const int length = static_cast<int>(item.text.size());
  item.selStart = std::clamp(item.selStart, 0, length);
  item.selEnd = std::clamp(item.selEnd, item.selStart, length);
}

void replaceSelection(ItemState& item, const std::u16string& text) {
  clampSelection(item);
  item.text.replace(static_cast<std::size_t>(item.selStart),
                    static_cast<std::size_t>(item.selEnd - item.selStart), text);
  item.selStart = item.selEnd = item.selStart + static_cast<int>(text.size());
}

bool takesButtonFocus(const ItemState& item) {
  return item.kind == ItemKind::Button && item.visible && item.enabled;
}

// Tab goes through the text fields in template order; in a window without fields, through its
// buttons in reading order (left to right, then down).
void moveFocus(WindowState& window, bool backwards) {
  std::vector<int> order;
  for (const ItemState& item : window.items)
    if (takesFocus(item)) order.push_back(item.n);
  if (order.empty()) {
    std::vector<const ItemState*> buttons;
    for (const ItemState& item : window.items)
      if (takesButtonFocus(item)) buttons.push_back(&item);
    std::stable_sort(buttons.begin(), buttons.end(), [](const ItemState* a, const ItemState* b) {
      return std::pair(a->rect.top, a->rect.left) < std::pair(b->rect.top, b->rect.left);
    });
    for (const ItemState* button : buttons) order.push_back(button->n);
  }
  if (order.empty()) return;
  auto at = std::find(order.begin(), order.end(), window.focus);
  int next;
  if (at == order.end()) {
    next = backwards ? order.back() : order.front();
  } else {
    auto index = static_cast<std::size_t>(at - order.begin());
    index = backwards ? (index + order.size() - 1) % order.size() : (index + 1) % order.size();
    next = order[index];
  }
  window.focus = next;
  ItemState* item = window.item(next);
  if (!isTextItem(*item)) return;
  item->selStart = 0;  // tabbing into a field selects its text
  item->selEnd = static_cast<int>(item->text.size());
}

Outcome keyInText(WindowState& window, ItemState& item, const Event& e, Backend& backend) {
  Outcome out;
  out.itemHit = item.n;
  const std::u16string before = item.text;
  clampSelection(item);
  const char16_t c = e.character;
  if (e.modifiers & kModCommand) {
    const std::u16string selected =
        item.text.substr(static_cast<std::size_t>(item.selStart),
                         static_cast<std::size_t>(item.selEnd - item.selStart));
    switch (c) {
      case u'a':
        item.selStart = 0;
        item.selEnd = static_cast<int>(item.text.size());
        break;
      case u'c':
        if (!selected.empty() && !item.masked) backend.setClipboardText(selected);
        break;
      case u'x':
        if (!selected.empty() && !item.masked) backend.setClipboardText(selected);
        replaceSelection(item, u"");
        break;
      case u'v':
        if (auto clip = backend.clipboardText()) {
          std::u16string text = *clip;
          if (item.kind == ItemKind::Edit) std::replace(text.begin(), text.end(), u'\n', u' ');
          if (item.kind == ItemKind::TextArea) std::replace(text.begin(), text.end(), u'\n', u'\r');
          replaceSelection(item, text);
        }
        break;
      default:
        break;
    }
  } else if (c == kCharBackspace) {
    if (item.selStart == item.selEnd && item.selStart > 0) --item.selStart;
    replaceSelection(item, u"");
  } else if (c == kCharLeft || c == kCharRight) {
    int caret = c == kCharLeft ? (item.selStart == item.selEnd ? item.selStart - 1 : item.selStart)
                               : (item.selStart == item.selEnd ? item.selEnd + 1 : item.selEnd);
    caret = std::clamp(caret, 0, static_cast<int>(item.text.size()));
    item.selStart = item.selEnd = caret;
  } else if (c == kCharTab) {
    moveFocus(window, (e.modifiers & kModShift) != 0);
    out.itemHit = 0;
  } else if ((c == kCharReturn || c == kCharEnter) && item.kind == ItemKind::TextArea) {
    replaceSelection(item, u"\r");
  } else if (c >= 32 && c != 127) {
    replaceSelection(item, std::u16string(1, c));
  }
  out.textChanged = item.text != before;
  if (out.textChanged) out.changedItem = item.n;
  return out;
}

Outcome click(WindowState& window, ItemState& item, const Event& e) {
  Outcome out;
  if (!item.visible || !item.enabled) return out;
  out.itemHit = item.n;
  switch (item.kind) {
    case ItemKind::Checkbox:
      item.value = item.value ? 0 : 1;
      break;
    case ItemKind::Popup:
      if (e.menuItem >= 1 && e.menuItem <= static_cast<int>(item.menu.size()) &&
          item.menu[static_cast<std::size_t>(e.menuItem - 1)] != u"-")
        item.value = e.menuItem;
      break;
    case ItemKind::Edit:
    case ItemKind::TextArea:
      window.focus = item.n;
      item.selStart = item.selEnd = static_cast<int>(item.text.size());
      break;
    case ItemKind::List:
      item.selectedRow = e.row >= 0 && e.row < static_cast<int>(item.rows.size()) ? e.row : -1;
      break;
    case ItemKind::ScrollBar: {
      int step = e.part == ScrollPart::LineUp     ? -1
                 : e.part == ScrollPart::LineDown ? 1
                 : e.part == ScrollPart::PageUp   ? -std::max(1, item.page)
                 : e.part == ScrollPart::PageDown ? std::max(1, item.page)
                                                  : 0;
      item.value = std::clamp(item.value + step, 0, std::max(0, item.max));
      break;
    }
    default:
      break;
  }
  return out;
}

}  // namespace

Outcome applyDefaultToModel(WindowState& window, const Event& e, Backend& backend) {
  switch (e.type) {
    case Event::Type::Key: {
      ItemState* focused = window.item(window.focus);
      if (focused && takesFocus(*focused)) return keyInText(window, *focused, e, backend);
      if (e.modifiers & kModCommand) return {};
      if (e.character == kCharTab) moveFocus(window, (e.modifiers & kModShift) != 0);
      // Space presses the button that has the focus.
      if (e.character == kCharSpace && focused && takesButtonFocus(*focused))
        return Outcome{.itemHit = focused->n};
      return {};
    }
    case Event::Type::Click: {
      ItemState* item = window.item(e.item);
      return item ? click(window, *item, e) : Outcome{};
    }
    case Event::Type::Resize: {
      if (!window.resizable) return {};
      Rect screen = backend.screenBounds();
      int width = std::clamp(e.width, window.minWidth,
                             std::max(window.minWidth, screen.right - window.frame.left));
      int height = std::clamp(e.height, window.minHeight,
                              std::max(window.minHeight, screen.bottom - window.frame.top));
      window.frame.right = window.frame.left + width;
      window.frame.bottom = window.frame.top + height;
      return {};
    }
    case Event::Type::Null:
      return {};
  }
  return {};
}

}  // namespace toolkit::detail
