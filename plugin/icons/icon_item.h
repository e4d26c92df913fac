// Draws the icon a dialog asked for into its icon item.
#pragma once

#include <cstdint>

#include "toolkit/dialog.h"

// `iconSelector` is the switches record's icon field (the window's reference value): no icon, the
// custom picture, or the note, caution or stop icon (by type with icon services, else by number).
void Zk7_Mac_IconUserItem(toolkit::DialogWindow* dialog, int item,
                          const std::int32_t* iconSelector);
