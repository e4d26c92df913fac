// Dialog windows: the model the plug-in's calls change, mirrored by the backend, traced by the
// core, and the pulled modal loop that takes events from a person or from the answers.
#include <algorithm>
#include <cassert>
#include <chrono>
#include <initializer_list>

#include "session_state.h"

namespace toolkit::detail {
namespace {

class Window final : public DialogWindow {
 public:
  Window(WindowState state, std::unique_ptr<BackendWindow> native)
      : state_(std::move(state)), native_(std::move(native)) {}

  ~Window() override {
    try {
      if (opened_) {
        flush();
        traceWindow("close", state_, native_.get());
      }
    } catch (...) {
      // Closing never fails: the window goes whatever the trace could record.
    }
  }

  int id() const override { return state_.id; }

  void setTitle(const std::u16string& title) override { state_.title = title, touch(); }
  std::u16string title() const override { return state_.title; }
  Rect windowRect() const override { return state_.frame; }
  void moveTo(int left, int top) override {
    state_.frame = {left, top, left + state_.frame.width(), top + state_.frame.height()};
    touch();
  }
  void resize(int width, int height) override {
    state_.frame.right = state_.frame.left + std::max(0, width);
    state_.frame.bottom = state_.frame.top + std::max(0, height);
    touch();
  }
  void setMinimumSize(int width, int height) override {
    state_.minWidth = width, state_.minHeight = height;
    touch();
  }
  void show() override {
    state_.visible = true;
    ++state_.fronted;
    if (!state_.item(state_.focus)) focusFirstField();
    touch();
    flush();
    if (!opened_) {
      opened_ = true;
      traceWindow("open", state_, native_.get());
      traced_ = state_.generation;
    }
  }
  void hide() override { state_.visible = false, touch(); }
  bool visible() const override { return state_.visible; }
  void bringToFront() override {
    ++state_.fronted;
    touch();
  }
  void commit() override {
    if (opened_ && state_.generation != traced_) {
      traceWindow("state", state_, native_.get());
      traced_ = state_.generation;
    }
    drawWithinFrame();
  }

  bool hasItem(int n) const override { return state_.item(n) != nullptr; }
  ItemKind itemKind(int n) const override {
    const ItemState* i = state_.item(n);
    return i ? i->kind : ItemKind::Text;
  }
  void setItemVisible(int n, bool visible) override {
    change(n, [&](ItemState& i) { i.visible = visible; });
  }
  bool itemVisible(int n) const override { return read(n, &ItemState::visible, false); }
  void setItemEnabled(int n, bool enabled) override {
    change(n, [&](ItemState& i) { i.enabled = enabled; });
  }
  bool itemEnabled(int n) const override { return read(n, &ItemState::enabled, false); }
  void setItemText(int n, const std::u16string& text) override {
    change(n, [&](ItemState& i) {
      i.text = text;
      i.selStart = i.selEnd = static_cast<int>(text.size());
      i.undo.clear();
      i.redo.clear();
      ++i.textSet;
    });
  }
  std::u16string itemText(int n) const override {
    return read(n, &ItemState::text, std::u16string());
  }
  void setItemValue(int n, std::int32_t value) override {
    change(n, [&](ItemState& i) { i.value = value; });
  }
  std::int32_t itemValue(int n) const override { return read(n, &ItemState::value, 0); }
  void setItemMaximum(int n, std::int32_t maximum) override {
    change(n, [&](ItemState& i) { i.max = maximum; });
  }
  std::int32_t itemMaximum(int n) const override { return read(n, &ItemState::max, 0); }
  void setItemRect(int n, const Rect& rect) override {
    change(n, [&](ItemState& i) { i.rect = rect; });
  }
  Rect itemRect(int n) const override { return read(n, &ItemState::rect, Rect{}); }
  void setDefaultItem(int n) override { state_.defaultItem = n, touch(); }
  int defaultItem() const override { return state_.defaultItem; }
  void setFocus(int n) override { state_.focus = n, touch(); }
  int focus() const override { return state_.focus; }
  void setItemLabel(int n, const std::u16string& label) override {
    change(n, {ItemKind::Edit, ItemKind::Popup}, [&](ItemState& i) { i.label = label; });
  }

