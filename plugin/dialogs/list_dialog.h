// The list dialog's pieces: building the list from a "|"-separated text, its key and mouse
// filter, type-select's comparison and the layout for a new window size.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "fmx/FMWrapper.h"
#include "toolkit/dialog.h"
#include "util/hosttext.h"

constexpr int kListItem = 5;                    // the list, its scroll bar in its right 16 pixels
constexpr std::uint32_t kListItemUnits = 1000;  // longer items are cut
constexpr std::uint32_t kListTotalUnits = 32767;

// The open list dialog (its item 5 is the list); null when none is open.
extern toolkit::DialogWindow* gAList;
// The row chosen in the last list dialog, from 1; 0 when none was selected. Kept between calls.
extern std::int16_t gCellHit;

// Splits `listText` at "|" into `rows` (carriage returns shown as "_", items cut to 1000 units) and
// empties it. `*lastRow` is the last row's index, `*initialRow` the last row equal to the
// pre-selection (-1: none). Answers 0, or -92 when the items hold more than 32,767 units in all
// (or the rows would outnumber a 16-bit row index).
std::int16_t Zk7SetUpList(std::vector<std::u16string>& rows, std::int16_t* lastRow,
                          std::int16_t* initialRow, fmx::TextAutoPtr& listText,
                          bool removeEmptyLineAtEnd);

// The list dialog's filter: clicks in the list select (a double click is kItemListDoubleClick),
// the arrows move the selection, Return and Enter are kItemReturnKey, Escape kItemEscape, a
// printable key selects the next row starting with it, the grow box resizes within the limits.
bool Mac_ListFilter(toolkit::DialogWindow* dialog, const toolkit::Event& event,
                    std::int16_t* itemHit);

// Type-select's comparison: 0 when the first units match ignoring case, 1 otherwise (also when
// either is empty).
int Mac_Cmp1stChar(const UniChar* cellData, const UniChar* searchData, std::uint32_t cellLen,
                   std::uint32_t searchLen);

// Lays the list dialog out for a window of `width` by `height`: the buttons keep their distance
// from the bottom-right corner, the list grows with the window.
void Mac_DoResizeListDialog(toolkit::DialogWindow* dialog, int width, int height);

// Disposes of the hidden dialog a failed list build left behind; called at shut-down.
void Zk7DisposeLeftListDialog();
