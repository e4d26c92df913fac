// The Qt 6 Widgets backend: a QApplication made on first use when the process has none, a real
// tick clock, the platform's beep, clipboard and screen, and dialog windows of real widgets.
#pragma once

#include <QApplication>

#include <memory>

#include "backend.h"

namespace toolkit::qt {

class QtBackend final : public detail::Backend {
 public:
  QtBackend();
  ~QtBackend() override;

  const char* name() const override { return "qt"; }
  std::unique_ptr<detail::BackendWindow> createWindow(const detail::WindowState& state) override;
  Tick ticks() override;
  void waitUntil(Tick deadline) override;
  void beep() override;
  std::optional<std::u16string> clipboardText() override;
  void setClipboardText(const std::u16string& text) override;
  Rect screenBounds() override;
  void pump() override;
  void alert(int id, const std::u16string& text, bool scripted) override;
  void warmUp() override;

  // Runs events until `deadline` or until `loop` is quit; returns whether the deadline passed.
  bool runUntil(QEventLoop& loop, Tick deadline);

 private:
  std::unique_ptr<QApplication> ownApp_;  // only when the process had no application
};

// Conversions between the toolkit's UTF-16 strings and Qt's.
QString toQString(const std::u16string& text);
std::u16string fromQString(const QString& text);
// Window titles are plain text: Qt reads "[*]" as the modified-document mark unless doubled.
QString plainWindowTitle(const std::u16string& title);
QRect toQRect(const Rect& r);

}  // namespace toolkit::qt
