// The platform services the plug-in's dialogs are written against: the tick clock, delay, beep,
// clipboard, screen bounds, alerts, and dialog windows made from numbered-item templates with a
// pulled modal loop. The same calls run on the headless backend and on the Qt backend.
//
// The modal loop is pulled: a dialog asks for the next event, runs its own filter on it and only
// then lets the toolkit apply the default handling (a typed character goes into the focused field,
// a click on a button becomes that button's item hit).
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "toolkit/image.h"

namespace toolkit {

using Tick = std::uint32_t;  // 1/60 s
constexpr Tick kNoDeadline = 0xFFFFFFFFu;

// Rectangles in pixels: item rectangles are local to the window's content, window rectangles are
// global screen coordinates of the content area.
struct Rect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
  int width() const { return right - left; }
  int height() const { return bottom - top; }
  bool operator==(const Rect&) const = default;
};

// ---- Clock, delay, beep, clipboard, screen
// -------------------------------------------------------

// Ticks since the session started. Headless: a virtual clock that moves only when something waits.
Tick tickCount();
// Blocks the calling thread for that many ticks (headless: the virtual clock jumps).
void delay(Tick ticks);
// Records {"ev":"beep"} in the trace and sounds the platform's beep.
void beep();
// The clipboard's plain text; nullopt when it holds none.
std::optional<std::u16string> clipboardText();
void setClipboardText(const std::u16string& text);
// The usable desktop of the main screen, global coordinates.
Rect screenBounds();

// A caution alert with a text (UTF-8) and an OK button, recorded as
// {"ev":"alert","id":…,"number":…}. Headless it is written to standard error; on Qt it is shown
// (and waits for a person unless answers drive the run).
void showAlert(int id, const std::string& text, long number);

// ---- Templates
// -----------------------------------------------------------------------------------

enum class ItemKind {
  Button,
  Text,
  Edit,
  Popup,
  Checkbox,
  Icon,
  List,
  TextArea,
  ScrollBar,
  Progress
};
const char* itemKindName(ItemKind kind);  // the trace's spelling: "button", "text", …

struct ItemTemplate {
  int number = 0;
  ItemKind kind = ItemKind::Text;
  Rect rect;
  std::u16string text;  // initial title or text
};

struct DialogTemplate {
  int id = 0;
  int width = 0;
  int height = 0;
  std::u16string title;
  bool resizable = false;
  std::vector<ItemTemplate> items;
};

// Reads a template written as JSON:
// {"id":24272,"width":W,"height":H,"title":"","resizable":false,
//  "items":[{"n":1,"kind":"button","rect":[l,t,r,b],"text":"OK"},…]}
// nullopt when the file is missing or malformed.
std::optional<DialogTemplate> loadTemplate(const std::string& path);
// Loads <resourcesDir>/dialogs/<id>.json.
std::optional<DialogTemplate> loadTemplate(const std::string& resourcesDir, int id);

// ---- Events
// --------------------------------------------------------------------------------------

// Character codes of the special keys, as the dialogs' filters compare them.
enum : char16_t {
  kCharHome = 1,
  kCharEnter = 3,
  kCharEnd = 4,
  kCharBackspace = 8,
  kCharTab = 9,
  kCharReturn = 13,
  kCharEscape = 27,
  kCharLeft = 28,
  kCharRight = 29,
  kCharUp = 30,
  kCharDown = 31,
  kCharPageUp = 11,
  kCharPageDown = 12,
  kCharSpace = 32,
  kCharDelete = 127,  // forward delete
};

enum Modifier : unsigned { kModShift = 1, kModCommand = 2, kModOption = 4, kModControl = 8 };

// Part of a scroll bar a click landed on: the arrows (a line), the track (a page), the thumb.
enum class ScrollPart { None, LineUp, LineDown, PageUp, PageDown, Thumb };

struct Event {
  enum class Type {
    Null,    // the deadline passed with no input
    Key,     // a key went down: character + modifiers (the close box arrives as Escape)
    KeyUp,   // that key was released (character + modifiers as when it went down)
    Click,   // on item `item`, or on the window's background (item 0): a mouse-down, or for a
             // button, check box or pop-up its hit (the mouse went up inside it)
    Scroll,  // text area `item` scrolled by itself (wheel, drag, caret brought into view)
    Resize   // the person asks for a new content size `width` x `height`
  };
  Type type = Type::Null;
  char16_t character = 0;
  unsigned modifiers = 0;  // Key, KeyUp, Click (a scroll bar's Option travels here)
  int item = 0;
  int menuItem = 0;  // pop-up: the chosen entry (from 1)
  int row = -1;      // list: the clicked row (from 0; -1 below the last row)
  bool doubleClick = false;
  int caret = -1;  // edit field, text area: where the click put the caret (UTF-16 units)
  ScrollPart part = ScrollPart::None;  // scroll bar
  int value = 0;                       // scroll bar thumb: the value it was dragged to
  int width = 0;
  int height = 0;
};

// What the default handling did with an event.
struct Outcome {
  int itemHit = 0;           // the item the event is reported as (0: none)
  bool textChanged = false;  // the text of `itemHit` (or the focused field) changed
  int changedItem = 0;       // the field whose text changed
  int scrolledItem = 0;      // a text area that scrolled to keep the caret in view
};

// A dialog waited for a person while answers drive the run and none is left. The host ends the run
// with exit status 3; code that must not throw catches it (the session remembers the stop).
class NoAnswerLeft : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// ---- Dialog windows
// ------------------------------------------------------------------------------

enum class IconKind { None, Note, Caution, Stop, Custom };

