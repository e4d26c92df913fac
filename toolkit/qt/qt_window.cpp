#include "qt_window.h"

#include <QApplication>
#include <QPushButton>
#include <QWindow>

#include "items/items.h"
#include "qt_backend.h"
#include "qt_keys.h"

namespace toolkit::qt {
namespace {

QRect toQRect(const Rect& r) {
  return QRect(r.left, r.top, r.width(), r.height());
}

// Room above a window for the title bar the window manager adds.
constexpr int kFrameAllowance = 40;

// Window titles are plain text: Qt reads "[*]" as the modified-document mark unless doubled.
QString plainWindowTitle(const std::u16string& title) {
  return toQString(title).replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
}

bool isTextKind(ItemKind kind) {
  return kind == ItemKind::Edit || kind == ItemKind::TextArea;
}

}  // namespace

QtWindow::QtWindow(QtBackend& backend, const detail::WindowState& state) : backend_(backend) {
  window_ = new QWidget(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                     Qt::WindowCloseButtonHint);
  window_->setFocusPolicy(Qt::StrongFocus);
  if (!state.persistent) window_->setWindowModality(Qt::ApplicationModal);
  resizable_ = state.resizable;
  persistent_ = state.persistent;
  for (const detail::ItemState& item : state.items) {
    Item entry;
    entry.kind = item.kind;
    entry.adapter = makeAdapter(item, state, window_, [this](const Event& e) { post(e); });
    entry.adapter->widget()->setObjectName(QStringLiteral("item%1").arg(item.n));
    items_[item.n] = std::move(entry);
  }
  qApp->installEventFilter(this);
  update(state);
}

QtWindow::~QtWindow() {
  qApp->removeEventFilter(this);
  items_.clear();
  delete window_;
}

QWidget* QtWindow::itemWidget(int n) const {
  auto found = items_.find(n);
  return found == items_.end() ? nullptr : found->second.adapter->widget();
}

// The fit depends on the screen, the window's frame, and each item's rectangle, visibility and
// (for static texts) text: it is worked out again only when one of them changed.
const Fitted& QtWindow::fit(const detail::WindowState& state) {
  const Rect screen = backend_.screenBounds();
  std::vector<std::uint64_t> key;
  for (const Rect& r : {screen, state.frame}) {
    for (int v : {r.left, r.top, r.right, r.bottom}) key.push_back(static_cast<std::uint64_t>(v));
  }
  for (const detail::ItemState& item : state.items) {
    for (int v : {item.rect.left, item.rect.top, item.rect.right, item.rect.bottom})
      key.push_back(static_cast<std::uint64_t>(v));
    key.push_back(item.visible);
    key.push_back(item.kind == ItemKind::Text ? item.changes : 0);
  }
  if (key == fitKey_) return fitted_;
  fitKey_ = std::move(key);
  const int lineHeight = window_->fontMetrics().lineSpacing();
  fitted_ = fitTexts(state, screen, lineHeight, kFrameAllowance,
                     [this](const detail::ItemState& item, int width) {
                       return neededTextHeight(*items_.at(item.n).adapter, width);
                     });
  return fitted_;
}

void QtWindow::update(const detail::WindowState& state) {
  updating_ = true;
  const QString title = plainWindowTitle(state.title);
  if (window_->windowTitle() != title) window_->setWindowTitle(title);
  // Texts first: fitting the window to them measures them.
  for (const detail::ItemState& item : state.items) {
    Item& entry = items_.at(item.n);
    if (item.kind == ItemKind::Text && entry.applied != item.changes) {
      entry.adapter->apply(item);
      entry.applied = item.changes;
    }
  }
  const Fitted& fitted = fit(state);
  if (resizable_) window_->setMinimumSize(state.minWidth, state.minHeight);
  placeWindow(toQRect(fitted.frame));
  for (const detail::ItemState& item : state.items) {
    Item& entry = items_.at(item.n);
    ItemAdapter& adapter = *entry.adapter;
    if (item.kind == ItemKind::Text) setTextScrolled(adapter, fitted.scrolled.count(item.n) > 0);
    QWidget* outer = adapter.outer();
    const QRect rect = toQRect(fitted.rects.at(item.n));
    if (outer->geometry() != rect) {
      outer->setGeometry(rect);
      adapter.refresh();
    }
    if (outer->isHidden() == item.visible) outer->setVisible(item.visible);
    if (adapter.widget()->isEnabled() != item.enabled) adapter.widget()->setEnabled(item.enabled);
    if (item.kind == ItemKind::Button) {
      auto* button = static_cast<QPushButton*>(adapter.widget());
      if (button->isDefault() != (item.n == state.defaultItem))
        button->setDefault(item.n == state.defaultItem);
    }
    // Content only when the dialog changed it: what a person did in a widget stays.
    if (entry.applied != item.changes) {
      adapter.apply(item);
      entry.applied = item.changes;
    }
  }

  if (state.visible && !window_->isVisible()) window_->show();
  if (!state.visible && window_->isVisible()) window_->hide();
  if (state.visible && state.fronted != fronted_) {
    // Shown or asked to the front: in front of all windows, with the keyboard.
    window_->raise();
    if (!window_->isActiveWindow()) window_->activateWindow();
  }
  fronted_ = state.fronted;
  QWidget* focus = itemWidget(state.focus);
  if (focus && focus->focusPolicy() != Qt::NoFocus && focus->isVisible()) {
    if (!focus->hasFocus()) focus->setFocus(Qt::OtherFocusReason);
  } else if (window_->isVisible() && QApplication::focusWidget() &&
             QApplication::focusWidget()->window() == window_) {
    window_->setFocus(Qt::OtherFocusReason);
  }
  updating_ = false;
}

// Only a change in the model moves or sizes the window, so a window a person dragged elsewhere
// stays where it was put.
void QtWindow::placeWindow(const QRect& frame) {
  if (frame == placed_) return;
  if (!resizable_ && frame.size() != placed_.size()) window_->setFixedSize(frame.size());
  if (frame.topLeft() != placed_.topLeft()) {
    window_->setGeometry(frame);
  } else {
    window_->resize(frame.size());
  }
  placed_ = frame;
}

bool QtWindow::readBackItem(detail::ItemState& item) {
  auto found = items_.find(item.n);
  return found != items_.end() && found->second.adapter->readBack(item);
}

void QtWindow::readBack(detail::WindowState& state) {
  bool changed = false;
  for (detail::ItemState& item : state.items) {
    if (item.kind == ItemKind::TextArea || (item.n == state.focus && item.kind == ItemKind::Edit))
      changed |= readBackItem(item);
  }
  if (changed) ++state.generation;
}

int QtWindow::itemOf(const QObject* object) const {
  for (const QObject* o = object; o; o = o->parent()) {
    if (o == window_) return 0;
    for (const auto& [n, item] : items_) {
      if (item.adapter->owns(o)) return n;
    }
  }
  return 0;
}

// A window open between calls (the progress window) drops what a person does while no dialog
// waits on it, rather than keep it for a later dialog; a dialog's own events wait in the queue.
void QtWindow::post(const Event& event) {
  if (updating_ || delivering_ || (persistent_ && !loop_ && !injecting_)) return;
  queue_.push_back(event);
  if (loop_) loop_->quit();
}

bool QtWindow::mousePress(QWidget* widget, QMouseEvent* mouse, bool doubleClick) {
  // A press a disabled widget ignored travels on to its parents: it counts once, where it landed.
  QWidget* under = window_->childAt(widget->mapTo(window_, mouse->position().toPoint()));
  if (widget != (under ? under : window_)) return false;
  const int n = itemOf(widget);
  if (n == 0) {
    post(Event{.type = Event::Type::Click, .item = 0, .doubleClick = doubleClick});
    return false;
  }
  Press press = items_.at(n).adapter->press(widget, *mouse, doubleClick);
  if (press.event) post(*press.event);
  return press.swallow;
}

bool QtWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == window_ && event->type() == QEvent::ScreenChangeInternal) {
    // Moved to a screen of another pixel ratio: the icons are drawn for it.
    for (auto& [n, entry] : items_) entry.adapter->refresh();
    return false;
  }
  if (updating_ || delivering_ || !watched->isWidgetType()) return false;
  auto* widget = static_cast<QWidget*>(watched);
  const bool ours = widget->window() == window_;
  switch (event->type()) {
    case QEvent::KeyPress: {
      if (!ours) return false;
      auto* key = static_cast<QKeyEvent*>(event);
      std::optional<Event> converted = eventForKey(*key);
      if (!converted) return !isModifierKey(key->key());
      post(*converted);
      return true;
    }
    case QEvent::KeyRelease: {
      auto* key = static_cast<QKeyEvent*>(event);
      if (!ours || key->isAutoRepeat()) return false;
      if (std::optional<Event> converted = eventForKey(*key)) {
        converted->type = Event::Type::KeyUp;
        post(*converted);
      }
      return true;
    }
    case QEvent::Close:
      if (widget != window_) return false;
      // The close box acts as the Escape key would; the dialog decides whether it ends.
      event->ignore();
      post(Event{.type = Event::Type::Key, .character = kCharEscape});
      return true;
    case QEvent::Resize:
      if (widget == window_ && resizable_ && event->spontaneous()) {
        auto* resize = static_cast<QResizeEvent*>(event);
        post(Event{.type = Event::Type::Resize,
                   .width = resize->size().width(),
                   .height = resize->size().height()});
      }
      return false;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      if (!ours) return false;
      return mousePress(widget, static_cast<QMouseEvent*>(event),
                        event->type() == QEvent::MouseButtonDblClick);
    default:
      return false;
  }
}

