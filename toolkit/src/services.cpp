// Clock, delay, beep, clipboard, screen bounds and alerts through the session's backend.
#include <chrono>
#include <thread>

#include "session_state.h"

namespace toolkit {

Tick tickCount() {
  detail::Backend* b = detail::backendIfCheap();
  return b ? b->ticks() : detail::realTicks();
}

void delay(Tick ticks) {
  if (detail::Backend* b = detail::backendIfCheap()) {
    b->waitUntil(b->ticks() + ticks);
    return;
  }
  std::this_thread::sleep_for(std::chrono::milliseconds(ticks * 1000ull / 60));
}

void beep() {
  detail::Backend* b = detail::backendIfCheap();
  detail::traceBeep(b ? b->ticks() : detail::realTicks());
  if (b) b->beep();
}

std::optional<std::u16string> clipboardText() {
  return detail::backend().clipboardText();
}

void setClipboardText(const std::u16string& text) {
  detail::backend().setClipboardText(text);
}

Rect screenBounds() {
  return detail::backend().screenBounds();
}

void showAlert(int id, const std::string& text, long number) {
  detail::traceAlert(id, number);
  detail::backend().alert(id, detail::fromUtf8(text), detail::scripted());
}

}  // namespace toolkit
