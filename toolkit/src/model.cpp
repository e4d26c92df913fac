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

namespace {

// The headless layout: lines break at carriage returns and newlines, and every kCharWidth pixels'
// worth of characters. Each span is [start, end) of one visual line.
std::vector<std::pair<int, int>> lineSpans(const std::u16string& text, int widthPixels) {
  const int perLine = std::max(1, widthPixels / kCharWidth);
  std::vector<std::pair<int, int>> spans;
  int start = 0;
  const int size = static_cast<int>(text.size());
  for (;;) {
    const std::size_t found = text.find_first_of(u"\r\n", static_cast<std::size_t>(start));
    const int end = found == std::u16string::npos ? size : static_cast<int>(found);
    int from = start;
    do {
      spans.emplace_back(from, std::min(end, from + perLine));
      from += perLine;
    } while (from < end);
    if (found == std::u16string::npos) break;
    start = end + 1;
  }
  return spans;
}

int textWidth(const ItemState& item) {
  return item.rect.width() - 2 * kTextInset;
}

// The visual line the caret is on; a caret where a long line wraps stays at the end of the line.
int caretLine(const std::vector<std::pair<int, int>>& spans, int caret) {
  for (std::size_t i = 0; i < spans.size(); ++i)
    if (caret <= spans[i].second) return static_cast<int>(i);
  return static_cast<int>(spans.size()) - 1;
}

}  // namespace

int wrappedLineCount(const std::u16string& text, int widthPixels) {
  return static_cast<int>(lineSpans(text, widthPixels).size());
}

TextGeometry headlessTextGeometry(const ItemState& item) {
  const auto spans = lineSpans(item.text, textWidth(item));
  const int line = caretLine(spans, std::clamp(item.selEnd, 0, static_cast<int>(item.text.size())));
  return {.content = static_cast<int>(spans.size()) * kLineHeight,
          .view = std::max(0, item.rect.height() - 2 * kTextInset),
          .line = kLineHeight,
          .caretTop = line * kLineHeight,
          .caretBottom = (line + 1) * kLineHeight};
}

int headlessCaretMove(const ItemState& item, int caret, int lines) {
  const auto spans = lineSpans(item.text, textWidth(item));
  const int line = caretLine(spans, caret);
  const int target = line + lines;
  if (target < 0) return 0;
  if (target >= static_cast<int>(spans.size())) return static_cast<int>(item.text.size());
  const auto [start, end] = spans[static_cast<std::size_t>(target)];
  return std::min(start + (caret - spans[static_cast<std::size_t>(line)].first), end);
}

int itemAt(const WindowState& window, int x, int y) {
  for (auto i = window.items.rbegin(); i != window.items.rend(); ++i) {
    const Rect& r = i->rect;
    if (i->visible && x >= r.left && x < r.right && y >= r.top && y < r.bottom) return i->n;
  }
  return 0;
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

// Undo (or redo, from the other list) the newest edit: its text goes back, the caret after it.
void replayEdit(ItemState& item, std::vector<TextEdit>& from, std::vector<TextEdit>& to) {
  if (from.empty()) return;
  TextEdit edit = std::move(from.back());
  from.pop_back();
  item.text.replace(static_cast<std::size_t>(edit.at), edit.inserted.size(), edit.removed);
  item.selStart = item.selEnd = edit.at + static_cast<int>(edit.removed.size());
  std::swap(edit.removed, edit.inserted);
  to.push_back(std::move(edit));
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
  ++item->changes;
  if (!isTextItem(*item)) return;
  item->selStart = 0;  // tabbing into a field selects its text
  item->selEnd = static_cast<int>(item->text.size());
}

bool isWordChar(char16_t c) {
  return c != u' ' && c != u'\r' && c != u'\n' && c != u'\t';
}

// Where a caret key takes the caret from `from` (moving back) or `to` (moving on).
int caretTarget(const ItemState& item, const Event& e, int from, int to) {
  const int size = static_cast<int>(item.text.size());
  const bool area = item.kind == ItemKind::TextArea;
  const bool command = (e.modifiers & kModCommand) != 0;
  const bool option = (e.modifiers & kModOption) != 0;
  auto lineStart = [&](int at) {
    while (at > 0 && item.text[static_cast<std::size_t>(at - 1)] != u'\r') --at;
    return at;
  };
  auto lineEnd = [&](int at) {
    while (at < size && item.text[static_cast<std::size_t>(at)] != u'\r') ++at;
    return at;
  };
  const int page = std::max(1, headlessTextGeometry(item).view / kLineHeight);
  switch (e.character) {
    case kCharHome:
      return 0;
    case kCharEnd:
      return size;
    case kCharLeft:
      if (command) return area ? lineStart(from) : 0;
      if (option) {
        while (from > 0 && !isWordChar(item.text[static_cast<std::size_t>(from - 1)])) --from;
        while (from > 0 && isWordChar(item.text[static_cast<std::size_t>(from - 1)])) --from;
        return from;
      }
      return from == to || (e.modifiers & kModShift) ? std::max(0, from - 1) : from;
    case kCharRight:
      if (command) return area ? lineEnd(to) : size;
      if (option) {
        while (to < size && !isWordChar(item.text[static_cast<std::size_t>(to)])) ++to;
        while (to < size && isWordChar(item.text[static_cast<std::size_t>(to)])) ++to;
        return to;
      }
      return from == to || (e.modifiers & kModShift) ? std::min(size, to + 1) : to;
    case kCharUp:
    case kCharPageUp:
      if (!area || command) return 0;
      return headlessCaretMove(item, from, e.character == kCharUp ? -1 : -page);
    case kCharDown:
    case kCharPageDown:
      if (!area || command) return size;
      return headlessCaretMove(item, to, e.character == kCharDown ? 1 : page);
    default:
      return to;
  }
}

bool movesBack(char16_t c) {
  return c == kCharLeft || c == kCharUp || c == kCharHome || c == kCharPageUp;
}

}  // namespace

