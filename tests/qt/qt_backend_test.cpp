// The Qt backend on its own, off screen: a window mirrors the core's model in real widgets,
// answers become real key and mouse events that come back as the pulled loop's events, and the
// default handling of a key edits the real field and is read back into the model.
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QWindow>

#include <QElapsedTimer>
#include <QStyleOptionSlider>
#include <QWheelEvent>

#include <filesystem>
#include <functional>

#include "qt_backend.h"
#include "qt_window.h"

namespace toolkit::qt {
namespace {

using detail::ItemState;
using detail::WindowState;

ItemState makeItem(int n, ItemKind kind, Rect rect, std::u16string text = {}) {
  ItemState item;
  item.n = n;
  item.kind = kind;
  item.rect = rect;
  item.text = std::move(text);
  return item;
}

// A window with one item of every kind, laid out like the dialogs that use them.
WindowState everyKind() {
  WindowState state;
  state.id = 24274;
  state.title = u"Everything";
  state.frame = Rect{100, 80, 100 + 420, 80 + 360};
  state.visible = true;
  state.defaultItem = 1;
  state.items = {
      makeItem(1, ItemKind::Button, {330, 320, 400, 344}, u"OK"),
      makeItem(2, ItemKind::Button, {250, 320, 320, 344}, u"Cancel"),
      makeItem(3, ItemKind::Text, {72, 16, 400, 48}, u"Type <b>here</b> & there"),
      makeItem(4, ItemKind::Edit, {72, 56, 400, 80}),
      makeItem(5, ItemKind::Popup, {72, 88, 250, 112}),
      makeItem(6, ItemKind::Checkbox, {260, 88, 400, 112}, u"Remember"),
      makeItem(7, ItemKind::Icon, {16, 16, 48, 48}),
      makeItem(8, ItemKind::List, {72, 120, 240, 220}),
      makeItem(9, ItemKind::TextArea, {250, 120, 384, 220}),
      makeItem(10, ItemKind::ScrollBar, {384, 120, 400, 220}),
      makeItem(11, ItemKind::Progress, {72, 230, 400, 250}),
  };
  state.item(5)->menu = {u"Red", u"-", u"Blue"};
  state.item(8)->rows = {u"alpha", u"beta", u"gamma"};
  state.focus = 4;
  return state;
}

class QtBackendTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { backend_ = new QtBackend(); }
  static void TearDownTestSuite() {
    delete backend_;
    backend_ = nullptr;
  }

  std::unique_ptr<QtWindow> open(const WindowState& state) {
    auto window = backend_->createWindow(state);
    return std::unique_ptr<QtWindow>(static_cast<QtWindow*>(window.release()));
  }

  // What the core does with an answer: the backend performs it, the dialog's filter lets the event
  // through, the toolkit applies the default handling.
  Outcome answer(QtWindow& window, WindowState& state, const std::string& line) {
    Outcome outcome;
    for (const Event& event : window.inject(state, detail::parseAnswer(line)))
      outcome = window.applyDefault(state, event);
    return outcome;
  }
  // The event an answer stands for (a key's release and a double click's first click aside).
  Event injected(QtWindow& window, WindowState& state, const std::string& line) {
    std::vector<Event> events = window.inject(state, detail::parseAnswer(line));
    EXPECT_FALSE(events.empty()) << line;
    std::erase_if(events, [](const Event& e) { return e.type == Event::Type::KeyUp; });
    return events.empty() ? Event{} : events.back();
  }
  // The dialog changed these items: the window shows them again.
  void refresh(QtWindow& window, WindowState& state) {
    for (ItemState& item : state.items) ++item.changes;
    window.update(state);
  }

