#include "qt_fit.h"

#include <algorithm>

namespace toolkit::qt {

Fitted fitTexts(const detail::WindowState& state, const Rect& screen, int lineHeight,
                int frameAllowance,
                const std::function<int(const detail::ItemState&, int width)>& neededHeight) {
  Fitted fitted;
  fitted.frame = state.frame;
  for (const detail::ItemState& item : state.items) fitted.rects[item.n] = item.rect;
  // A resizable window keeps the size its dialog gives it (the dialog lays it out when a person
  // resizes it): a long text scrolls there.
  int room =
      state.resizable ? 0 : std::max(0, screen.height() - frameAllowance - state.frame.height());
  for (const detail::ItemState& item : state.items) {
    if (item.kind != ItemKind::Text || !item.visible || item.text.empty()) continue;
    Rect& rect = fitted.rects[item.n];
    const int need = neededHeight(item, rect.width());
    if (need <= rect.height() || need <= lineHeight + lineHeight / 2) continue;
    const int extra = need - rect.height();
    const int grow = std::min(extra, room);
    if (grow < extra) fitted.scrolled.insert(item.n);
    if (grow <= 0) continue;
    room -= grow;
    const int below = rect.bottom;
    for (auto& [n, other] : fitted.rects) {
      if (n != item.n && other.top >= below) other.top += grow, other.bottom += grow;
    }
    rect.bottom += grow;
    fitted.frame.bottom += grow;
  }
  // Keep the grown window on the screen, its title bar too.
  const int height = fitted.frame.height();
  if (fitted.frame.bottom > screen.bottom) {
    fitted.frame.top = std::max(screen.top + frameAllowance, screen.bottom - height);
    fitted.frame.bottom = fitted.frame.top + height;
  }
  return fitted;
}

}  // namespace toolkit::qt
