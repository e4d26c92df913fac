#include "qt_stray.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QStyleHints>

#include <cstdlib>

namespace toolkit::qt {
namespace {

std::uint64_t gWindows = 0;

// The last mouse press a dialog window took, in any window of the process.
struct LastPress {
  std::uint64_t window = 0;
  quint64 time = 0;  // the window system's timestamp, in ms
  QPointF global;
};
LastPress gLastPress;

// The keys the window system reports held down (X11); none where it cannot tell.
std::set<quint32> heldKeys() {
  std::set<quint32> held;
  auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
  xcb_connection_t* connection = x11 ? x11->connection() : nullptr;
  if (!connection) return held;
  xcb_query_keymap_reply_t* keymap =
      xcb_query_keymap_reply(connection, xcb_query_keymap(connection), nullptr);
  if (!keymap) return held;
  for (quint32 code = 0; code < 256; ++code) {
    if (keymap->keys[code / 8] & (1u << (code % 8))) held.insert(code);
  }
  std::free(keymap);
  return held;
}

}  // namespace

StrayInput::StrayInput() : window_(++gWindows) {}

void StrayInput::opened() {
  held_ = heldKeys();
}

bool StrayInput::drop(const QEvent& event) {
  switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
      return dropKey(static_cast<const QKeyEvent&>(event));
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
      return dropMouse(static_cast<const QMouseEvent&>(event));
    default:
      return false;
  }
}

bool StrayInput::dropKey(const QKeyEvent& key) {
  const quint32 code = key.nativeScanCode();
  if (key.isAutoRepeat()) return held_.count(code) > 0;
  if (key.type() == QEvent::KeyRelease) {
    auto found = held_.find(code);
    if (found == held_.end()) return false;
    held_.erase(found);
    released_[code] = key.timestamp();
    return true;
  }
  // The window system repeats a held key as a release and a press of the same moment, which Qt
  // does not always mark as a repeat: only a press after a real pause is the key pressed anew.
  auto released = released_.find(code);
  if (released == released_.end()) return false;
  const bool repeat = key.timestamp() - released->second <= 1;
  released_.erase(released);
  if (repeat) held_.insert(code);
  return repeat;
}

bool StrayInput::dropMouse(const QMouseEvent& mouse) {
  if (mouse.type() == QEvent::MouseButtonRelease) {
    const bool drop = droppingClick_;
    droppingClick_ = false;
    return drop;
  }
  // The second press of a double click may arrive as the double click alone.
  if (mouse.type() == QEvent::MouseButtonDblClick && droppingClick_) return true;
  const QStyleHints* hints = QGuiApplication::styleHints();
  const bool nearLast = gLastPress.window != 0 && gLastPress.window != window_ &&
                        mouse.timestamp() - gLastPress.time <=
                            static_cast<quint64>(hints->mouseDoubleClickInterval()) &&
                        (mouse.globalPosition() - gLastPress.global).manhattanLength() <=
                            hints->mouseDoubleClickDistance();
  droppingClick_ = nearLast;
  if (!nearLast) gLastPress = {window_, mouse.timestamp(), mouse.globalPosition()};
  return nearLast;
}

}  // namespace toolkit::qt
