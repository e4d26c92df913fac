#include "qt_keys.h"

namespace toolkit::qt {
namespace {

struct SpecialKey {
  int key;
  char16_t character;
};

constexpr SpecialKey kSpecialKeys[] = {
    {Qt::Key_Return, kCharReturn},
    {Qt::Key_Enter, kCharEnter},
    {Qt::Key_Escape, kCharEscape},
    {Qt::Key_Tab, kCharTab},
    {Qt::Key_Backspace, kCharBackspace},
    {Qt::Key_Left, kCharLeft},
    {Qt::Key_Right, kCharRight},
    {Qt::Key_Up, kCharUp},
    {Qt::Key_Down, kCharDown},
    {Qt::Key_Delete, kCharDelete},
    {Qt::Key_Space, kCharSpace},
    {Qt::Key_Home, kCharHome},
    {Qt::Key_End, kCharEnd},
    {Qt::Key_PageUp, kCharPageUp},
    {Qt::Key_PageDown, kCharPageDown},
};

// The command key of the host's platform is Control here; Option is Alt, Control is Meta.
unsigned modifiersFrom(Qt::KeyboardModifiers qt) {
  unsigned modifiers = 0;
  if (qt & Qt::ShiftModifier) modifiers |= kModShift;
  if (qt & Qt::ControlModifier) modifiers |= kModCommand;
  if (qt & Qt::AltModifier) modifiers |= kModOption;
  if (qt & Qt::MetaModifier) modifiers |= kModControl;
  return modifiers;
}

Qt::KeyboardModifiers modifiersTo(unsigned modifiers) {
  Qt::KeyboardModifiers qt;
  if (modifiers & kModShift) qt |= Qt::ShiftModifier;
  if (modifiers & kModCommand) qt |= Qt::ControlModifier;
  if (modifiers & kModOption) qt |= Qt::AltModifier;
  if (modifiers & kModControl) qt |= Qt::MetaModifier;
  return qt;
}

}  // namespace

bool isModifierKey(int key) {
  return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt ||
         key == Qt::Key_Meta || key == Qt::Key_AltGr || key == Qt::Key_CapsLock ||
         key == Qt::Key_NumLock || key == Qt::Key_Super_L || key == Qt::Key_Super_R;
}

std::optional<Event> eventForKey(const QKeyEvent& key) {
  Event event{.type = Event::Type::Key};
  event.modifiers = modifiersFrom(key.modifiers());
  if (key.key() == Qt::Key_Backtab) {
    event.character = kCharTab;
    event.modifiers |= kModShift;
    return event;
  }
  for (const SpecialKey& special : kSpecialKeys) {
    if (special.key == key.key()) {
      event.character = special.character;
      return event;
    }
  }
  // With the command key, the text is a control character; the key names the letter.
  if ((key.modifiers() & Qt::ControlModifier) && key.key() >= Qt::Key_A && key.key() <= Qt::Key_Z) {
    bool shift = key.modifiers() & Qt::ShiftModifier;
    event.character = static_cast<char16_t>((shift ? 'A' : 'a') + (key.key() - Qt::Key_A));
    return event;
  }
  QString text = key.text();
  if (text.size() != 1 || text.at(0).unicode() < 32) return std::nullopt;
  event.character = text.at(0).unicode();
  return event;
}

QKeyEvent keyEventFor(QEvent::Type type, char16_t character, unsigned modifiers) {
  Qt::KeyboardModifiers qtModifiers = modifiersTo(modifiers);
  for (const SpecialKey& special : kSpecialKeys) {
    if (special.character != character) continue;
    int key = special.key;
    if (key == Qt::Key_Tab && (modifiers & kModShift)) key = Qt::Key_Backtab;
    if (key == Qt::Key_Enter) qtModifiers |= Qt::KeypadModifier;
    QString text;
    if (character == kCharReturn || character == kCharEnter) text = QStringLiteral("\r");
    if (character == kCharTab || character == kCharBackspace || character == kCharEscape ||
        character == kCharSpace || character == kCharDelete) {
      text = QString(QChar(character));
    }
    if (key == Qt::Key_Backtab) text.clear();
    return QKeyEvent(type, key, qtModifiers, text);
  }
  QChar c(character);
  int key = c.toUpper().unicode();
  if (c.isLetter() && c.toUpper() != c.toLower() && c.toUpper().unicode() <= 'Z') {
    key = Qt::Key_A + (c.toUpper().unicode() - 'A');
  }
  // A command key produces no text: it is a command, not typing.
  QString text = (modifiers & kModCommand) ? QString() : QString(c);
  return QKeyEvent(type, key, qtModifiers, text);
}

}  // namespace toolkit::qt
