// The headless backend, the null implementation of the backend contract: the model is the window,
// text metrics are fixed (kCharWidth x kLineHeight), the clock is virtual and moves only when
// something waits, and every event comes from the answers.
#include <algorithm>
#include <cstdio>

#include "session_state.h"

namespace toolkit::detail {
namespace {

class HeadlessWindow final : public BackendWindow {
 public:
  explicit HeadlessWindow(Backend& backend) : backend_(backend) {}
  void update(const WindowState&) override {}
  void readBack(WindowState&) override {}
  Event waitEvent(WindowState&, Tick deadline) override {
    if (deadline != kNoDeadline) backend_.waitUntil(deadline);
    return {};
  }
  std::vector<Event> inject(WindowState& state, const Answer& answer) override {
    return eventsForAnswer(state, answer);
  }
  Outcome applyDefault(WindowState& state, const Event& event) override {
    return applyDefaultToModel(state, event, backend_);
  }
  TextGeometry textGeometry(const WindowState& state, int n) override {
    const ItemState* item = state.item(n);
    return item ? headlessTextGeometry(*item) : TextGeometry{};
  }
  bool saveShot(const WindowState&, const std::string&) override { return false; }

 private:
  Backend& backend_;
};

class HeadlessBackend final : public Backend {
 public:
  const char* name() const override { return "headless"; }
  std::unique_ptr<BackendWindow> createWindow(const WindowState&) override {
    return std::make_unique<HeadlessWindow>(*this);
  }
  Tick ticks() override { return clock_; }
  void waitUntil(Tick deadline) override {
    if (deadline != kNoDeadline) clock_ = std::max(clock_, deadline);
  }
  void beep() override {}
  std::optional<std::u16string> clipboardText() override { return clipboard_; }
  void setClipboardText(const std::u16string& text) override { clipboard_ = text; }
  // The size of the offscreen platform's screen, so both backends place windows alike.
  Rect screenBounds() override { return {0, 0, 800, 800}; }
  void pump() override {}
  void alert(int id, const std::u16string& text, bool) override {
    std::fprintf(stderr, "Mosa alert %d: %s\n", id, toUtf8(text).c_str());
  }

 private:
  Tick clock_ = 0;
  std::optional<std::u16string> clipboard_;
};

}  // namespace

std::unique_ptr<Backend> makeHeadlessBackend() {
  return std::make_unique<HeadlessBackend>();
}

}  // namespace toolkit::detail
