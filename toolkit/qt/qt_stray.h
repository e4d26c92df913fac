// Input meant for the dialog before this one, which a dialog window ignores: a key already held
// down when the window opened (its auto-repeat included) until that key is released, and a press
// that lands within the double-click interval and distance of a press in another dialog window
// (the second click of a double click whose first click closed the previous dialog). Scripted
// answers never pass through here.
#pragma once

#include <QKeyEvent>
#include <QMouseEvent>

#include <cstdint>
#include <map>
#include <set>

namespace toolkit::qt {

class StrayInput {
 public:
  StrayInput();
  // The window opens: the keys held down at this moment are not for it.
  void opened();
  // Whether an event (a key or a mouse button) is to be dropped.
  bool drop(const QEvent& event);

 private:
  // Whether a key event is to be dropped; follows the held keys as they are released.
  bool dropKey(const QKeyEvent& key);
  // Whether a mouse press, double click or release is to be dropped; remembers the presses kept.
  bool dropMouse(const QMouseEvent& mouse);

  std::uint64_t window_;                 // which dialog window this is, among all of the process
  std::set<quint32> held_;               // native key codes held down since the window opened
  std::map<quint32, quint64> released_;  // held keys released since, with the moment (ms)
  bool droppingClick_ = false;           // a press was dropped: its double click and release go too
};

}  // namespace toolkit::qt
