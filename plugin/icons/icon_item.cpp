#include "icons/icon_item.h"

#include "icons/icons.h"

void Zk7_Mac_IconUserItem(toolkit::DialogWindow* dialog, int item,
                          const std::int32_t* iconSelector) {
  if (!dialog || !iconSelector) return;
  const std::int32_t selector = *iconSelector;
  toolkit::IconKind kind = toolkit::IconKind::None;
  const toolkit::Image* picture = nullptr;
  if (selector == kIconNone) {
    kind = toolkit::IconKind::None;
  } else if (selector == kIconCustom) {
    picture = Zk7CustomIconImage();
    kind = picture ? toolkit::IconKind::Custom : toolkit::IconKind::None;
  } else if (gIconServicesAvailable) {
    kind = selector == kIconNote      ? toolkit::IconKind::Note
           : selector == kIconCaution ? toolkit::IconKind::Caution
           : selector == kIconStop    ? toolkit::IconKind::Stop
                                      : toolkit::IconKind::None;
  } else {
    kind = selector == kClassicIconNote      ? toolkit::IconKind::Note
           : selector == kClassicIconCaution ? toolkit::IconKind::Caution
           : selector == kClassicIconStop    ? toolkit::IconKind::Stop
                                             : toolkit::IconKind::None;
  }
  dialog->setIcon(item, kind, picture);
}
