#include "item.h"

#include <QCoreApplication>

#include "items.h"

namespace toolkit::qt {

Press ItemAdapter::press(QWidget*, const QMouseEvent& mouse, bool doubleClick) {
  Event event = click();
  event.doubleClick = doubleClick;
  event.modifiers = (mouse.modifiers() & Qt::AltModifier) ? unsigned{kModOption} : 0u;
  return {event, false};
}

bool ItemAdapter::inject(const detail::Answer& answer, const detail::ItemState&) {
  if (answer.kind != detail::Answer::Kind::Click || answer.part != ScrollPart::None) return false;
  sendClick(outer(), outer()->rect().center());
  return true;
}

std::unique_ptr<ItemAdapter> makeAdapter(const detail::ItemState& item,
                                         const detail::WindowState& window, QWidget* parent,
                                         Post post) {
  const int n = item.n;
  switch (item.kind) {
    case ItemKind::Button:
      return makeButton(n, std::move(post), parent);
    case ItemKind::Text:
      return makeStaticText(n, std::move(post), parent);
    case ItemKind::Edit:
      return makeEdit(n, std::move(post), parent);
    case ItemKind::Popup:
      return makePopup(n, std::move(post), parent);
    case ItemKind::Checkbox:
      return makeCheckbox(n, std::move(post), parent);
    case ItemKind::Icon:
      return makeIcon(n, std::move(post), parent);
    case ItemKind::List:
      return makeList(n, std::move(post), parent);
    case ItemKind::TextArea: {
      // The dialog drives a template's scroll-bar item for the text: one bar on screen, not two.
      bool ownBar = true;
      for (const detail::ItemState& other : window.items)
        if (other.kind == ItemKind::ScrollBar) ownBar = false;
      return makeTextArea(n, std::move(post), parent, ownBar);
    }
    case ItemKind::ScrollBar:
      return makeScrollBar(n, std::move(post), parent);
    case ItemKind::Progress:
      return makeProgress(n, std::move(post), parent);
  }
  return nullptr;
}

void sendClick(QWidget* target, QPoint local, bool doubleClick, Qt::KeyboardModifiers modifiers) {
  QPointer<QWidget> guard(target);
  const QPointF pos(local);
  const QPointF scene(target->mapTo(target->window(), local));
  const QPointF global(target->mapToGlobal(local));
  auto send = [&](QEvent::Type type, Qt::MouseButtons buttons) {
    if (!guard) return;  // the dialog went away under the mouse
    QMouseEvent mouse(type, pos, scene, global, Qt::LeftButton, buttons, modifiers);
    QCoreApplication::sendEvent(target, &mouse);
  };
  send(QEvent::MouseButtonPress, Qt::LeftButton);
  send(QEvent::MouseButtonRelease, Qt::NoButton);
  if (doubleClick) {
    send(QEvent::MouseButtonDblClick, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, Qt::NoButton);
  }
}

}  // namespace toolkit::qt
