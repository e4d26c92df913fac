// What the modal dialogs share: making a dialog from its template, the buttons, the placement, the
// simple key filter and the item-hit rules.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "model/results.h"
#include "model/switches.h"
#include "toolkit/dialog.h"

// The switches record of the dialog call in progress, consulted by the button set-up, the filters
// and the icon item; null between calls.
extern const ParSwitches7Tag* gActiveSwitches;

struct Zk7Call;

// Reads the four button titles that follow in the call's arguments; when all four are empty the
// first button is "OK".
void Zk7GetButtonTitlesUNI(Zk7Call& call, UniChar titles[kMosaButtons][kMosaRowUnits]);

// Sets gActiveSwitches for the lifetime of the guard and clears it on every path out.
struct Zk7ActiveSwitchesGuard {
  explicit Zk7ActiveSwitchesGuard(const ParSwitches7Tag* rec) { gActiveSwitches = rec; }
  ~Zk7ActiveSwitchesGuard() { gActiveSwitches = nullptr; }
  Zk7ActiveSwitchesGuard(const Zk7ActiveSwitchesGuard&) = delete;
  Zk7ActiveSwitchesGuard& operator=(const Zk7ActiveSwitchesGuard&) = delete;
};

// Makes the plug-in's resource file current and creates the dialog of that template id, hidden, in
// front of all windows; null when the template cannot be loaded or the window made.
std::unique_ptr<toolkit::DialogWindow> Mac_GetNewDialog(std::int16_t dlogId,
                                                        bool persistent = false);

// Buttons 1 to 4 from their titles: an empty title hides its button (the others keep their
// places); the record's default button becomes the default item unless it is hidden; a button
// whose needs-input flag is set starts disabled.
void Mac_SetDialogButtonsUNI(toolkit::DialogWindow* dialog,
                             const UniChar titles[kMosaButtons][kMosaRowUnits],
                             const ParSwitches7Tag* sw);

// Moves the dialog to the custom position when one is set; a one-time position is then used up.
void Mac_SetDialogPosition(toolkit::DialogWindow* dialog);

// Moves buttons 1 to 4 by the change of the window's size, so they keep their distance from the
// bottom-right corner. Resizable dialogs pass gLastMainDlgSize as the old size, then record the new
// one there.
void Mac_MoveButtons(toolkit::DialogWindow* dialog, int oldWidth, int oldHeight, int newWidth,
                     int newHeight);

// The size a resizable dialog's buttons were last laid out for.
struct Mac_DialogSize {
  std::int16_t height;
  std::int16_t width;
};
extern Mac_DialogSize gLastMainDlgSize;

// Lays a resizable dialog out for a new content size: sizes the window, moves the buttons from
// gLastMainDlgSize (Mac_MoveButtons), fits the dialog's own items, records the size in
// gLastMainDlgSize. The list and the big input dialog each have one.
using Mac_LayoutProc = void (*)(toolkit::DialogWindow* dialog, int width, int height);

// Resizes to a size a script asked for ("-Width", "-Height"), clamped to the screen and to the
// dialog's least size: a width that would pass the screen's right edge becomes the room left less
// 8, then at least 480 (360 when button 4 is not used); a height that would pass the bottom becomes
// the room left less 28, then at least 200. -1 keeps the current width or height. Then calls
// `layout` with the result.
void Mac_ResizeMyDialog(toolkit::DialogWindow* dialog, int width, int height, bool hasButton4,
                        Mac_LayoutProc layout);

// Return and Enter become `returnItem`, Escape kItemEscape; true when the event was one of them.
bool Mac_ReturnEscapeKeyHit(const toolkit::Event& event, std::int16_t returnItem,
                            std::int16_t* itemHit);

// The standard dialog's key filter: Return and Enter end the dialog as item 1, Escape is reported
// as kItemEscape. Returns true when it took the event.
bool Mac_SimpleModalDialogFilterF(toolkit::DialogWindow* dialog, const toolkit::Event& event,
                                  std::int16_t* itemHit);

// The item-hit rules of the dialogs that run a filter and then this: true when the dialog ends,
// with *itemHit the button (or kItemEscape). kItemReturnKey picks the default button when it is
// enabled (a disabled one ignores the key, a missing one beeps); kItemListDoubleClick does the same
// when a list row is selected; kItemEscape ends the dialog only with "-StopOnESC". Any other item
// re-applies the needs-selection rule of a dialog with a list.
bool Mac_HandleItemHit(toolkit::DialogWindow* dialog, std::int16_t* itemHit,
                       const ParSwitches7Tag* sw);

// ---- The modal loop

// A dialog's modal filter: sees each event first and answers true when it took it, with *itemHit
// set to the item it stands for (0: none). Resizes arrive here too.
using Mac_ModalFilterProc = bool (*)(toolkit::DialogWindow* dialog, const toolkit::Event& event,
                                     std::int16_t* itemHit);
// Decides whether an item ends the dialog: true ends it, with *itemHit the item that ended it.
using Mac_ItemHitProc = bool (*)(toolkit::DialogWindow* dialog, std::int16_t* itemHit,
                                 const ParSwitches7Tag* sw);
// Runs after the toolkit's default handling changed a field's text (a length limit, say).
using Mac_TextChangedProc = void (*)(toolkit::DialogWindow* dialog, int item);

struct Mac_ModalProcs {
  Mac_ModalFilterProc filter = nullptr;  // null: every event gets the default handling
  Mac_ItemHitProc itemHit = Mac_HandleItemHit;
  Mac_TextChangedProc textChanged = nullptr;  // null: nothing to check
};

// The modal loop of a shown dialog: the next event goes to the filter; what the filter does not
// take gets the toolkit's default handling (a character into the focused field, a click on a
// button becomes its item). Every item hit other than 0 then goes to the item-hit procedure, until
// it ends the dialog. Answers the item that ended it (a button 1 to 4, or kItemEscape), or 0 when
// answers drive the run and none is left: the session has recorded the stop, and the caller only
// cleans up and returns.
std::int16_t Mac_RunModalDialog(toolkit::DialogWindow* dialog, const ParSwitches7Tag* sw,
                                const Mac_ModalProcs& procs);

// A zero-terminated UTF-16 row as the toolkit's string type.
std::u16string Mac_UniToU16(const UniChar* s);