  void setMasked(int n, bool masked) override {
    change(n, {ItemKind::Edit}, [&](ItemState& i) { i.masked = masked; });
  }
  void setSelection(int n, int start, int end) override {
    change(n, kTextKinds, [&](ItemState& i) {
      const int length = static_cast<int>(i.text.size());
      i.selStart = std::clamp(start, 0, length);
      i.selEnd = std::clamp(end, i.selStart, length);
    });
  }
  std::pair<int, int> selection(int n) const override {
    const ItemState* i = state_.item(n);
    return i ? std::pair{i->selStart, i->selEnd} : std::pair{0, 0};
  }
  void replaceSelection(int n, const std::u16string& text) override {
    change(n, kTextKinds, [&](ItemState& i) { replaceSelectionInModel(i, text); });
  }

  void setMenu(int n, const std::vector<std::u16string>& entries) override {
    change(n, {ItemKind::Popup}, [&](ItemState& i) { i.menu = entries; });
  }
  std::vector<std::u16string> menu(int n) const override { return read(n, &ItemState::menu, {}); }

  void setRows(int n, std::vector<std::u16string> rows) override {
    change(n, {ItemKind::List}, [&](ItemState& i) {
      i.rows = std::move(rows);
      ++i.rowsSet;
      if (i.selectedRow >= static_cast<int>(i.rows.size())) i.selectedRow = -1;
    });
  }
  int rowCount(int n) const override {
    const ItemState* i = state_.item(n);
    return i ? static_cast<int>(i->rows.size()) : 0;
  }
  std::u16string rowText(int n, int row) const override {
    const ItemState* i = state_.item(n);
    if (!i || row < 0 || row >= static_cast<int>(i->rows.size())) return {};
    return i->rows[static_cast<std::size_t>(row)];
  }
  void selectRow(int n, int row) override {
    change(n, {ItemKind::List}, [&](ItemState& i) {
      i.selectedRow = row >= 0 && row < static_cast<int>(i.rows.size()) ? row : -1;
    });
  }
  int selectedRow(int n) const override { return read(n, &ItemState::selectedRow, -1); }

  int textContentHeight(int n) const override { return geometry(n).content; }
  int textViewHeight(int n) const override { return geometry(n).view; }
  int textLineHeight(int n) const override { return geometry(n).line; }
  int textScroll(int n) const override { return read(n, &ItemState::scroll, 0); }
  void scrollTextTo(int n, int pixels) override {
    const TextGeometry g = geometry(n);
    change(n, {ItemKind::TextArea}, [&](ItemState& i) {
      i.scroll = std::clamp(pixels, 0, std::max(0, g.content - g.view));
    });
  }
  void scrollSelectionIntoView(int n) override {
    const ItemState* i = state_.item(n);
    if (!i) return;
    const TextGeometry g = geometry(n);
    int scroll = i->scroll;
    if (g.caretTop < scroll) scroll = g.caretTop;
    if (g.caretBottom > scroll + g.view) scroll = g.caretBottom - g.view;
    scrollTextTo(n, scroll);
  }

  void setPageSize(int n, int page) override {
    change(n, {ItemKind::ScrollBar}, [&](ItemState& i) { i.page = page; });
  }

  void setIndeterminate(int n, bool indeterminate) override {
    change(n, {ItemKind::Progress}, [&](ItemState& i) { i.indeterminate = indeterminate; });
  }
  bool indeterminate(int n) const override { return read(n, &ItemState::indeterminate, false); }
  void animateStep(int n) override {
    change(n, {ItemKind::Progress}, [&](ItemState& i) {
      if (i.indeterminate) ++i.animation;
    });
  }

  void setIcon(int n, IconKind icon, const Image* custom) override {
    change(n, {ItemKind::Icon}, [&](ItemState& i) {
      i.icon = icon;
      i.image = custom ? std::make_shared<const Image>(*custom) : nullptr;
    });
  }
  IconKind icon(int n) const override { return read(n, &ItemState::icon, IconKind::None); }

  Event nextEvent(Tick deadline) override {
    flush();
    Session& s = session();
    if (opened_ && !readyTold_) {
      readyTold_ = true;
      if (s.ready) s.ready();
    }
    if (s.stopped) throw NoAnswerLeft(s.stopMessage);
    Event event = waitForEvent(deadline);
    // What a person did in the widgets belongs to them: the model hears of it before the dialog.
    native_->readBack(state_);
    return event;
  }

