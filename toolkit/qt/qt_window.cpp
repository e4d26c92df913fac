#include "qt_window.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPixmap>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QTextEdit>
#include <QWindow>

#include "qt_backend.h"
#include "qt_fit.h"
#include "qt_keys.h"

namespace toolkit::qt {
namespace {

QRect toQRect(const Rect& r) {
  return QRect(r.left, r.top, r.width(), r.height());
}

// Room above a window for the title bar the window manager adds.
constexpr int kFrameAllowance = 40;

// A static text as its label shows it: its lines broken where the host breaks them, and a word
// wider than the item (a long path, a link) may break anywhere, so that none of it is cut off at
// the right.
QString wrappableText(const std::u16string& text, const QLabel& label, int width) {
  // The host ends lines with carriage returns; a label breaks lines at newlines only.
  QString source = toQString(text)
                       .replace(QLatin1String("\r\n"), QLatin1String("\n"))
                       .replace(QLatin1Char('\r'), QLatin1Char('\n'));
  const QFontMetrics metrics = label.fontMetrics();
  // The narrower width of a scrolling view, so a word breaks the same way in both.
  width -= label.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  QString out;
  qsizetype start = 0;
  while (start < source.size()) {
    qsizetype end = start;
    while (end < source.size() && !source.at(end).isSpace()) ++end;
    QStringView word = QStringView(source).mid(start, end - start);
    if (metrics.horizontalAdvance(word.toString()) > width) {
      for (qsizetype i = 0; i < word.size(); ++i) {
        const QChar c = word.at(i);
        if (i > 0 && !c.isLowSurrogate() && !c.isMark()) out += QChar(0x200B);
        out += c;
      }
    } else {
      out += word;
    }
    while (end < source.size() && source.at(end).isSpace()) out += source.at(end++);
    start = end;
  }
  return out;
}

// Window titles are plain text: Qt reads "[*]" as the modified-document mark unless doubled.
QString plainWindowTitle(const std::u16string& title) {
  return toQString(title).replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
}

// Button and check box titles are plain text: '&' would otherwise mark a shortcut.
QString plainTitle(const std::u16string& text) {
  return toQString(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}

// The text area keeps line breaks as carriage returns, the host's convention; Qt uses newlines.
QString toAreaText(const std::u16string& text) {
  return toQString(text).replace(QLatin1Char('\r'), QLatin1Char('\n'));
}
std::u16string fromAreaText(const QString& text) {
  QString copy = text;
  copy.replace(QChar::ParagraphSeparator, QLatin1Char('\r'))
      .replace(QLatin1Char('\n'), QLatin1Char('\r'));
  return fromQString(copy);
}

QPixmap iconPixmap(IconKind kind, const Image* image, QSize size, qreal ratio) {
  if (size.isEmpty()) return {};
  QStyle::StandardPixmap standard;
  switch (kind) {
    case IconKind::Note:
      standard = QStyle::SP_MessageBoxInformation;
      break;
    case IconKind::Caution:
      standard = QStyle::SP_MessageBoxWarning;
      break;
    case IconKind::Stop:
      standard = QStyle::SP_MessageBoxCritical;
      break;
    case IconKind::Custom: {
      if (!image || image->empty()) return {};
      QImage picture(reinterpret_cast<const uchar*>(image->pixels.data()), image->width,
                     image->height, image->width * 4, QImage::Format_ARGB32);
      QPixmap scaled = QPixmap::fromImage(
          picture.scaled(size * ratio, Qt::KeepAspectRatio, Qt::SmoothTransformation));
      scaled.setDevicePixelRatio(ratio);
      return scaled;
    }
    default:
      return {};
  }
  int side = std::min(size.width(), size.height());
  return QApplication::style()->standardIcon(standard).pixmap(QSize(side, side), ratio);
}

}  // namespace

QtWindow::QtWindow(QtBackend& backend, const detail::WindowState& state) : backend_(backend) {
  window_ = new QWidget(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                     Qt::WindowCloseButtonHint);
  window_->setFocusPolicy(Qt::StrongFocus);
  if (!state.persistent) window_->setWindowModality(Qt::ApplicationModal);
  resizable_ = state.resizable;
  buildItems(state);
  qApp->installEventFilter(this);
  update(state);
}

QtWindow::~QtWindow() {
  qApp->removeEventFilter(this);
  delete window_;
}

QWidget* QtWindow::itemWidget(int n) const {
  auto found = items_.find(n);
  return found == items_.end() ? nullptr : found->second.widget.data();
}

void QtWindow::buildItems(const detail::WindowState& state) {
  for (const detail::ItemState& item : state.items) {
    QWidget* widget = nullptr;
    const int n = item.n;
    switch (item.kind) {
      case ItemKind::Button: {
        auto* button = new QPushButton(window_);
        button->setAutoDefault(false);
        // The model moves the focus (Tab); a click on a button does not take it.
        button->setFocusPolicy(Qt::TabFocus);
        connect(button, &QPushButton::clicked, this, [this, n] {
          if (!updating_) post(Event{.type = Event::Type::Click, .item = n});
        });
        widget = button;
        break;
      }
      case ItemKind::Text: {
        auto* label = new QLabel(window_);
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        widget = label;
        break;
      }
      case ItemKind::Edit:
        widget = new QLineEdit(window_);
        break;
      case ItemKind::Popup: {
        auto* combo = new QComboBox(window_);
        combo->setFocusPolicy(Qt::NoFocus);
        connect(combo, &QComboBox::activated, this, [this, n](int index) {
          if (!updating_) post(Event{.type = Event::Type::Click, .item = n, .menuItem = index + 1});
        });
        widget = combo;
        break;
      }
      case ItemKind::Checkbox: {
        auto* box = new QCheckBox(window_);
        box->setFocusPolicy(Qt::NoFocus);
        connect(box, &QCheckBox::clicked, this, [this, n] {
          if (!updating_) post(Event{.type = Event::Type::Click, .item = n});
        });
        widget = box;
        break;
      }
      case ItemKind::Icon: {
        auto* label = new QLabel(window_);
        label->setAlignment(Qt::AlignCenter);
        widget = label;
        break;
      }
      case ItemKind::List: {
        auto* list = new QListWidget(window_);
        list->setFocusPolicy(Qt::NoFocus);
        list->setSelectionMode(QAbstractItemView::SingleSelection);
        list->setUniformItemSizes(true);
        widget = list;
        break;
      }
      case ItemKind::TextArea: {
        auto* area = new QTextEdit(window_);
        area->setAcceptRichText(false);
        area->setTabChangesFocus(true);
        widget = area;
        break;
      }
      case ItemKind::ScrollBar: {
        auto* bar = new QScrollBar(window_);
        bar->setFocusPolicy(Qt::NoFocus);
        widget = bar;
        break;
      }
      case ItemKind::Progress: {
        auto* progress = new QProgressBar(window_);
        progress->setTextVisible(false);
        widget = progress;
        break;
      }
    }
    widget->setObjectName(QStringLiteral("item%1").arg(n));
    items_[n] = Item{item.kind, widget};
  }
}

void QtWindow::update(const detail::WindowState& state) {
  updating_ = true;
  window_->setWindowTitle(plainWindowTitle(state.title));
  // Texts first: fitting the window to them measures them.
  for (const detail::ItemState& item : state.items) {
    if (item.kind != ItemKind::Text) continue;
    if (auto* label = qobject_cast<QLabel*>(itemWidget(item.n))) {
      const QString text = wrappableText(item.text, *label, item.rect.width());
      if (label->text() != text) label->setText(text);
    }
  }
  const int lineHeight = window_->fontMetrics().lineSpacing();
  const Fitted fitted = fitTexts(state, backend_.screenBounds(), lineHeight, kFrameAllowance,
                                 [this](const detail::ItemState& item, int width) {
                                   auto* label = qobject_cast<QLabel*>(itemWidget(item.n));
                                   return label ? label->heightForWidth(width) : 0;
                                 });
  if (resizable_) window_->setMinimumSize(state.minWidth, state.minHeight);
  placeWindow(toQRect(fitted.frame));
  for (const detail::ItemState& item : state.items) {
    applyItem(item, state, toQRect(fitted.rects.at(item.n)), fitted.scrolled.count(item.n) > 0);
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

// Drawn for the pixel ratio of the screen the window is on; again when that changes.
void QtWindow::drawIcon(Item& entry) {
  auto* label = qobject_cast<QLabel*>(entry.widget.data());
  if (!label) return;
  const qreal ratio = label->devicePixelRatioF();
  // Redraw only when what is drawn, its size or the pixel ratio changed.
  QString key = QStringLiteral("%1:%2:%3x%4@%5")
                    .arg(static_cast<int>(entry.icon))
                    .arg(reinterpret_cast<quintptr>(entry.image.get()))
                    .arg(label->width())
                    .arg(label->height())
                    .arg(ratio);
  if (label->property("iconKey").toString() == key) return;
  label->setProperty("iconKey", key);
  label->setPixmap(iconPixmap(entry.icon, entry.image.get(), label->size(), ratio));
}

void QtWindow::setScrolled(Item& entry, bool scrolled) {
  if (scrolled == !entry.scroller.isNull()) return;
  QWidget* label = entry.widget;
  if (scrolled) {
    auto* area = new QScrollArea(window_);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setWidgetResizable(true);
    area->setWidget(label);
    entry.scroller = area;
  } else {
    entry.scroller->takeWidget();
    label->setParent(window_);
    label->setAutoFillBackground(false);
    delete entry.scroller.data();
  }
}

void QtWindow::applyItem(const detail::ItemState& item, const detail::WindowState& state,
                         QRect rect, bool scrolled) {
  auto found = items_.find(item.n);
  if (found == items_.end() || !found->second.widget) return;
  QWidget* widget = found->second.widget;
  if (item.kind == ItemKind::Text) {
    setScrolled(found->second, scrolled);
    if (found->second.scroller && widget->isHidden()) widget->show();  // the view shows it
  }
  QWidget* outer = found->second.scroller ? found->second.scroller.data() : widget;
  if (outer->geometry() != rect) outer->setGeometry(rect);
  if (outer->isHidden() == item.visible) outer->setVisible(item.visible);
  if (widget->isEnabled() != item.enabled) widget->setEnabled(item.enabled);

  switch (item.kind) {
    case ItemKind::Button: {
      auto* button = static_cast<QPushButton*>(widget);
      QString title = plainTitle(item.text);
      if (button->text() != title) button->setText(title);
      button->setDefault(item.n == state.defaultItem);
      break;
    }
    case ItemKind::Text:
      break;  // its text is set before the window is fitted to it
    case ItemKind::Edit: {
      auto* edit = static_cast<QLineEdit*>(widget);
      edit->setEchoMode(item.masked ? QLineEdit::Password : QLineEdit::Normal);
      QString text = toQString(item.text);
      if (edit->text() != text) edit->setText(text);
      int start = std::clamp(item.selStart, 0, static_cast<int>(text.size()));
      int end = std::clamp(item.selEnd, start, static_cast<int>(text.size()));
      if (start == end) {
        if (edit->hasSelectedText() || edit->cursorPosition() != end) edit->setCursorPosition(end);
      } else if (edit->selectionStart() != start || edit->selectionLength() != end - start) {
        edit->setSelection(start, end - start);
      }
      break;
    }
    case ItemKind::Popup: {
      auto* combo = static_cast<QComboBox*>(widget);
      bool same = combo->count() == static_cast<int>(item.menu.size());
      for (int i = 0; same && i < combo->count(); ++i) {
        const std::u16string& entry = item.menu[static_cast<std::size_t>(i)];
        same =
            entry == u"-" ? combo->itemText(i).isEmpty() : combo->itemText(i) == toQString(entry);
      }
      if (!same) {
        combo->clear();
        for (const std::u16string& entry : item.menu) {
          if (entry == u"-") {
            combo->insertSeparator(combo->count());
          } else {
            combo->addItem(toQString(entry));
          }
        }
      }
      int index = item.value >= 1 && item.value <= combo->count() ? item.value - 1 : -1;
      if (combo->currentIndex() != index) combo->setCurrentIndex(index);
      break;
    }
    case ItemKind::Checkbox: {
      auto* box = static_cast<QCheckBox*>(widget);
      QString title = plainTitle(item.text);
      if (box->text() != title) box->setText(title);
      if (box->isChecked() != (item.value != 0)) box->setChecked(item.value != 0);
      break;
    }
    case ItemKind::Icon: {
      Item& entry = items_.at(item.n);
      entry.icon = item.icon;
      entry.image = item.image;
      drawIcon(entry);
      break;
    }
    case ItemKind::List: {
      auto* list = static_cast<QListWidget*>(widget);
      bool same = list->count() == static_cast<int>(item.rows.size());
      for (int i = 0; same && i < list->count(); ++i) {
        same = list->item(i)->text() == toQString(item.rows[static_cast<std::size_t>(i)]);
      }
      if (!same) {
        list->clear();
        for (const std::u16string& row : item.rows) list->addItem(toQString(row));
      }
      int row = item.selectedRow >= 0 && item.selectedRow < list->count() ? item.selectedRow : -1;
      if (list->currentRow() != row || (row >= 0 && !list->item(row)->isSelected())) {
        if (row < 0) {
          list->clearSelection();
          list->setCurrentRow(-1);
        } else {
          list->setCurrentRow(row, QItemSelectionModel::ClearAndSelect);
          list->scrollToItem(list->item(row));
        }
      }
      break;
    }
    case ItemKind::TextArea: {
      auto* area = static_cast<QTextEdit*>(widget);
      QString text = toAreaText(item.text);
      if (area->toPlainText() != text) area->setPlainText(text);
      int size = static_cast<int>(text.size());
      int start = std::clamp(item.selStart, 0, size);
      int end = std::clamp(item.selEnd, start, size);
      QTextCursor cursor = area->textCursor();
      if (cursor.selectionStart() != start || cursor.selectionEnd() != end) {
        cursor.setPosition(start);
        cursor.setPosition(end, QTextCursor::KeepAnchor);
        area->setTextCursor(cursor);
      }
      QScrollBar* bar = area->verticalScrollBar();
      if (bar->value() != item.scroll) bar->setValue(item.scroll);
      break;
    }
    case ItemKind::ScrollBar: {
      auto* bar = static_cast<QScrollBar*>(widget);
      bar->setOrientation(rect.width() > rect.height() ? Qt::Horizontal : Qt::Vertical);
      bar->setRange(0, std::max(0, item.max));
      bar->setPageStep(std::max(1, item.page));
      bar->setValue(item.value);
      break;
    }
    case ItemKind::Progress: {
      auto* progress = static_cast<QProgressBar*>(widget);
      if (item.indeterminate) {
        progress->setRange(0, 0);
      } else {
        progress->setRange(0, std::max(1, item.max));
        progress->setValue(std::clamp(item.value, 0, std::max(1, item.max)));
      }
      break;
    }
  }
}

int QtWindow::itemOf(const QObject* object) const {
  for (const QObject* o = object; o; o = o->parent()) {
    if (o == window_) return 0;
    for (const auto& [n, item] : items_) {
      if (item.widget == o) return n;
    }
  }
  return 0;
}

void QtWindow::post(const Event& event) {
  queue_.push_back(event);
  if (loop_) loop_->quit();
}

Event QtWindow::takeEvent() {
  Event event = queue_.front();
  queue_.pop_front();
  return event;
}

bool QtWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == window_ && event->type() == QEvent::ScreenChangeInternal) {
    // Moved to a screen of another pixel ratio: the icons are drawn for it.
    for (auto& [n, entry] : items_) {
      if (entry.kind == ItemKind::Icon) drawIcon(entry);
    }
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
      if (!converted) return isModifierKey(key->key()) ? false : true;
      lastKey_ = std::make_unique<QKeyEvent>(key->type(), key->key(), key->modifiers(), key->text(),
                                             key->isAutoRepeat());
      post(*converted);
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
    case QEvent::MouseButtonDblClick: {
      if (!ours) return false;
      const int n = itemOf(widget);
      auto found = items_.find(n);
      if (found == items_.end()) return false;
      auto* mouse = static_cast<QMouseEvent*>(event);
      const bool doubleClick = event->type() == QEvent::MouseButtonDblClick;
      switch (found->second.kind) {
        case ItemKind::List: {
          auto* list = static_cast<QListWidget*>(found->second.widget.data());
          if (widget != list->viewport()) return false;
          int row = list->indexAt(mouse->position().toPoint()).row();
          if (row >= 0) {
            post(Event{
                .type = Event::Type::Click, .item = n, .row = row, .doubleClick = doubleClick});
          }
          return true;
        }
        case ItemKind::Edit:
        case ItemKind::TextArea:
          // The field takes the caret where it was clicked; the dialog hears of the click too.
          if (!doubleClick) post(Event{.type = Event::Type::Click, .item = n});
          return false;
        case ItemKind::ScrollBar: {
          auto* bar = static_cast<QScrollBar*>(found->second.widget.data());
          QStyleOptionSlider option;
          option.initFrom(bar);
          option.orientation = bar->orientation();
          option.minimum = bar->minimum();
          option.maximum = bar->maximum();
          option.sliderPosition = bar->sliderPosition();
          option.sliderValue = bar->value();
          option.pageStep = bar->pageStep();
          option.singleStep = bar->singleStep();
          option.upsideDown = bar->invertedAppearance();
          auto control = bar->style()->hitTestComplexControl(QStyle::CC_ScrollBar, &option,
                                                             mouse->position().toPoint(), bar);
          ScrollPart part = ScrollPart::None;
          if (control == QStyle::SC_ScrollBarSubLine) part = ScrollPart::LineUp;
          if (control == QStyle::SC_ScrollBarAddLine) part = ScrollPart::LineDown;
          if (control == QStyle::SC_ScrollBarSubPage) part = ScrollPart::PageUp;
          if (control == QStyle::SC_ScrollBarAddPage) part = ScrollPart::PageDown;
          if (control == QStyle::SC_ScrollBarSlider) part = ScrollPart::Thumb;
          if (part != ScrollPart::None) {
            post(Event{.type = Event::Type::Click, .item = n, .part = part});
          }
          return true;
        }
        default:
          return false;
      }
    }
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
  return takeEvent();
}

void QtWindow::sendClick(QWidget* target, QPoint local, bool doubleClick) {
  QPointF pos(local);
  QPointF scene(target->mapTo(target->window(), local));
  QPointF global(target->mapToGlobal(local));
  auto send = [&](QEvent::Type type, Qt::MouseButtons buttons) {
    QMouseEvent mouse(type, pos, scene, global, Qt::LeftButton, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &mouse);
  };
  send(QEvent::MouseButtonPress, Qt::LeftButton);
  send(QEvent::MouseButtonRelease, Qt::NoButton);
  if (doubleClick) {
    send(QEvent::MouseButtonDblClick, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, Qt::NoButton);
  }
}

void QtWindow::injectChoose(int n, int menuItem) {
  auto* combo = qobject_cast<QComboBox*>(itemWidget(n));
  if (!combo || menuItem < 1 || menuItem > combo->count()) return;
  // Open the menu as a click would, then click the entry in it.
  combo->showPopup();
  QAbstractItemView* view = combo->view();
  QModelIndex index = combo->model()->index(menuItem - 1, combo->modelColumn());
  view->scrollTo(index);
  QRect rect = view->visualRect(index);
  if (rect.isValid()) sendClick(view->viewport(), rect.center());
  combo->hidePopup();
}

Event QtWindow::inject(detail::WindowState& state, const detail::Answer& answer) {
  using Kind = detail::Answer::Kind;
  // The event the answer stands for on the model: the fallback when the real input produces none
  // (an item a person could not reach, such as a hidden one).
  const Event expected = detail::eventForAnswer(state, answer);
  queue_.clear();
  update(state);
  // A row answer names no item: the event says which list it is for.
  const int n = expected.type == Event::Type::Click ? expected.item : answer.item;
  const detail::ItemState* item = state.item(n);
  QWidget* widget = itemWidget(n);
  const bool reachable = item && widget && item->visible && window_->isVisible();

  switch (answer.kind) {
    case Kind::Key: {
      QWidget* target = itemWidget(state.focus);
      if (!target || target->focusPolicy() == Qt::NoFocus) target = window_;
      QKeyEvent press = keyEventFor(QEvent::KeyPress, answer.character, answer.modifiers);
      QCoreApplication::sendEvent(target, &press);
      QKeyEvent release = keyEventFor(QEvent::KeyRelease, answer.character, answer.modifiers);
      QCoreApplication::sendEvent(target, &release);
      break;
    }
    case Kind::Click:
    case Kind::Focus:
      if (reachable && item->kind != ItemKind::Popup && item->kind != ItemKind::List &&
          expected.type == Event::Type::Click) {
        sendClick(widget, widget->rect().center());
      }
      break;
    case Kind::Choose:
      if (reachable) injectChoose(n, answer.menuItem);
      break;
    case Kind::Row:
    case Kind::DoubleClickRow: {
      auto* list = qobject_cast<QListWidget*>(widget);
      if (reachable && list && answer.row >= 1 && answer.row <= list->count()) {
        QListWidgetItem* row = list->item(answer.row - 1);
        list->scrollToItem(row);
        sendClick(list->viewport(), list->visualItemRect(row).center(),
                  answer.kind == Kind::DoubleClickRow);
      }
      break;
    }
    default:
      break;
  }
  if (queue_.empty()) return expected;
  // A double click arrives as a click then a double click: the last event is the answer's.
  Event event = queue_.back();
  queue_.clear();
  return event;
}

bool QtWindow::nativeEditingKey(const detail::WindowState& state, const Event& event) const {
  if (event.type != Event::Type::Key) return false;
  const detail::ItemState* item = state.item(state.focus);
  if (!item || !item->visible || !item->enabled) return false;
  if (item->kind != ItemKind::Edit && item->kind != ItemKind::TextArea) return false;
  if (event.modifiers & (kModCommand | kModControl)) return false;
  const char16_t c = event.character;
  if (c == kCharBackspace || c == kCharLeft || c == kCharRight || c == 127) return true;
  if (c == kCharUp || c == kCharDown) return item->kind == ItemKind::TextArea;
  return c >= 32;
}

void QtWindow::deliverKeyNatively(int n, const Event& event) {
  QWidget* widget = itemWidget(n);
  if (!widget) return;
  QKeyEvent press = keyEventFor(QEvent::KeyPress, event.character, event.modifiers);
  delivering_ = true;
  QCoreApplication::sendEvent(widget, &press);
  delivering_ = false;
}

void QtWindow::readBack(detail::WindowState& state, int n) {
  detail::ItemState* item = state.item(n);
  QWidget* widget = itemWidget(n);
  if (!item || !widget) return;
  if (auto* edit = qobject_cast<QLineEdit*>(widget)) {
    item->text = fromQString(edit->text());
    if (edit->hasSelectedText()) {
      item->selStart = edit->selectionStart();
      item->selEnd = edit->selectionEnd();
    } else {
      item->selStart = item->selEnd = edit->cursorPosition();
    }
  } else if (auto* area = qobject_cast<QTextEdit*>(widget)) {
    item->text = fromAreaText(area->toPlainText());
    QTextCursor cursor = area->textCursor();
    item->selStart = cursor.selectionStart();
    item->selEnd = cursor.selectionEnd();
    item->scroll = area->verticalScrollBar()->value();
  }
  ++state.generation;
}

Outcome QtWindow::applyDefault(detail::WindowState& state, const Event& event) {
  if (nativeEditingKey(state, event)) {
    // The model says what the key means (a field may refuse more text); the widget does the
    // editing, and what it shows is what the dialog reads.
    detail::WindowState expected = state;
    Outcome outcome = detail::applyDefaultToModel(expected, event, backend_);
    const detail::ItemState* before = state.item(state.focus);
    const detail::ItemState* after = expected.item(state.focus);
    const bool refused = before->text == after->text && before->selStart == after->selStart &&
                         before->selEnd == after->selEnd;
    if (!refused) {
      update(state);
      deliverKeyNatively(state.focus, event);
      readBack(state, state.focus);
    }
    return outcome;
  }
  Outcome outcome = detail::applyDefaultToModel(state, event, backend_);
  update(state);
  return outcome;
}

int QtWindow::textContentHeight(const detail::WindowState& state, int n) {
  const detail::ItemState* item = state.item(n);
  QWidget* widget = itemWidget(n);
  if (!item || !widget) return 0;
  if (auto* area = qobject_cast<QTextEdit*>(widget)) {
    if (area->toPlainText() != toAreaText(item->text)) area->setPlainText(toAreaText(item->text));
    area->document()->setTextWidth(area->viewport()->width());
    return static_cast<int>(std::ceil(area->document()->size().height()));
  }
  if (auto* label = qobject_cast<QLabel*>(widget)) {
    const QString text = wrappableText(item->text, *label, item->rect.width());
    if (label->text() != text) label->setText(text);
    return label->heightForWidth(item->rect.width());
  }
  return detail::wrappedLineCount(item->text, item->rect.width()) * detail::kLineHeight;
}

bool QtWindow::saveShot(const detail::WindowState& state, const std::string& path) {
  update(state);
  QCoreApplication::sendPostedEvents();
  return window_->grab().save(QString::fromStdString(path), "PNG");
}

}  // namespace toolkit::qt