void replaceSelectionInModel(ItemState& item, const std::u16string& text) {
  clampSelection(item);
  const auto start = static_cast<std::size_t>(item.selStart);
  const auto count = static_cast<std::size_t>(item.selEnd - item.selStart);
  if (item.kind == ItemKind::TextArea && (count > 0 || !text.empty())) {
    item.undo.push_back({item.selStart, item.text.substr(start, count), text});
    item.redo.clear();
  }
  item.text.replace(start, count, text);
  item.selStart = item.selEnd = item.selStart + static_cast<int>(text.size());
}

bool isCaretKey(const Event& e) {
  if (e.type != Event::Type::Key) return false;
  switch (e.character) {
    case kCharHome:
    case kCharEnd:
    case kCharLeft:
    case kCharRight:
    case kCharUp:
    case kCharDown:
    case kCharPageUp:
    case kCharPageDown:
      return true;
    default:
      return false;
  }
}

Outcome keyInField(WindowState& window, ItemState& item, const Event& e, Backend& backend) {
  Outcome out;
  out.itemHit = item.n;
  const std::u16string before = item.text;
  clampSelection(item);
  const char16_t c = e.character;
  if (isCaretKey(e)) {
    // Shift keeps the far end of the selection and moves the near one.
    const bool back = movesBack(c);
    const int anchor = back ? item.selEnd : item.selStart;
    const int caret = caretTarget(item, e, item.selStart, item.selEnd);
    if (e.modifiers & kModShift) {
      item.selStart = std::min(anchor, caret);
      item.selEnd = std::max(anchor, caret);
    } else {
      item.selStart = item.selEnd = caret;
    }
  } else if (e.modifiers & kModCommand) {
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
        replaceSelectionInModel(item, u"");
        break;
      case u'z':
      case u'Z':
        if (e.modifiers & kModShift)
          replayEdit(item, item.redo, item.undo);
        else
          replayEdit(item, item.undo, item.redo);
        break;
      case u'v':
        if (auto clip = backend.clipboardText()) {
          std::u16string text = *clip;
          if (item.kind == ItemKind::Edit) std::replace(text.begin(), text.end(), u'\n', u' ');
          if (item.kind == ItemKind::TextArea) std::replace(text.begin(), text.end(), u'\n', u'\r');
          replaceSelectionInModel(item, text);
        }
        break;
      default:
        break;
    }
  } else if (c == kCharBackspace) {
    if (item.selStart == item.selEnd && item.selStart > 0) --item.selStart;
    replaceSelectionInModel(item, u"");
  } else if (c == kCharDelete) {
    if (item.selStart == item.selEnd && item.selEnd < static_cast<int>(item.text.size()))
      ++item.selEnd;
    replaceSelectionInModel(item, u"");
  } else if (c == kCharTab) {
    moveFocus(window, (e.modifiers & kModShift) != 0);
    out.itemHit = 0;
  } else if ((c == kCharReturn || c == kCharEnter) && item.kind == ItemKind::TextArea) {
    replaceSelectionInModel(item, u"\r");
  } else if (c >= 32) {
    replaceSelectionInModel(item, std::u16string(1, c));
  }
  ++item.changes;
  out.textChanged = item.text != before;
  if (out.textChanged) out.changedItem = item.n;
  return out;
}

namespace {

Outcome click(WindowState& window, ItemState& item, const Event& e) {
  Outcome out;
  if (!item.visible || !item.enabled) return out;
  ++item.changes;
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
    case ItemKind::TextArea: {
      // The caret goes where the click put it; a double click has already selected a word.
      window.focus = item.n;
      if (e.doubleClick) break;
      const int size = static_cast<int>(item.text.size());
      item.selStart = item.selEnd = e.caret >= 0 ? std::min(e.caret, size) : size;
      break;
    }
    case ItemKind::List:
      item.selectedRow = e.row >= 0 && e.row < static_cast<int>(item.rows.size()) ? e.row : -1;
      break;
    case ItemKind::ScrollBar: {
      const int page = std::max(1, item.page);
      const int step = e.part == ScrollPart::LineUp     ? -1
                       : e.part == ScrollPart::LineDown ? 1
                       : e.part == ScrollPart::PageUp   ? -page
                       : e.part == ScrollPart::PageDown ? page
                                                        : 0;
      const int target = e.part == ScrollPart::Thumb ? e.value : item.value + step;
      item.value = std::clamp(target, 0, std::max(0, item.max));
      break;
    }
    case ItemKind::Text:
    case ItemKind::Icon:
    case ItemKind::Progress:
      out.itemHit = 0;  // a mouse-down on a static item is the dialog's to notice, not a hit
      break;
    case ItemKind::Button:
      break;
  }
  return out;
}

}  // namespace

Outcome applyDefaultToModel(WindowState& window, const Event& e, Backend& backend) {
  switch (e.type) {
    case Event::Type::Key: {
      ItemState* focused = window.item(window.focus);
      if (focused && takesFocus(*focused)) return keyInField(window, *focused, e, backend);
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
    case Event::Type::KeyUp:
    case Event::Type::Scroll:
    case Event::Type::Null:
      return {};
  }
  return {};
}

}  // namespace toolkit::detail