  Outcome handleDefault(const Event& event) override {
    const std::vector<int> before = textScrolls();
    Outcome out = native_->applyDefault(state_, event);
    touch();
    // A text view keeps the caret in sight as keys move it (Qt's widget has done so already).
    const ItemState* focused = state_.item(state_.focus);
    if (event.type == Event::Type::Key && focused && focused->kind == ItemKind::TextArea)
      scrollSelectionIntoView(focused->n);
    const std::vector<int> after = textScrolls();
    for (std::size_t k = 0; k < after.size(); ++k)
      if (after[k] != before[k]) out.scrolledItem = textAreas_[k];
    return out;
  }

 private:
  static constexpr std::initializer_list<ItemKind> kTextKinds = {ItemKind::Edit,
                                                                 ItemKind::TextArea};

  Event waitForEvent(Tick deadline) {
    Session& s = session();
    Backend& b = backend();
    auto passed = [&] { return deadline != kNoDeadline && b.ticks() >= deadline; };
    for (;;) {
      if (passed()) return {};
      if (!pending_.empty()) {
        Event e = pending_.front();
        pending_.pop_front();
        return e;
      }
      if (!s.expanded.empty()) {
        Answer a = s.expanded.front();
        s.expanded.pop_front();
        inject(a);
        continue;
      }
      if (s.waitLeft > 0) {
        const Tick target = b.ticks() + s.waitLeft;
        b.waitUntil(deadline != kNoDeadline ? std::min(target, deadline) : target);
        const Tick now = b.ticks();
        s.waitLeft = now >= target ? 0 : target - now;
        continue;
      }
      if (!s.answers.empty()) {
        traceWindow("state", state_, native_.get());
        traced_ = state_.generation;
        Answer a = s.answers.front();
        s.answers.pop_front();
        switch (a.kind) {
          case Answer::Kind::Wait:
            s.waitLeft = a.ticks;
            continue;
          case Answer::Kind::Type:
            for (char16_t c : a.text) {
              Answer key;
              key.kind = Answer::Kind::Key;
              key.character = c;
              key.source = a.source;
              s.expanded.push_back(key);
            }
            continue;
          case Answer::Kind::Paste: {
            b.setClipboardText(a.text);
            Answer key;
            key.kind = Answer::Kind::Key;
            key.character = u'v';
            key.modifiers = kModCommand;
            key.source = a.source;
            s.expanded.push_back(key);
            continue;
          }
          case Answer::Kind::Focus:
            focusAnswer(a);
            continue;
          default:
            inject(a);
            continue;
        }
      }
      if (scripted()) {
        if (deadline != kNoDeadline) {
          b.waitUntil(deadline);
          return {};
        }
        if (s.displayLost && !s.answersGiven) {
          throw stopRun("dialog " + std::to_string(state_.id) +
                        " waits for a person, and the display cannot be used");
        }
        throw stopRun("dialog " + std::to_string(state_.id) +
                      " waits for an answer and none is left");
      }
      return native_->waitEvent(state_, deadline);
    }
  }

  // Injection is strict: an answer that produced no event stops the run, naming it.
  void inject(const Answer& a) {
    std::vector<Event> events = native_->inject(state_, a);
    if (events.empty()) {
      throw stopRun("the answer \"" + a.source + "\" reached nothing in dialog " +
                    std::to_string(state_.id));
    }
    pending_.insert(pending_.end(), events.begin(), events.end());
  }

  // "focus N" only moves the focus, as a person's Tab would; it is no click and no event.
  void focusAnswer(const Answer& a) {
    const ItemState* item = state_.item(a.item);
    const bool takes = item && item->visible && item->enabled &&
                       (item->kind == ItemKind::Edit || item->kind == ItemKind::TextArea ||
                        item->kind == ItemKind::Button);
    if (!takes) {
      throw stopRun("the answer \"" + a.source +
                    "\" names no item that takes the focus in dialog " + std::to_string(state_.id));
    }
    state_.focus = a.item;
    touch();
    flush();
  }

  std::vector<int> textScrolls() {
    if (textAreas_.empty() && !textAreasKnown_) {
      textAreasKnown_ = true;
      for (const ItemState& i : state_.items)
        if (i.kind == ItemKind::TextArea) textAreas_.push_back(i.n);
    }
    std::vector<int> scrolls;
    for (int n : textAreas_) scrolls.push_back(state_.item(n)->scroll);
    return scrolls;
  }

