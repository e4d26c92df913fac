#include "qt_backend.h"

#include <QClipboard>
#include <QFileInfo>
#include <QFontMetrics>
#include <QIcon>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QTimer>

#include <algorithm>
#include <cstdio>

#include "items/items.h"
#include "qt_platform.h"
#include "qt_window.h"
#include "session_state.h"

namespace toolkit::qt {
namespace {

// Qt keeps references to argc and argv for the application's lifetime.
int gArgc = 1;
char gArgv0[] = "mosa";
char* gArgv[] = {gArgv0, nullptr};

QtMessageHandler gPreviousHandler = nullptr;

// Qt's complaints about a missing XDG_RUNTIME_DIR, and the off-screen platform's about what it
// cannot do (raise a window, grab the keyboard), say nothing a user of the host can act on.
void quietMessageHandler(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  if (type == QtWarningMsg && (text.startsWith(QLatin1String("QStandardPaths:")) ||
                               text.startsWith(QLatin1String("This plugin does not support")))) {
    return;
  }
  if (gPreviousHandler) gPreviousHandler(type, context, text);
}

// The platform's icon theme draws the dialogs' icons. Without a desktop session Qt knows of none;
// then an installed theme that has them in scalable form stands in, so they stay sharp at any
// pixel ratio.
void chooseIconTheme() {
  const QString current = QIcon::themeName();
  if (!current.isEmpty() && current != QLatin1String("hicolor")) return;
  // The off-screen platform does not even look where the desktop keeps its themes.
  QStringList paths = QIcon::themeSearchPaths();
  QString data = QString::fromLocal8Bit(qgetenv("XDG_DATA_DIRS"));
  if (data.isEmpty()) data = QStringLiteral("/usr/local/share:/usr/share");
  for (const QString& folder : data.split(QLatin1Char(':'), Qt::SkipEmptyParts)) {
    if (!paths.contains(folder + QStringLiteral("/icons")))
      paths << folder + QStringLiteral("/icons");
  }
  QIcon::setThemeSearchPaths(paths);
  for (const char* theme : {"Adwaita", "Tango"}) {
    for (const QString& folder : QIcon::themeSearchPaths()) {
      const QString svg = QStringLiteral("%1/%2/scalable/status/dialog-warning.svg")
                              .arg(folder, QLatin1String(theme));
      if (QFileInfo::exists(svg)) {
        QIcon::setThemeName(QLatin1String(theme));
        return;
      }
    }
  }
}

}  // namespace

QString plainWindowTitle(const std::u16string& title) {
  return toQString(title).replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
}

QRect toQRect(const Rect& r) {
  return QRect(r.left, r.top, r.width(), r.height());
}

QString toQString(const std::u16string& text) {
  return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

std::u16string fromQString(const QString& text) {
  return std::u16string(reinterpret_cast<const char16_t*>(text.utf16()),
                        static_cast<std::size_t>(text.size()));
}

QtBackend::QtBackend() {
  if (QCoreApplication::instance()) return;  // a Qt host made its own application: use it
  gPreviousHandler = qInstallMessageHandler(quietMessageHandler);
  ownApp_ = std::make_unique<QApplication>(gArgc, gArgv);
  QApplication::setQuitOnLastWindowClosed(false);
  chooseIconTheme();
}

QtBackend::~QtBackend() {
  if (ownApp_) {
    QApplication::closeAllWindows();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ownApp_.reset();
    qInstallMessageHandler(gPreviousHandler);
  }
}

std::unique_ptr<detail::BackendWindow> QtBackend::createWindow(const detail::WindowState& state) {
  return std::make_unique<QtWindow>(*this, state);
}

// The core's real clock, so the tick count does not restart when Qt is loaded late in a run.
Tick QtBackend::ticks() {
  return detail::realTicks();
}

bool QtBackend::runUntil(QEventLoop& loop, Tick deadline) {
  if (deadline == kNoDeadline) {
    loop.exec();
    return false;
  }
  auto passed = [&] { return static_cast<std::int32_t>(ticks() - deadline) >= 0; };
  if (passed()) return true;
  QTimer timer;
  timer.setSingleShot(true);
  QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
  // A tick is 1000/60 ms; round up so the loop wakes after the deadline, not just before it.
  auto remaining = static_cast<std::int64_t>(static_cast<std::uint32_t>(deadline - ticks()));
  timer.start(static_cast<int>((remaining * 1000 + 59) / 60) + 1);
  loop.exec();
  return passed();
}

void QtBackend::waitUntil(Tick deadline) {
  QEventLoop loop;
  while (!runUntil(loop, deadline)) {
  }
}

void QtBackend::beep() {
  QApplication::beep();
}

std::optional<std::u16string> QtBackend::clipboardText() {
  QClipboard* clipboard = QGuiApplication::clipboard();
  if (!clipboard) return std::nullopt;
  QString text = clipboard->text();
  if (text.isNull()) return std::nullopt;
  return fromQString(text);
}

void QtBackend::setClipboardText(const std::u16string& text) {
  if (QClipboard* clipboard = QGuiApplication::clipboard()) clipboard->setText(toQString(text));
}

Rect QtBackend::screenBounds() {
  QScreen* screen = QGuiApplication::primaryScreen();
  if (!screen) return Rect{0, 0, 1024, 768};
  QRect area = screen->availableGeometry();
  return Rect{area.left(), area.top(), area.left() + area.width(), area.top() + area.height()};
}

void QtBackend::pump() {
  QCoreApplication::sendPostedEvents();
  QCoreApplication::processEvents(QEventLoop::AllEvents);
}

void QtBackend::alert(int /*id*/, const std::u16string& text, bool scripted) {
  // Lines end with carriage returns in the host's texts; a message box breaks at newlines.
  QString message = toQString(text)
                        .replace(QLatin1String("\r\n"), QLatin1String("\n"))
                        .replace(QLatin1Char('\r'), QLatin1Char('\n'));
  // It looks like the dialogs: their caution icon, their buttons, their title and their place.
  QMessageBox box(QMessageBox::NoIcon, toQString(detail::session().hostName), message,
                  QMessageBox::Ok);
  box.setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                     Qt::WindowCloseButtonHint);
  box.setTextFormat(Qt::PlainText);
  box.setIconPixmap(themeIcon(IconKind::Caution).pixmap(QSize(32, 32), box.devicePixelRatioF()));
  // The box settles its size as it is shown; then it goes where a dialog of that size would.
  box.show();
  const Rect screen = screenBounds();
  box.move(screen.left + (screen.width() - box.width()) / 2,
           screen.top + std::max(0, (screen.height() - box.height()) / 3));
  // Off screen no person can see it: it is drawn and dismissed as when answers drive the run.
  if (!scripted && QGuiApplication::platformName() != QLatin1String("offscreen")) {
    box.exec();
    return;
  }
  // Answers drive the run: the alert is drawn, then dismissed as a person would.
  pump();
  box.done(QMessageBox::Ok);
}

void QtBackend::warmUp() {
  // The first widget pays for the style, the fonts and the standard icons; pay for them now.
  QPushButton probe(QStringLiteral("OK"));
  probe.ensurePolished();
  (void)probe.sizeHint();
  (void)QFontMetrics(probe.font()).horizontalAdvance(QStringLiteral("Mosa"));
  for (IconKind kind : {IconKind::Note, IconKind::Caution, IconKind::Stop})
    (void)themeIcon(kind).pixmap(32, 32);
  pump();
}

}  // namespace toolkit::qt

extern "C" __attribute__((visibility("default"))) toolkit::detail::Backend* mosa_toolkit_qt_create(
    char* why, std::size_t size) {
  try {
    if (!QCoreApplication::instance()) {
      const std::string problem = toolkit::qt::choosePlatform();
      if (!problem.empty()) {
        std::snprintf(why, size, "%s", problem.c_str());
        return nullptr;
      }
    }
    return new toolkit::qt::QtBackend();
  } catch (...) {
    std::snprintf(why, size, "Qt could not start");
    return nullptr;
  }
}