Event QtWindow::waitEvent(detail::WindowState& /*state*/, Tick deadline) {
  QEventLoop loop;
  loop_ = &loop;
  bool passed = false;
  while (queue_.empty() && !passed) passed = backend_.runUntil(loop, deadline);
  loop_ = nullptr;
  if (queue_.empty()) return Event{};
  Event event = queue_.front();
  queue_.pop_front();
  return event;
}

std::vector<Event> QtWindow::inject(detail::WindowState& state, const detail::Answer& answer) {
  using Kind = detail::Answer::Kind;
  queue_.clear();
  injecting_ = true;
  switch (answer.kind) {
    case Kind::Key: {
      QWidget* target = itemWidget(state.focus);
      if (!target || target->focusPolicy() == Qt::NoFocus || !target->isVisible()) target = window_;
      QKeyEvent press = keyEventFor(QEvent::KeyPress, answer.character, answer.modifiers);
      QCoreApplication::sendEvent(target, &press);
      QKeyEvent release = keyEventFor(QEvent::KeyRelease, answer.character, answer.modifiers);
      QCoreApplication::sendEvent(target, &release);
      break;
    }
    case Kind::Resize:
      // The window manager resizes windows; it reports the size a person dragged to.
      post(Event{.type = Event::Type::Resize, .width = answer.width, .height = answer.height});
      break;
    default: {
      int n = answer.item;
      if (answer.kind == Kind::Row || answer.kind == Kind::DoubleClickRow) {
        for (const detail::ItemState& item : state.items)
          if (item.kind == ItemKind::List) n = item.n;
      }
      const detail::ItemState* item = state.item(n);
      auto found = items_.find(n);
      if (!item || found == items_.end() || !window_->isVisible()) break;
      ItemAdapter& adapter = *found->second.adapter;
      if (item->visible) {
        adapter.inject(answer, *item);
      } else if (answer.kind == Kind::Click) {
        // A person clicks where the item would be, on whatever lies there.
        const QPoint at = adapter.outer()->geometry().center();
        QWidget* under = window_->childAt(at);
        QWidget* target = under ? under : window_;
        sendClick(target, target->mapFrom(window_, at));
      }
      break;
    }
  }
  injecting_ = false;
  std::vector<Event> events(queue_.begin(), queue_.end());
  queue_.clear();
  return events;
}

