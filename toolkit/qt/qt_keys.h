// Key translation between Qt's key events and the toolkit's key events (a character code, as the
// dialogs' filters compare them, and modifiers).
#pragma once

#include <QKeyEvent>

#include <optional>

#include "toolkit/dialog.h"

namespace toolkit::qt {

// The toolkit event for a real key press; nullopt for keys the dialogs have no code for.
std::optional<Event> eventForKey(const QKeyEvent& key);
bool isModifierKey(int key);
// The real key event a person's keyboard would send for a character code and modifiers.
QKeyEvent keyEventFor(QEvent::Type type, char16_t character, unsigned modifiers);

}  // namespace toolkit::qt
