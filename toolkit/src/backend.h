// The interface a toolkit backend implements (headless here, Qt in toolkit/qt/).
//
// The core owns the model of every window (WindowState: the title, rectangle and every item's
// state); the plug-in's calls change the model and the core writes the trace from it, so both
// backends trace the same thing. A backend window mirrors the model on screen (update), produces
// the events of the pulled modal loop (waitEvent for a person, inject for a scripted answer) and
// applies the default handling of an event (applyDefault), writing any change back into the model.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/dialog.h"

namespace toolkit::detail {

class Backend;

struct ItemState {
  int n = 0;
  ItemKind kind = ItemKind::Text;
  Rect rect;
  bool visible = true;
  bool enabled = true;
  std::u16string text;
  std::int32_t value = 0;
  std::int32_t max = 0;
  int page = 0;                        // scroll bar thumb size
  bool masked = false;                 // edit field shows bullets
  int selStart = 0, selEnd = 0;        // edit field and text area selection
  int scroll = 0;                      // text area and list: scrolled distance in pixels
  std::vector<std::u16string> menu;    // pop-up entries
  std::vector<std::u16string> rows;    // list rows
  int selectedRow = -1;                // list
  bool indeterminate = false;          // progress
  int animation = 0;                   // progress: steps animated while indeterminate
  IconKind icon = IconKind::None;      // icon item
  std::shared_ptr<const Image> image;  // icon item: the custom picture
};

struct WindowState {
  int id = 0;
  std::u16string title;
  Rect frame;  // global content rectangle
  int minWidth = 0, minHeight = 0;
  bool resizable = false;
  bool persistent = false;
  bool visible = false;
  std::uint64_t fronted = 0;  // counts the requests to bring the window to the front
  int defaultItem = 0;
  int focus = 0;
  std::vector<ItemState> items;  // in template order
  std::uint64_t generation = 0;  // bumped by every change the core makes

  ItemState* item(int n);
  const ItemState* item(int n) const;
};

// One scripted user action (an answer), already parsed.
struct Answer {
  enum class Kind { Click, Key, Type, Focus, Choose, Row, DoubleClickRow, Paste, Resize, Wait };
  Kind kind = Kind::Click;
  int item = 0;               // Click, Focus, Choose: the item
  int menuItem = 0;           // Choose: entry from 1
  int row = 0;                // Row, DoubleClickRow: from 1, as written
  char16_t character = 0;     // Key
  unsigned modifiers = 0;     // Key
  std::u16string text;        // Type, Paste
  int width = 0, height = 0;  // Resize
  Tick ticks = 0;             // Wait
  std::string source;         // the answer as written, for messages
};

// Parses one answer of the grammar; throws std::invalid_argument naming the answer.
Answer parseAnswer(const std::string& line);
// Turns an answer into the event a person's hands would produce on the model (headless, and the
// fallback of any backend). Type and Paste are expanded by the core before this is called; Wait is
// the core's.
Event eventForAnswer(const WindowState& window, const Answer& answer);
// The default handling on the model alone (headless). A backend may use it too and then mirror
// the model, or apply the event to its native widgets and write the result back into the model.
Outcome applyDefaultToModel(WindowState& window, const Event& event, Backend& backend);

// Deterministic text metrics of the headless backend, also a fallback for others.
constexpr int kLineHeight = 16;
constexpr int kCharWidth = 7;
int wrappedLineCount(const std::u16string& text, int widthPixels);

// The real tick clock (steady, counted from the first use in the process). The Qt backend's ticks()
// use it, so the clock does not jump when Qt is loaded after time was already read.
Tick realTicks();

class BackendWindow {
 public:
  virtual ~BackendWindow() = default;
  // Bring the screen in line with the model (called after changes, before waiting, on show).
  virtual void update(const WindowState& state) = 0;
  // Wait for a person's next event until the deadline (kNoDeadline: none); Null when it passes.
  virtual Event waitEvent(WindowState& state, Tick deadline) = 0;
  // Perform a scripted answer as real input and return the event it produced. Key, Click, Focus,
  // Choose, Row, DoubleClickRow and Resize reach here (Type and Paste arrive as Keys).
  virtual Event inject(WindowState& state, const Answer& answer) = 0;
  // Default handling of an event; changes go into `state`.
  virtual Outcome applyDefault(WindowState& state, const Event& event) = 0;
  // Text area geometry (see DialogWindow); the backend knows its fonts.
  virtual int textContentHeight(const WindowState& state, int n) = 0;
  // Writes a PNG of the window as it is now; false when the backend cannot.
  virtual bool saveShot(const WindowState& state, const std::string& path) = 0;
};

class Backend {
 public:
  virtual ~Backend() = default;
  virtual const char* name() const = 0;
  virtual std::unique_ptr<BackendWindow> createWindow(const WindowState& state) = 0;
  virtual Tick ticks() = 0;
  // Blocks until the clock reaches `deadline` (Qt: keeps windows drawn meanwhile).
  virtual void waitUntil(Tick deadline) = 0;
  virtual void beep() = 0;
  virtual std::optional<std::u16string> clipboardText() = 0;
  virtual void setClipboardText(const std::u16string& text) = 0;
  virtual Rect screenBounds() = 0;
  virtual void pump() = 0;
  // Shows a caution alert; `scripted`: answers drive the run, so it must not wait for a person.
  virtual void alert(int id, const std::u16string& text, bool scripted) = 0;
  virtual void warmUp() {}
};

}  // namespace toolkit::detail

// The Qt module exports this factory (loaded with dlopen); nullptr when Qt cannot start.
extern "C" toolkit::detail::Backend* mosa_toolkit_qt_create();
