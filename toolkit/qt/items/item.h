// One Qt item kind, one small adapter: it makes the item's widgets, shows the model's state in
// them, turns a mouse-down on them into a toolkit event, performs an answer as a person's input,
// and reads back what a person changed. Adapters post events through a callback and never call
// back into the window, which keeps the lifecycle, the layout, the event queue and the default
// handling.
#pragma once

#include <QMouseEvent>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

#include "backend.h"

namespace toolkit::qt {

using Post = std::function<void(const Event&)>;

// What a mouse-down does: the event the dialog hears of (if any), and whether the widget must
// not see the press (the model decides what it means, as for a list row or a scroll arrow).
struct Press {
  std::optional<Event> event;
  bool swallow = false;
};

class ItemAdapter {
 public:
  ItemAdapter(int n, Post post) : n_(n), post_(std::move(post)) {}
  virtual ~ItemAdapter() = default;
  ItemAdapter(const ItemAdapter&) = delete;
  ItemAdapter& operator=(const ItemAdapter&) = delete;

  // The widget that shows the item (the one placed at its rectangle, see outer()).
  virtual QWidget* widget() const = 0;
  // The widget placed at the item's rectangle: the item's own or a view around it.
  virtual QWidget* outer() const { return widget(); }
  // Shows the model's content (called only when the item's change counter moved).
  virtual void apply(const detail::ItemState& item) = 0;
  // A mouse-down on `receiver` (the item's widget or one inside it) at `local` coordinates.
  virtual Press press(QWidget* receiver, const QMouseEvent& mouse, bool doubleClick);
  // Performs an answer (Click, Choose, Row, DoubleClickRow, Drag) aimed at this visible item as
  // a person's real input; false when this kind has no such input.
  virtual bool inject(const detail::Answer& answer, const detail::ItemState& item);
  // Reads a person's edits into the model; true when something changed.
  virtual bool readBack(detail::ItemState&) { return false; }
  // Text measured with the widget's font (edit fields and text areas).
  virtual detail::TextGeometry textGeometry(const detail::ItemState&) { return {}; }
  // The item was resized or moved to a screen of another pixel ratio: redraw what depends on it.
  virtual void refresh() {}

  int number() const { return n_; }
  bool owns(const QObject* object) const { return object == widget() || object == outer(); }

 protected:
  Event click() const { return Event{.type = Event::Type::Click, .item = n_}; }
  void post(const Event& event) const { post_(event); }

 private:
  int n_;
  Post post_;
};

// Makes the adapter of an item kind, its widgets children of `parent`. `window` tells what the
// whole template holds (a text area with a scroll-bar item beside it shows no bar of its own).
std::unique_ptr<ItemAdapter> makeAdapter(const detail::ItemState& item,
                                         const detail::WindowState& window, QWidget* parent,
                                         Post post);

// Sends a real press and release (and a second pair for a double click) to `target` at `local`.
void sendClick(QWidget* target, QPoint local, bool doubleClick = false,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier);

}  // namespace toolkit::qt
