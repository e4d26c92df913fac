#include "qt_keeper.h"

#include <QApplication>
#include <QTimer>
#include <QWindow>

namespace toolkit::qt {

WindowKeeper::WindowKeeper(QWidget* window, std::function<void()> closeBox)
    : window_(window), closeBox_(std::move(closeBox)) {
  qApp->installEventFilter(this);
}

WindowKeeper::~WindowKeeper() {
  qApp->removeEventFilter(this);
}

bool WindowKeeper::eventFilter(QObject* watched, QEvent* event) {
  if (watched == window_ && event->type() == QEvent::WindowStateChange && window_->isMinimized()) {
    QMetaObject::invokeMethod(
        this, [this] { window_->setWindowState(window_->windowState() & ~Qt::WindowMinimized); },
        Qt::QueuedConnection);
  } else if (event->type() == QEvent::Expose && watched == window_->windowHandle() &&
             !window_->windowHandle()->isExposed()) {
    // Hidden by the window manager while minimised, or gone: a moment tells which.
    QTimer::singleShot(100, this, [this] { reappear(); });
  }
  return false;
}

void WindowKeeper::reappear() {
  QWindow* handle = window_->windowHandle();
  if (!window_->isVisible() || window_->isMinimized() || !handle || handle->isExposed()) return;
  closeBox_();
  // A window destroyed from outside cannot be shown again: a new one takes its place.
  window_->hide();
  handle->destroy();
  window_->show();
}

}  // namespace toolkit::qt
