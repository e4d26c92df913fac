// Room for long static texts: in a window of fixed size, a text that needs more lines than its
// item holds gets them, the items below it move down and the window grows, as far as the screen
// allows; a text that still does not fit, or does not fit in a resizable window, is shown in a
// scrolling view. The model keeps the
// template's geometry; this is how the Qt window shows it so that a person can read all of it.
// Long button titles get room the same way, across.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <vector>

#include "backend.h"

namespace toolkit::qt {

struct Fitted {
  Rect frame;                 // global content rectangle
  std::map<int, Rect> rects;  // every item's rectangle, local to the content
  std::set<int> scrolled;     // text items shown in a scrolling view
};

// What a fit depends on: the screen, the window's frame, and each item's rectangle, visibility and
// (for static texts and buttons) content. The same values give the same fit.
std::vector<std::uint64_t> fitDependsOn(const detail::WindowState& state, const Rect& screen);

// `neededHeight` measures a text item's wrapped text at a width; `lineHeight` is one line of it
// (a text of one line never grows the window). `frameAllowance`: room kept for the title bar.
Fitted fitTexts(const detail::WindowState& state, const Rect& screen, int lineHeight,
                int frameAllowance,
                const std::function<int(const detail::ItemState&, int width)>& neededHeight);

// Buttons in a row grow to their titles' widths (`neededWidth`), keeping their order, spacing
// and right alignment; the window widens within the screen when the row needs it, and what still
// does not fit is shared out, each button keeping at least its own width.
void fitButtons(const detail::WindowState& state, const Rect& screen, Fitted& fitted,
                const std::function<int(const detail::ItemState&)>& neededWidth);

}  // namespace toolkit::qt
