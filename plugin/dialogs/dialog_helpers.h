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
// bottom-right corner.
void Mac_MoveButtons(toolkit::DialogWindow* dialog, int oldWidth, int oldHeight, int newWidth,
                     int newHeight);

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

// A zero-terminated UTF-16 row as the toolkit's string type.
std::u16string Mac_UniToU16(const UniChar* s);
