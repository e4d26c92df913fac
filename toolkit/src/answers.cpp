// The answers that stand in for a person's hands, and the events they become on the model.
#include <cctype>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "session_state.h"

namespace toolkit::detail {
namespace {

[[noreturn]] void bad(const std::string& line, const char* why) {
  throw std::invalid_argument("bad answer \"" + line + "\": " + why);
}

std::string lower(std::string_view s) {
  std::string out(s);
  for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return out;
}

// Splits into words; a word starting with a double quote runs to the closing quote (backslash
// escapes a quote or a backslash) and is returned without quotes, marked by `quoted`.
struct Word {
  std::string text;
  bool quoted = false;
};

std::vector<Word> split(const std::string& line) {
  std::vector<Word> words;
  std::size_t i = 0;
  while (i < line.size()) {
    if (std::isspace(static_cast<unsigned char>(line[i]))) {
      ++i;
      continue;
    }
    Word w;
    if (line[i] == '"') {
      w.quoted = true;
      ++i;
      bool closed = false;
      while (i < line.size()) {
        char c = line[i++];
        if (c == '\\' && i < line.size() && (line[i] == '"' || line[i] == '\\')) {
          w.text += line[i++];
        } else if (c == '"') {
          closed = true;
          break;
        } else {
          w.text += c;
        }
      }
      if (!closed) bad(line, "the text has no closing quote");
    } else {
      while (i < line.size() && !std::isspace(static_cast<unsigned char>(line[i])))
        w.text += line[i++];
    }
    words.push_back(std::move(w));
  }
  return words;
}

int number(const std::string& line, const Word& w, int minimum) {
  if (w.quoted || w.text.empty() || w.text.size() > 9) bad(line, "a number is expected");
  for (char c : w.text)
    if (!std::isdigit(static_cast<unsigned char>(c))) bad(line, "a number is expected");
  int value = std::stoi(w.text);
  if (value < minimum) bad(line, "the number is out of range");
  return value;
}

// A key name: a single character or a named key, after any modifier prefixes ("shift-",
// "option-", "cmd-"; "Shift-Tab" is Tab with Shift). The command key with a letter gives the lower
// case letter, as the filters compare it.
void parseKey(const std::string& line, const std::string& name, Answer& a) {
  struct Named {
    const char* name;
    char16_t character;
  };
  static const Named kNamed[] = {
      {"return", kCharReturn}, {"enter", kCharEnter},       {"escape", kCharEscape},
      {"tab", kCharTab},       {"space", kCharSpace},       {"backspace", kCharBackspace},
      {"up", kCharUp},         {"down", kCharDown},         {"left", kCharLeft},
      {"right", kCharRight},   {"home", kCharHome},         {"end", kCharEnd},
      {"pageup", kCharPageUp}, {"pagedown", kCharPageDown}, {"delete", kCharDelete},
  };
  static const std::pair<const char*, unsigned> kPrefixes[] = {
      {"shift-", kModShift}, {"option-", kModOption}, {"cmd-", kModCommand}};
  std::string rest = name;
  for (bool found = true; found;) {
    found = false;
    for (const auto& [prefix, modifier] : kPrefixes) {
      const std::size_t length = std::string_view(prefix).size();
      if (rest.size() > length && lower(rest.substr(0, length)) == prefix) {
        a.modifiers |= modifier;
        rest = rest.substr(length);
        found = true;
      }
    }
  }
  std::u16string chars = fromUtf8(rest);
  if (chars.size() == 1) {
    char16_t c = chars[0];
    if ((a.modifiers & kModCommand) && c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c + 32);
    a.character = c;
    return;
  }
  const std::string low = lower(rest);
  for (const Named& n : kNamed) {
    if (low == n.name) {
      a.character = n.character;
      return;
    }
  }
  bad(line, "unknown key name");
}

ScrollPart scrollPart(const std::string& line, const Word& w) {
  const std::string part = lower(w.text);
  if (part == "up") return ScrollPart::LineUp;
  if (part == "down") return ScrollPart::LineDown;
  if (part == "pageup") return ScrollPart::PageUp;
  if (part == "pagedown") return ScrollPart::PageDown;
  bad(line, "a scroll bar part (up, down, pageup, pagedown) is expected");
}

}  // namespace

Answer parseAnswer(const std::string& line) {
  std::vector<Word> w = split(line);
  if (w.empty()) bad(line, "it is empty");
  if (w[0].quoted) bad(line, "unknown action");
  Answer a;
  a.source = line;
  std::string verb = lower(w[0].text);
  auto expect = [&](std::size_t count) {
    if (w.size() != count) bad(line, "wrong number of values");
  };
  auto expectText = [&] {
    expect(2);
    if (!w[1].quoted) bad(line, "a text in double quotes is expected");
    a.text = fromUtf8(w[1].text);
  };
  if (verb == "click") {
    if (w.size() != 2) expect(3);
    a.kind = Answer::Kind::Click;
    a.item = number(line, w[1], 1);
    if (w.size() == 3) a.part = scrollPart(line, w[2]);
  } else if (verb == "drag") {
    expect(3);
    a.kind = Answer::Kind::Drag;
    a.item = number(line, w[1], 1);
    a.value = number(line, w[2], 0);
  } else if (verb == "key") {
    expect(2);
    if (w[1].quoted) bad(line, "a key name is expected");
    a.kind = Answer::Kind::Key;
    parseKey(line, w[1].text, a);
  } else if (verb == "type") {
    expectText();
    a.kind = Answer::Kind::Type;
  } else if (verb == "paste") {
    expectText();
    a.kind = Answer::Kind::Paste;
  } else if (verb == "focus") {
    expect(2);
    a.kind = Answer::Kind::Focus;
    a.item = number(line, w[1], 1);
  } else if (verb == "choose") {
    expect(3);
    a.kind = Answer::Kind::Choose;
    a.item = number(line, w[1], 1);
    a.menuItem = number(line, w[2], 1);
  } else if (verb == "row" || verb == "double-click-row") {
    expect(2);
    a.kind = verb == "row" ? Answer::Kind::Row : Answer::Kind::DoubleClickRow;
    a.row = number(line, w[1], 1);
  } else if (verb == "resize") {
    expect(3);
    a.kind = Answer::Kind::Resize;
    a.width = number(line, w[1], 1);
    a.height = number(line, w[2], 1);
  } else if (verb == "wait") {
    expect(2);
    a.kind = Answer::Kind::Wait;
    a.ticks = static_cast<Tick>(number(line, w[1], 0));
  } else {
    bad(line, "unknown action");
  }
  return a;
}

std::vector<Event> eventsForAnswer(const WindowState& window, const Answer& answer) {
  Event e;
  switch (answer.kind) {
    case Answer::Kind::Key: {
      e.type = Event::Type::Key;
      e.character = answer.character;
      e.modifiers = answer.modifiers;
      Event up = e;
      up.type = Event::Type::KeyUp;
      return {e, up};
    }
    case Answer::Kind::Click:
    case Answer::Kind::Drag: {
      e.type = Event::Type::Click;
      const ItemState* item = window.item(answer.item);
      if (item && !item->visible) {
        // A person clicks where the item would be, on what lies there.
        const Rect& r = item->rect;
        e.item = itemAt(window, (r.left + r.right) / 2, (r.top + r.bottom) / 2);
        return {e};
      }
      e.item = answer.item;
      if (!item) return {};  // no such item to click
      // A part or a drag only on a scroll bar: elsewhere a person's mouse finds nothing to do.
      const bool barAnswer = answer.kind == Answer::Kind::Drag || answer.part != ScrollPart::None;
      if (barAnswer && item->kind != ItemKind::ScrollBar) return {};
      switch (item->kind) {
        case ItemKind::Popup:
          e.menuItem = item->value;
          break;
        case ItemKind::List:
          e.row = item->selectedRow;
          break;
        case ItemKind::Edit:
        case ItemKind::TextArea:
          e.caret = static_cast<int>(item->text.size());
          break;
        case ItemKind::ScrollBar:
          e.part = answer.kind == Answer::Kind::Drag ? ScrollPart::Thumb
                   : answer.part == ScrollPart::None ? ScrollPart::PageDown
                                                     : answer.part;
          e.value = answer.value;
          break;
        default:
          break;
      }
      return {e};
    }
    case Answer::Kind::Choose:
      if (!window.item(answer.item)) return {};
      e.type = Event::Type::Click;
      e.item = answer.item;
      e.menuItem = answer.menuItem;
      return {e};
    case Answer::Kind::Row:
    case Answer::Kind::DoubleClickRow: {
      e.type = Event::Type::Click;
      for (const ItemState& item : window.items) {
        if (item.kind == ItemKind::List) {
          e.item = item.n;
          break;
        }
      }
      e.row = answer.row - 1;
      if (answer.kind == Answer::Kind::Row) return {e};
      // A double click: the first click, then the second one that says so.
      Event second = e;
      second.doubleClick = true;
      return {e, second};
    }
    case Answer::Kind::Resize:
      e.type = Event::Type::Resize;
      e.width = answer.width;
      e.height = answer.height;
      return {e};
    case Answer::Kind::Type:
    case Answer::Kind::Paste:
    case Answer::Kind::Focus:
    case Answer::Kind::Wait:
      break;  // the core's; never reaches here
  }
  return {};
}

}  // namespace toolkit::detail
