// The icon a dialog shows in its icon item: nothing, a standard alert icon or the custom picture.
#include "icons/icons.h"

void Zk7_Mac_IconUserItem(toolkit::DialogWindow& dialog, int item, std::int32_t selector) {
  using toolkit::IconKind;
  IconKind kind = IconKind::None;
  if (selector == kIconCustom) {
    // No stored (or no drawable) picture shows no icon.
    if (const toolkit::Image* custom = Zk7CustomIconImage()) {
      dialog.setIcon(item, IconKind::Custom, custom);
      return;
    }
  } else if (selector == kIconNone) {
    kind = IconKind::None;
  } else if (gIconServicesAvailable) {
    if (selector == kIconNote) kind = IconKind::Note;
    if (selector == kIconCaution) kind = IconKind::Caution;
    if (selector == kIconStop) kind = IconKind::Stop;
  } else {
    if (selector == kClassicIconNote) kind = IconKind::Note;
    if (selector == kClassicIconCaution) kind = IconKind::Caution;
    if (selector == kClassicIconStop) kind = IconKind::Stop;
  }
  dialog.setIcon(item, kind);
}