  static QtBackend* backend_;
};

QtBackend* QtBackendTest::backend_ = nullptr;

template <typename W>
W* widget(QtWindow& window, int n) {
  auto* w = qobject_cast<W*>(window.itemWidget(n));
  EXPECT_NE(w, nullptr) << "item " << n;
  return w;
}

TEST_F(QtBackendTest, IconsComeFromTheThemeAndCustomPicturesAreScaledIntoTheRect) {
  WindowState state = everyKind();
  auto window = open(state);
  auto* icon = widget<QLabel>(*window, 7);
  const qreal ratio = icon->devicePixelRatioF();
  for (IconKind kind : {IconKind::Note, IconKind::Caution, IconKind::Stop}) {
    state.item(7)->icon = kind;
    refresh(*window, state);
    QPixmap pixmap = icon->pixmap();
    ASSERT_FALSE(pixmap.isNull());
    EXPECT_EQ(pixmap.deviceIndependentSize().toSize(), QSize(32, 32));
    EXPECT_EQ(pixmap.width(), qRound(32 * ratio));
  }
  // Moved to another screen: drawn again for that screen's pixel ratio.
  icon->setProperty("iconKey", QString());
  icon->setPixmap(QPixmap());
  QEvent moved(QEvent::ScreenChangeInternal);
  QCoreApplication::sendEvent(window->window(), &moved);
  ASSERT_FALSE(icon->pixmap().isNull());
  EXPECT_EQ(icon->pixmap().devicePixelRatio(), ratio);
  // A wide picture keeps its proportions inside the square.
  auto image = std::make_shared<Image>();
  image->width = 64;
  image->height = 16;
  image->pixels.assign(64 * 16, 0xFFFF0000u);
  state.item(7)->icon = IconKind::Custom;
  state.item(7)->image = image;
  refresh(*window, state);
  QPixmap custom = icon->pixmap();
  ASSERT_FALSE(custom.isNull());
  EXPECT_EQ(custom.deviceIndependentSize().toSize(), QSize(32, 8));
  EXPECT_EQ(custom.toImage().pixelColor(2, 2), QColor(255, 0, 0));
  // Custom with nothing stored draws nothing.
  state.item(7)->image.reset();
  refresh(*window, state);
  EXPECT_TRUE(icon->pixmap().isNull());
}

// Runs events until `condition` holds or `ms` pass; whether it held.
bool waitFor(const std::function<bool()>& condition, int ms = 2000) {
  QElapsedTimer timer;
  timer.start();
  while (!condition()) {
    if (timer.elapsed() > ms) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
  }
  return true;
}

// A person's mouse: real events posted to a widget, travelling through the event loop.
void mouse(QWidget* w, QEvent::Type type, QPoint at, Qt::MouseButtons buttons) {
  QCoreApplication::postEvent(
      w, new QMouseEvent(type, QPointF(at), QPointF(w->mapTo(w->window(), at)),
                         QPointF(w->mapToGlobal(at)), Qt::LeftButton, buttons, Qt::NoModifier));
}

// Where in a field a click puts the caret at `position`.
QPoint pointOf(QLineEdit* edit, int position) {
  for (int x = 0; x < edit->width(); ++x)
    if (edit->cursorPositionAt(QPoint(x, edit->height() / 2)) == position)
      return QPoint(x, edit->height() / 2);
  return {};
}

// What a person does in the widgets is theirs: a click places the caret where it lands, a drag
// selects, the wheel scrolls; the dialog hears of each, the model follows, and an unrelated change
// of the dialog's does not undo it.
TEST_F(QtBackendTest, APersonsClickDragAndWheelStayWhereThePersonPutThem) {
  WindowState state = everyKind();
  state.item(4)->text = u"hello world";
  for (int i = 0; i < 60; ++i) state.item(9)->text += u"a line of the text area\r";
  auto window = open(state);
  auto* edit = widget<QLineEdit>(*window, 4);
  auto wait = [&] { return window->waitEvent(state, backend_->ticks() + 120); };

  mouse(edit, QEvent::MouseButtonPress, pointOf(edit, 5), Qt::LeftButton);
  mouse(edit, QEvent::MouseButtonRelease, pointOf(edit, 5), Qt::NoButton);
  Event click = wait();
  EXPECT_EQ(click.item, 4);
  EXPECT_EQ(click.caret, 5);
  window->applyDefault(state, click);
  EXPECT_EQ(edit->cursorPosition(), 5);
  EXPECT_EQ(state.item(4)->selEnd, 5);

  mouse(edit, QEvent::MouseButtonPress, pointOf(edit, 0), Qt::LeftButton);
  mouse(edit, QEvent::MouseMove, pointOf(edit, 5), Qt::LeftButton);
  mouse(edit, QEvent::MouseButtonRelease, pointOf(edit, 5), Qt::NoButton);
  window->applyDefault(state, wait());
  ASSERT_TRUE(waitFor([&] { return edit->selectedText() == QStringLiteral("hello"); }));

  state.item(1)->text = u"Go";
  ++state.item(1)->changes;
  window->update(state);
  window->readBack(state);
  EXPECT_EQ(edit->selectedText(), QStringLiteral("hello"));
  EXPECT_EQ(state.item(4)->selStart, 0);
  EXPECT_EQ(state.item(4)->selEnd, 5);

  auto* area = widget<QPlainTextEdit>(*window, 9);
  EXPECT_EQ(area->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);  // item 10 is its bar
  const QPoint middle = area->viewport()->rect().center();
  QCoreApplication::postEvent(
      area->viewport(),
      new QWheelEvent(QPointF(middle), QPointF(area->viewport()->mapToGlobal(middle)), QPoint(),
                      QPoint(0, -240), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false));
  Event scrolled = wait();
  EXPECT_EQ(scrolled.type, Event::Type::Scroll);
  EXPECT_EQ(scrolled.item, 9);
  window->readBack(state);
  EXPECT_GT(state.item(9)->scroll, 0);
  const int line = area->fontMetrics().lineSpacing();  // it scrolls by whole lines
  EXPECT_EQ(state.item(9)->scroll, area->verticalScrollBar()->value() * line);
  ++state.item(1)->changes;
  window->update(state);
  EXPECT_EQ(area->verticalScrollBar()->value() * line, state.item(9)->scroll);  // no snap back
}

// A person drags a scroll bar's thumb: each move reports the value; an arrow reports its part
// and leaves the value to the dialog.
TEST_F(QtBackendTest, APersonDragsTheThumbAndPressesTheArrows) {
  WindowState state = everyKind();
  state.item(10)->max = 10;
  state.item(10)->page = 2;
  auto window = open(state);
  auto* bar = widget<QScrollBar>(*window, 10);
  QStyleOptionSlider option;
  option.initFrom(bar);
  option.orientation = Qt::Vertical;
  option.maximum = 10;
  option.pageStep = 2;
  option.singleStep = 1;
  auto rect = [&](QStyle::SubControl part) {
    return bar->style()->subControlRect(QStyle::CC_ScrollBar, &option, part, bar);
  };
  const QPoint thumb = rect(QStyle::SC_ScrollBarSlider).center();
  mouse(bar, QEvent::MouseButtonPress, thumb, Qt::LeftButton);
  mouse(bar, QEvent::MouseMove, thumb + QPoint(0, 30), Qt::LeftButton);
  mouse(bar, QEvent::MouseButtonRelease, thumb + QPoint(0, 30), Qt::NoButton);
  Event moved = window->waitEvent(state, backend_->ticks() + 120);
  EXPECT_EQ(moved.part, ScrollPart::Thumb);
  EXPECT_GT(moved.value, 0);
  window->applyDefault(state, moved);
  EXPECT_EQ(state.item(10)->value, moved.value);

  mouse(bar, QEvent::MouseButtonPress, rect(QStyle::SC_ScrollBarSubLine).center(), Qt::LeftButton);
  mouse(bar, QEvent::MouseButtonRelease, rect(QStyle::SC_ScrollBarSubLine).center(), Qt::NoButton);
  Event arrow = window->waitEvent(state, backend_->ticks() + 120);
  EXPECT_EQ(arrow.part, ScrollPart::LineUp);
  EXPECT_EQ(bar->value(), moved.value);  // the dialog decides how far
}

// Keys a person types into a window open between calls, while no dialog waits, are dropped.
TEST_F(QtBackendTest, AWindowOpenBetweenCallsDropsStrayKeys) {
  WindowState state = everyKind();
  state.persistent = true;
  auto window = open(state);
  QCoreApplication::postEvent(window->window(),
                              new QKeyEvent(QEvent::KeyPress, Qt::Key_Z, Qt::NoModifier, "z"));
  backend_->pump();
  waitFor([] { return false; }, 50);
  EXPECT_EQ(window->waitEvent(state, backend_->ticks() + 2).type, Event::Type::Null);
}

TEST_F(QtBackendTest, PersonsEventsAndDeadlines) {
  WindowState state = everyKind();
  auto window = open(state);

  // The close box acts as the Escape key.
  QCoreApplication::postEvent(window->window(), new QCloseEvent());
  Event close = window->waitEvent(state, backend_->ticks() + 600);
  EXPECT_EQ(close.type, Event::Type::Key);
  EXPECT_EQ(close.character, kCharEscape);
  EXPECT_TRUE(window->window()->isVisible());

  // A key typed by a person while the dialog waits.
  QCoreApplication::postEvent(widget<QLineEdit>(*window, 4),
                              new QKeyEvent(QEvent::KeyPress, Qt::Key_Z, Qt::NoModifier, "z"));
  Event typed = window->waitEvent(state, backend_->ticks() + 600);
  EXPECT_EQ(typed.type, Event::Type::Key);
  EXPECT_EQ(typed.character, u'z');

  // Nothing happens: a null event once the deadline passes.
  const Tick deadline = backend_->ticks() + 2;
  Event idle = window->waitEvent(state, deadline);
  EXPECT_EQ(idle.type, Event::Type::Null);
  EXPECT_GE(static_cast<std::int32_t>(backend_->ticks() - deadline), 0);
}

// The standard dialog's layout: a message, an icon and four buttons below the message.
WindowState messageWindow(std::u16string message) {
  WindowState state;
  state.id = 24272;
  state.frame = Rect{180, 216, 180 + 440, 216 + 150};
  state.visible = true;
  state.fronted = 1;
  state.defaultItem = 1;
  state.items = {
      makeItem(1, ItemKind::Button, {336, 106, 424, 134}, u"OK"),
      makeItem(2, ItemKind::Button, {238, 106, 326, 134}, u"Cancel"),
      makeItem(3, ItemKind::Button, {140, 106, 228, 134}),
      makeItem(4, ItemKind::Button, {42, 106, 130, 134}),
      makeItem(5, ItemKind::Text, {72, 16, 424, 96}, std::move(message)),
      makeItem(6, ItemKind::Icon, {20, 16, 52, 48}),
  };
  state.item(3)->visible = state.item(4)->visible = false;
  return state;
}

std::u16string repeated(const std::u16string& text, int times) {
  std::u16string out;
  for (int i = 0; i < times; ++i) out += text;
  return out;
}

TEST_F(QtBackendTest, ALongMessageGrowsTheWindowWithinTheScreen) {
  const Rect screen = backend_->screenBounds();
  // Short: the template's geometry, exactly.
  WindowState state = messageWindow(u"Save changes?");
  auto window = open(state);
  EXPECT_EQ(window->window()->geometry(), QRect(180, 216, 440, 150));

  // Some lines too many: the message gets them all, the buttons move down below it, the window
  // grows by as much and stays on the screen.
  state.item(5)->text = repeated(u"Some records could not be matched and were skipped. ", 8);
  refresh(*window, state);
  auto* label = widget<QLabel>(*window, 5);
  const int grown = window->window()->height() - 150;
  EXPECT_GT(grown, 0);
  EXPECT_GE(label->height(), label->heightForWidth(label->width()));
  EXPECT_EQ(label->geometry().top(), 16);
  EXPECT_EQ(widget<QPushButton>(*window, 1)->geometry().top(), 106 + grown);
  EXPECT_GE(widget<QPushButton>(*window, 1)->geometry().top(), label->geometry().bottom());
  EXPECT_EQ(widget<QLabel>(*window, 6)->geometry().top(), 16);  // the icon stays by the message
  EXPECT_LE(window->window()->geometry().bottom(), screen.bottom);
  EXPECT_EQ(label->parentWidget(), window->window());  // it fits: no scrolling

  // Two thousand characters: the window stays within the screen and the message scrolls.
  std::u16string huge = repeated(u"0123456789 abcdefghijklmnopqrstuvwxyz ", 53);
  ASSERT_GE(huge.size(), 2000u);
  state.item(5)->text = huge;
  refresh(*window, state);
  QRect frame = window->window()->geometry();
  EXPECT_GE(frame.top(), screen.top);
  EXPECT_LE(frame.bottom(), screen.bottom);
  auto* scroller = qobject_cast<QScrollArea*>(label->parentWidget()->parentWidget());
  ASSERT_NE(scroller, nullptr);
  EXPECT_EQ(label->text(), toQString(huge));
  EXPECT_GE(label->height(), label->heightForWidth(label->width()));  // nothing cut off
  EXPECT_GT(label->height(), scroller->viewport()->height());
  EXPECT_GE(widget<QPushButton>(*window, 1)->geometry().top(), scroller->geometry().bottom());
  EXPECT_LE(widget<QPushButton>(*window, 1)->geometry().bottom(), frame.height());

  // A word wider than the message (a long path) breaks rather than being cut off at the right.
  std::u16string path = u"/home/" + repeated(u"VeryLongFolderNameWithoutSpaces_", 6) + u"/report";
  state.item(5)->text = u"The file " + path + u" could not be opened.";
  refresh(*window, state);
  QRect drawn = label->fontMetrics().boundingRect(QRect(0, 0, label->width(), 10000),
                                                  Qt::TextWordWrap, label->text());
  EXPECT_LE(drawn.width(), label->width());
  EXPECT_GE(label->height(), label->heightForWidth(label->width()));
  EXPECT_EQ(label->text().remove(QChar(0x200B)), toQString(state.item(5)->text));

  // Carriage returns, the host's line ends, break the lines.
  state.item(5)->text = u"First line\rSecond line\r\rFourth line";
  refresh(*window, state);
  EXPECT_EQ(label->text(), QStringLiteral("First line\nSecond line\n\nFourth line"));

  // Short again: back to the template's geometry and a plain label.
  state.item(5)->text = u"Done.";
  refresh(*window, state);
  EXPECT_EQ(window->window()->geometry(), QRect(180, 216, 440, 150));
  EXPECT_EQ(label->parentWidget(), window->window());
  EXPECT_TRUE(label->isVisible());
  EXPECT_EQ(label->geometry(), QRect(72, 16, 352, 80));
}

// A screen reader announces a field or pop-up by its label, not as "edit field". A bullet field
// never shows its text, and a person cannot copy it out.
TEST_F(QtBackendTest, FieldsAreNamedByTheirLabelsAndBulletFieldsKeepTheirText) {
  WindowState state = everyKind();
  state.item(4)->label = u"Password";
  state.item(4)->masked = true;
  state.item(4)->text = u"secret";
  state.item(5)->label = u"Colour";
  auto window = open(state);
  auto* edit = widget<QLineEdit>(*window, 4);
  EXPECT_EQ(edit->accessibleName(), QStringLiteral("Password"));
  EXPECT_EQ(widget<QComboBox>(*window, 5)->accessibleName(), QStringLiteral("Colour"));
  EXPECT_FALSE(edit->displayText().contains(QStringLiteral("secret")));
  backend_->setClipboardText(u"before");
  answer(*window, state, "key cmd-a");
  answer(*window, state, "key cmd-c");
  EXPECT_EQ(backend_->clipboardText(), std::u16string(u"before"));
}

TEST_F(QtBackendTest, TitlesAreShownAsPlainText) {
  WindowState state = messageWindow(u"<b>bold</b> & <i>not</i>");
  state.title = u"Report [*] <b>draft</b>";
  state.item(1)->text = u"Save & <b>Close</b>";
  auto window = open(state);
  EXPECT_EQ(window->window()->windowHandle()->title(), QStringLiteral("Report [*] <b>draft</b>"));
  EXPECT_EQ(widget<QLabel>(*window, 5)->textFormat(), Qt::PlainText);
  EXPECT_EQ(widget<QPushButton>(*window, 1)->text(), QStringLiteral("Save && <b>Close</b>"));
}

TEST_F(QtBackendTest, DialogsComeToTheFrontWithTheKeyboard) {
  WindowState first = messageWindow(u"First");
  auto one = open(first);
  QCoreApplication::processEvents();
  EXPECT_EQ(QApplication::activeWindow(), one->window());
  EXPECT_EQ(QGuiApplication::focusWindow(), one->window()->windowHandle());

  WindowState second = messageWindow(u"Second");
  auto two = open(second);
  QCoreApplication::processEvents();
  EXPECT_EQ(QApplication::activeWindow(), two->window());

  // Asked to the front again (a window that stays open between calls).
  ++first.fronted;
  one->update(first);
  QCoreApplication::processEvents();
  EXPECT_EQ(QApplication::activeWindow(), one->window());
  // An update that does not ask for the front leaves the keyboard where it is.
  two->update(second);
  QCoreApplication::processEvents();
  EXPECT_EQ(QApplication::activeWindow(), one->window());
}

TEST_F(QtBackendTest, TheCloseBoxActsAsEscapeAndLeavesTheDialogOpen) {
  WindowState state = messageWindow(u"Stay");
  auto window = open(state);
  // As the window manager's close button does it: through the platform window.
  EXPECT_FALSE(window->window()->windowHandle()->close());
  EXPECT_FALSE(window->window()->close());
  EXPECT_TRUE(window->window()->isVisible());
  for (int i = 0; i < 2; ++i) {
    Event close = window->waitEvent(state, backend_->ticks() + 600);
    EXPECT_EQ(close.type, Event::Type::Key);
    EXPECT_EQ(close.character, kCharEscape);
  }
}

TEST_F(QtBackendTest, AWindowAPersonMovedStaysWhereItWasPut) {
  WindowState state = messageWindow(u"Drag me");
  auto window = open(state);
  window->window()->move(20, 30);
  const QRect moved = window->window()->geometry();
  state.item(5)->text = u"Dragged";
  refresh(*window, state);
  EXPECT_EQ(window->window()->geometry(), moved);
  // The dialog places it: it goes there.
  state.frame = Rect{100, 50, 100 + 440, 50 + 150};
  refresh(*window, state);
  EXPECT_EQ(window->window()->geometry().topLeft(), QPoint(100, 50));
}

// Counts the paint events a widget receives.
class PaintCounter : public QObject {
 public:
  int paints = 0;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++paints;
    return false;
  }
};