  TextGeometry geometry(int n) const {
    const ItemState* i = state_.item(n);
    if (!i) return {};
    assert(i->kind == ItemKind::Edit || i->kind == ItemKind::TextArea);
    const_cast<Window*>(this)->flush();
    return native_->textGeometry(state_, n);
  }

  void touch() {
    ++state_.generation;
    dirty_ = true;
  }
  // A window open between calls may change a million times a second; it is drawn at most once a
  // frame, and always with its last state: a change within a frame of the last drawing is drawn
  // when that frame ends. While that drawing waits, further changes need not read the clock.
  void drawWithinFrame() {
    if (!dirty_ || drawPending_) return;
    const auto now = std::chrono::steady_clock::now();
    if (now >= nextFrame_) {
      flush();
      nextFrame_ = now + kFrame;
      return;
    }
    drawPending_ = true;
    native_->drawLater(std::chrono::ceil<std::chrono::milliseconds>(nextFrame_ - now), [this] {
      drawPending_ = false;
      flush();
      nextFrame_ = std::chrono::steady_clock::now() + kFrame;
    });
  }
  void flush() {
    if (dirty_) {
      dirty_ = false;
      native_->update(state_);
    }
  }
  template <class F>
  void change(int n, F&& f) {
    if (ItemState* i = state_.item(n)) {
      f(*i);
      ++i->changes;
      touch();
    }
  }
  // An operation meant for some kinds of item only; any other kind is the caller's mistake.
  template <class F>
  void change(int n, std::initializer_list<ItemKind> kinds, F&& f) {
    if (const ItemState* i = state_.item(n)) {
      assert(std::find(kinds.begin(), kinds.end(), i->kind) != kinds.end());
      (void)i;
      (void)kinds;
    }
    change(n, std::forward<F>(f));
  }
  template <class T>
  T read(int n, T ItemState::*field, T fallback) const {
    const ItemState* i = state_.item(n);
    return i ? i->*field : fallback;
  }
  void focusFirstField() {
    for (ItemState& i : state_.items) {
      if ((i.kind == ItemKind::Edit || i.kind == ItemKind::TextArea) && i.visible && i.enabled) {
        state_.focus = i.n;
        if (i.kind == ItemKind::Edit) i.selStart = 0, i.selEnd = static_cast<int>(i.text.size());
        ++i.changes;
        return;
      }
    }
  }

  WindowState state_;
  std::unique_ptr<BackendWindow> native_;
  bool opened_ = false;
  bool readyTold_ = false;  // the ready observer heard of this window
  bool dirty_ = true;
  static constexpr std::chrono::microseconds kFrame{16667};  // 1/60 s
  std::chrono::steady_clock::time_point nextFrame_;          // a persistent window's next drawing
  bool drawPending_ = false;
  std::uint64_t traced_ = 0;
  std::deque<Event> pending_;   // events an answer produced, not yet returned
  std::vector<int> textAreas_;  // the text areas, whose scrolling the dialog hears of
  bool textAreasKnown_ = false;
};

}  // namespace
}  // namespace toolkit::detail

namespace toolkit {

std::unique_ptr<DialogWindow> DialogWindow::create(const DialogTemplate& tmpl, bool persistent) {
  detail::Backend& b = detail::backend();
  detail::WindowState state;
  state.id = tmpl.id;
  state.title = tmpl.title;
  state.resizable = tmpl.resizable;
  state.persistent = persistent;
  state.minWidth = state.minHeight = 0;
  const Rect screen = b.screenBounds();
  const int left = screen.left + (screen.width() - tmpl.width) / 2;
  const int top = screen.top + std::max(0, (screen.height() - tmpl.height) / 3);
  state.frame = {left, top, left + tmpl.width, top + tmpl.height};
  for (const ItemTemplate& t : tmpl.items) {
    detail::ItemState item;
    item.n = t.number;
    item.kind = t.kind;
    item.rect = t.rect;
    item.text = t.text;
    item.selStart = item.selEnd = static_cast<int>(t.text.size());
    state.items.push_back(std::move(item));
  }
  auto native = b.createWindow(state);
  if (!native) return nullptr;
  return std::make_unique<detail::Window>(std::move(state), std::move(native));
}

}  // namespace toolkit