class DialogWindow {
 public:
  // Makes the window from a template, hidden, in front of all windows, at the default place
  // (centred across, a third of the way down the screen). `persistent`: a window that stays open
  // between calls (its state is traced after each call that changes it, see commit()).
  // nullptr when the backend cannot make it.
  static std::unique_ptr<DialogWindow> create(const DialogTemplate& tmpl, bool persistent = false);
  virtual ~DialogWindow() = default;  // closes the window (traced as "close" when it was shown)

  DialogWindow(const DialogWindow&) = delete;
  DialogWindow& operator=(const DialogWindow&) = delete;

  virtual int id() const = 0;

  // Window.
  virtual void setTitle(const std::u16string& title) = 0;
  virtual std::u16string title() const = 0;
  virtual Rect windowRect() const = 0;  // global, content area
  virtual void moveTo(int left, int top) = 0;
  virtual void resize(int width, int height) = 0;
  virtual void setMinimumSize(int width, int height) = 0;
  virtual void show() = 0;  // shows, brings to front, takes the keyboard; traced as "open" once
  virtual void hide() = 0;
  virtual bool visible() const = 0;
  virtual void bringToFront() = 0;  // done when the window is next drawn
  // For persistent windows: traces the state if it changed since the last trace, and draws it, at
  // most once a frame (1/60 s): a change within a frame of the last drawing is drawn when that
  // frame ends, while the host runs the toolkit's events. So the state is always current and the
  // window always ends up showing it, however often it changes.
  virtual void commit() = 0;

  // Items, numbered as the template numbers them. Operations on a missing item do nothing; an
  // operation on an item of the wrong kind is a programming error (asserted in debug builds).
  virtual bool hasItem(int n) const = 0;
  virtual ItemKind itemKind(int n) const = 0;
  virtual void setItemVisible(int n, bool visible) = 0;
  virtual bool itemVisible(int n) const = 0;
  virtual void setItemEnabled(int n, bool enabled) = 0;
  virtual bool itemEnabled(int n) const = 0;
  virtual void setItemText(int n, const std::u16string& text) = 0;
  virtual std::u16string itemText(int n) const = 0;
  virtual void setItemValue(int n, std::int32_t value) = 0;
  virtual std::int32_t itemValue(int n) const = 0;
  virtual void setItemMaximum(int n, std::int32_t maximum) = 0;
  virtual std::int32_t itemMaximum(int n) const = 0;
  virtual void setItemRect(int n, const Rect& rect) = 0;
  virtual Rect itemRect(int n) const = 0;
  virtual void setDefaultItem(int n) = 0;  // 0: no default button
  virtual int defaultItem() const = 0;
  virtual void setFocus(int n) = 0;
  virtual int focus() const = 0;
  // The name a screen reader announces for an edit field or pop-up: the text of its label.
  virtual void setItemLabel(int n, const std::u16string& label) = 0;

  // Edit fields and the text area: selection in UTF-16 units, [start, end).
  virtual void setMasked(int n, bool masked) = 0;  // password echo
  virtual void setSelection(int n, int start, int end) = 0;
  virtual std::pair<int, int> selection(int n) const = 0;
  // Replaces the selection by `text` and puts the caret after it.
  virtual void replaceSelection(int n, const std::u16string& text) = 0;

  // Pop-up menus: entries from 1; an entry "-" is a separator line. Value 0: nothing chosen.
  virtual void setMenu(int n, const std::vector<std::u16string>& entries) = 0;
  virtual std::vector<std::u16string> menu(int n) const = 0;

  // Lists: rows from 0, one selected row at most (-1: none). Rows are read one at a time, so a
  // list of any size costs nothing to look at.
  virtual void setRows(int n, std::vector<std::u16string> rows) = 0;  // moved in when it can be
  virtual int rowCount(int n) const = 0;
  virtual std::u16string rowText(int n, int row) const = 0;  // empty when out of range
  virtual void selectRow(int n, int row) = 0;                // also scrolls it into view
  virtual int selectedRow(int n) const = 0;

  // Text area geometry in pixels, measured by the backend's own font: the wrapped text's height,
  // the visible height, one line, how far it is scrolled. scrollTextTo keeps the position within
  // 0 .. max(0, content - view). A person's scrolling arrives as a Scroll event.
  virtual int textContentHeight(int n) const = 0;
  virtual int textViewHeight(int n) const = 0;
  virtual int textLineHeight(int n) const = 0;
  virtual int textScroll(int n) const = 0;
  virtual void scrollTextTo(int n, int pixels) = 0;
  virtual void scrollSelectionIntoView(int n) = 0;

  // Scroll bars: value and maximum as above, plus the page (thumb) size. The dialog owns the
  // value: a click on an arrow or the track only reports its part; the default handling moves
  // the value by 1 or a page, and a thumb drag to the event's value.
  virtual void setPageSize(int n, int page) = 0;

  // Progress indicators.
  virtual void setIndeterminate(int n, bool indeterminate) = 0;
  virtual bool indeterminate(int n) const = 0;
  virtual void animateStep(int n) = 0;

  // Icon items. `custom` is copied; it is drawn scaled into the item's rectangle.
  virtual void setIcon(int n, IconKind icon, const Image* custom = nullptr) = 0;
  virtual IconKind icon(int n) const = 0;

  // The pulled modal loop. nextEvent waits for the next event; with a deadline (a tick count) it
  // returns a Null event once the clock passes it. Throws NoAnswerLeft (see above), also when an
  // answer produced no event (it names the answer). Before it returns, what a person changed in
  // the focused field and every text area's scroll are read back. A window that stays open
  // between calls drops the keys typed while nobody asks for events.
  virtual Event nextEvent(Tick deadline = kNoDeadline) = 0;
  // The default handling of an event the dialog's filter let through.
  virtual Outcome handleDefault(const Event& event) = 0;

 protected:
  DialogWindow() = default;
};

}  // namespace toolkit
