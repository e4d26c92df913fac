#include "qt_fit.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace toolkit::qt {

std::vector<std::uint64_t> fitDependsOn(const detail::WindowState& state, const Rect& screen) {
  std::vector<std::uint64_t> key;
  for (const Rect& r : {screen, state.frame}) {
    for (int v : {r.left, r.top, r.right, r.bottom}) key.push_back(static_cast<std::uint64_t>(v));
  }
  for (const detail::ItemState& item : state.items) {
    for (int v : {item.rect.left, item.rect.top, item.rect.right, item.rect.bottom})
      key.push_back(static_cast<std::uint64_t>(v));
    key.push_back(item.visible);
    const bool measured = item.kind == ItemKind::Text || item.kind == ItemKind::Button;
    key.push_back(measured ? item.changes : 0);
  }
  return key;
}

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

void fitButtons(const detail::WindowState& state, const Rect& screen, Fitted& fitted,
                const std::function<int(const detail::ItemState&)>& neededWidth) {
  if (state.resizable) return;
  std::map<int, std::vector<const detail::ItemState*>> rows;  // by the template's top
  for (const detail::ItemState& item : state.items)
    if (item.kind == ItemKind::Button && item.visible) rows[item.rect.top].push_back(&item);
  for (auto& [top, row] : rows) {
    std::sort(row.begin(), row.end(),
              [](const auto* a, const auto* b) { return a->rect.left < b->rect.left; });
    std::vector<int> own, need, gap(row.size(), 0);
    for (std::size_t k = 0; k < row.size(); ++k) {
      own.push_back(row[k]->rect.width());
      need.push_back(std::max(own[k], neededWidth(*row[k])));
      if (k > 0) gap[k] = std::max(0, row[k]->rect.left - row[k - 1]->rect.right);
    }
    if (need == own) continue;
    // The row keeps the window's right margin on its left too.
    const int width = fitted.frame.width();
    const int margin = std::max(0, width - row.back()->rect.right);
    const int gaps = std::accumulate(gap.begin(), gap.end(), 0);
    const int wanted = std::accumulate(need.begin(), need.end(), 0) + gaps + 2 * margin;
    const int widen = std::clamp(wanted - width, 0, std::max(0, screen.width() - width));
    // Share out what room there is: no button below its own width, the widest cut first.
    const int room = width + widen - 2 * margin - gaps;
    auto total = [&](int cap) {
      int sum = 0;
      for (std::size_t k = 0; k < row.size(); ++k) sum += std::max(own[k], std::min(need[k], cap));
      return sum;
    };
    int cap = *std::max_element(need.begin(), need.end());
    while (cap > 0 && total(cap) > room) --cap;
    int right = width + widen - margin;
    for (std::size_t k = row.size(); k-- > 0;) {
      Rect& rect = fitted.rects[row[k]->n];
      rect.right = right;
      rect.left = right - std::max(own[k], std::min(need[k], cap));
      right = rect.left - gap[k];
    }
    if (widen > 0) {
      // Wider about the same centre, and on the screen.
      fitted.frame.left -= widen / 2;
      fitted.frame.right += widen - widen / 2;
      const int shift =
          std::max(screen.left - fitted.frame.left, std::min(0, screen.right - fitted.frame.right));
      fitted.frame.left += shift, fitted.frame.right += shift;
    }
  }
}

}  // namespace toolkit::qt