TEST_F(QtBackendTest, AWindowOpenBetweenCallsIsRedrawnByThePump) {
  WindowState state = everyKind();
  state.persistent = true;
  state.visible = false;
  auto window = open(state);
  auto* message = widget<QLabel>(*window, 3);
  PaintCounter counter;
  message->installEventFilter(&counter);
  // Shown: drawn by the first pump.
  state.visible = true;
  ++state.fronted;
  refresh(*window, state);
  backend_->pump();
  EXPECT_GE(counter.paints, 1);
  counter.paints = 0;
  state.item(3)->text = u"Step 2 of 10";
  refresh(*window, state);
  EXPECT_EQ(counter.paints, 0);  // nothing is drawn until events run
  backend_->pump();              // as the host does between script steps and while idle
  EXPECT_GE(counter.paints, 1);
  message->removeEventFilter(&counter);
}

TEST_F(QtBackendTest, ShotsAreThePicturesOfTheWindow) {
  WindowState state = everyKind();
  auto window = open(state);
  auto path = std::filesystem::temp_directory_path() / "mosa-qt-shot-test.png";
  ASSERT_TRUE(window->saveShot(state, path.string()));
  QImage shot(QString::fromStdString(path.string()));
  std::filesystem::remove(path);
  EXPECT_EQ(shot.size() / shot.devicePixelRatio(), QSize(420, 360));
}

TEST_F(QtBackendTest, PlatformServices) {
  backend_->setClipboardText(u"copied ¶ text");
  EXPECT_EQ(backend_->clipboardText(), std::optional<std::u16string>(u"copied ¶ text"));
  Rect screen = backend_->screenBounds();
  EXPECT_GT(screen.width(), 0);
  EXPECT_GT(screen.height(), 0);
  const Tick start = backend_->ticks();
  backend_->waitUntil(start + 1);
  EXPECT_GE(static_cast<std::int32_t>(backend_->ticks() - (start + 1)), 0);
  backend_->alert(1251, u"A <b>caution</b> alert", true);
  backend_->warmUp();
  backend_->pump();
}

}  // namespace
}  // namespace toolkit::qt
