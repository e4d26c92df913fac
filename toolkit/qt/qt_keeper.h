// Keeps a modal dialog window on screen whatever the window system does to it: minimised, it comes
// back at once (the script waits on it); unmapped or destroyed from outside, the dialog hears of it
// as of the close box and the window comes back unless the dialog ends.
#pragma once

#include <QObject>
#include <QWidget>

#include <functional>

namespace toolkit::qt {

class WindowKeeper final : public QObject {
 public:
  WindowKeeper(QWidget* window, std::function<void()> closeBox);
  ~WindowKeeper() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void reappear();

  QWidget* window_;
  std::function<void()> closeBox_;
};

}  // namespace toolkit::qt
