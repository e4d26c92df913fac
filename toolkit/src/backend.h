// The interface a toolkit backend implements (headless here, Qt in toolkit/qt/).
//
// The core keeps the model of every window (WindowState: the title, rectangle and every item's
// state) and writes the trace from it, so both backends trace the same thing. Each piece of state
// has one owner: what the dialog sets (titles, values, rows, rectangles) is the model's, and a
// backend window shows it (update, only the items whose change counter moved); what a person
// edits (text, caret, selection, scroll) is the widget's, and the backend reads it back into the
// model (readBack) before the dialog sees the next event. A backend window produces the events of
// the pulled modal loop (waitEvent for a person, inject for a scripted answer, strictly through its
// widgets), applies the default handling of an event (applyDefault) and measures text with its
// own font (textGeometry). The headless backend is the null implementation: the model is the
// window.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/dialog.h"

namespace toolkit::detail {

class Backend;

// One change of a text area's text, as undo and redo replay it: at `at`, `removed` gave way to
// `inserted`.
struct TextEdit {
  int at = 0;
  std::u16string removed;
  std::u16string inserted;
};

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
  std::vector<TextEdit> undo, redo;    // text area: the edits since its text was set, newest last
  std::uint64_t textSet = 0;           // counts the times the dialog set the whole text
  std::vector<std::u16string> menu;    // pop-up entries
  std::vector<std::u16string> rows;    // list rows
  std::uint64_t rowsSet = 0;           // list: counts the times the rows were set
  int selectedRow = -1;                // list
  std::uint64_t changes = 0;           // bumped by every change the dialog (or a default) makes
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
  enum class Kind {
    Click,
    Key,
    Type,
    Focus,
    Choose,
    Row,
    DoubleClickRow,
    Paste,
    Resize,
    Wait,
    Drag
  };
  Kind kind = Kind::Click;
  int item = 0;                        // Click, Focus, Choose, Drag: the item
  ScrollPart part = ScrollPart::None;  // Click on a scroll bar: the part (None: the track below)
  int value = 0;                       // Drag: the scroll bar's value to drag the thumb to
  int menuItem = 0;                    // Choose: entry from 1
  int row = 0;                         // Row, DoubleClickRow: from 1, as written
  char16_t character = 0;              // Key
  unsigned modifiers = 0;              // Key
  std::u16string text;                 // Type, Paste
  int width = 0, height = 0;           // Resize
  Tick ticks = 0;                      // Wait
  std::string source;                  // the answer as written, for messages
};

// Parses one answer of the grammar; throws std::invalid_argument naming the answer.
Answer parseAnswer(const std::string& line);
// The events a person's hands would produce on the model for an answer (the headless backend's
// input): a key gives its Key and KeyUp; a click on a hidden item lands on what lies under it.
// Type and Paste are expanded by the core before this is called; Focus and Wait are the core's.
std::vector<Event> eventsForAnswer(const WindowState& window, const Answer& answer);
// The item a click at a point of the window lands on: the last visible item whose rectangle holds
// it (later items lie on top), 0 for the background.
int itemAt(const WindowState& window, int x, int y);

// Text measured by a backend, in pixels: the wrapped text's height, the visible height, one line,
// and the caret's top and bottom (the end of the selection) in the text's own coordinates.
struct TextGeometry {
  int content = 0;
  int view = 0;
  int line = 0;
  int caretTop = 0;
  int caretBottom = 0;
};
// The default handling on the model alone (headless). A backend may use it too and then show the
// model, or apply the event to its native widgets and read the result back into the model.
Outcome applyDefaultToModel(WindowState& window, const Event& event, Backend& backend);
// The default handling of a key in a focused field on the model: what the key means for the text.
Outcome keyInField(WindowState& window, ItemState& item, const Event& event, Backend& backend);
// Replaces the selection by `text` and puts the caret after it; a text area can undo it.
void replaceSelectionInModel(ItemState& item, const std::u16string& text);
// Whether a key only moves the caret or the selection (no text changes).
bool isCaretKey(const Event& event);

// Deterministic text metrics of the headless backend.
constexpr int kLineHeight = 16;
constexpr int kCharWidth = 7;
constexpr int kTextInset = 4;  // the text area's margin on each side
int wrappedLineCount(const std::u16string& text, int widthPixels);
TextGeometry headlessTextGeometry(const ItemState& item);
// Where a line or page move puts the caret in the headless layout (lines: ±1 or ±lines a page).
int headlessCaretMove(const ItemState& item, int caret, int lines);

// The real tick clock (steady, counted from the first use in the process). The Qt backend's ticks()
// use it, so the clock does not jump when Qt is loaded after time was already read.
Tick realTicks();

class BackendWindow {
 public:
  virtual ~BackendWindow() = default;
  // Bring the screen in line with the model (called after changes, before waiting, on show): the
  // window's state, and the content of the items whose `changes` moved since the last update.
  virtual void update(const WindowState& state) = 0;
  // Reads what a person changed into the model: the focused field's text and selection, every
  // text area's scroll. Does not count as a change of the dialog's (`changes` stays).
  virtual void readBack(WindowState& state) = 0;
  // Wait for a person's next event until the deadline (kNoDeadline: none); Null when it passes.
  virtual Event waitEvent(WindowState& state, Tick deadline) = 0;
  // Performs a scripted answer as real input and returns the events it produced, in order; none
  // when the input reached nothing (the core then stops the run naming the answer). Key, Click,
  // Choose, Row, DoubleClickRow, Drag and Resize reach here (Type and Paste arrive as Keys).
  virtual std::vector<Event> inject(WindowState& state, const Answer& answer) = 0;
  // Default handling of an event; changes go into `state`.
  virtual Outcome applyDefault(WindowState& state, const Event& event) = 0;
  // Text geometry of an edit field or text area, with the backend's font.
  virtual TextGeometry textGeometry(const WindowState& state, int n) = 0;
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