void QtWindow::deliverKeyNatively(int n, const Event& event) {
  QWidget* widget = itemWidget(n);
  if (!widget) return;
  QKeyEvent press = keyEventFor(QEvent::KeyPress, event.character, event.modifiers);
  delivering_ = true;
  QCoreApplication::sendEvent(widget, &press);
  delivering_ = false;
}

Outcome QtWindow::applyDefault(detail::WindowState& state, const Event& event) {
  detail::ItemState* field = state.item(state.focus);
  const bool editing = event.type == Event::Type::Key && field && isTextKind(field->kind) &&
                       field->visible && field->enabled &&
                       !(event.modifiers & (kModCommand | kModControl));
  const char16_t c = event.character;
  if (event.type == Event::Type::Key && field && field->kind == ItemKind::TextArea &&
      (event.modifiers & kModCommand) && (c == u'z' || c == u'Z')) {
    // Undo and redo are the widget's, which keeps the history of every edit.
    const std::u16string before = field->text;
    deliverKeyNatively(state.focus, event);
    readBackItem(*field);
    const bool changed = field->text != before;
    return Outcome{
        .itemHit = field->n, .textChanged = changed, .changedItem = changed ? field->n : 0};
  }
  if (editing && detail::isCaretKey(event)) {
    // Lines and pages of a text area are the real layout's; other caret moves are the model's.
    const bool vertical = c == kCharUp || c == kCharDown || c == kCharPageUp || c == kCharPageDown;
    if (field->kind == ItemKind::TextArea && vertical && !(event.modifiers & kModOption)) {
      deliverKeyNatively(state.focus, event);
      readBackItem(*field);
      return Outcome{.itemHit = field->n};
    }
  } else if (editing && c != kCharTab && c != kCharEscape) {
    // The model says what the key means (a field may refuse it); the widget does the editing,
    // and what it shows is what the dialog reads.
    detail::ItemState expected = *field;
    Outcome outcome = detail::keyInField(state, expected, event, backend_);
    const bool refused = expected.text == field->text && expected.selStart == field->selStart &&
                         expected.selEnd == field->selEnd;
    if (!refused) {
      deliverKeyNatively(state.focus, event);
      readBackItem(*field);
    }
    return outcome;
  }
  Outcome outcome = detail::applyDefaultToModel(state, event, backend_);
  // A click in a field: the widget placed the caret, or the drag that followed selected.
  detail::ItemState* clicked = event.type == Event::Type::Click ? state.item(event.item) : nullptr;
  if (clicked && isTextKind(clicked->kind)) readBackItem(*clicked);
  update(state);
  if (field && field->kind == ItemKind::TextArea)
    readBackItem(*field);  // it kept the caret in view
  return outcome;
}

detail::TextGeometry QtWindow::textGeometry(const detail::WindowState& state, int n) {
  const detail::ItemState* item = state.item(n);
  auto found = items_.find(n);
  if (!item || found == items_.end()) return {};
  return found->second.adapter->textGeometry(*item);
}

bool QtWindow::saveShot(const detail::WindowState& state, const std::string& path) {
  update(state);
  QCoreApplication::sendPostedEvents();
  return window_->grab().save(QString::fromStdString(path), "PNG");
}

}  // namespace toolkit::qt
