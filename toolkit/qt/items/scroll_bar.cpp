// Scroll bars.
// Implements: value, maximum and page from the model (the dialog owns the value), a mouse-down on
// an arrow or the track reported with its part and the Option modifier and left to the dialog, a
// thumb dragged by the widget reporting each new value, answers clicking a part or dragging the
// thumb as a person's mouse would.
// Not yet: auto-repeat while an arrow is held down (each press is one event).
#include <QCoreApplication>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionSlider>

#include "items.h"

namespace toolkit::qt {
namespace {

unsigned optionOf(Qt::KeyboardModifiers modifiers) {
  return (modifiers & Qt::AltModifier) ? unsigned{kModOption} : 0u;
}

class ScrollBarItem final : public ItemAdapter {
 public:
  ScrollBarItem(int n, Post post, QWidget* parent)
      : ItemAdapter(n, std::move(post)), bar_(new QScrollBar(parent)) {
    bar_->setFocusPolicy(Qt::NoFocus);
    QObject::connect(bar_, &QScrollBar::sliderMoved, [this](int value) {
      Event event = click();
      event.part = ScrollPart::Thumb;
      event.value = value;
      event.modifiers = dragModifiers_;
      this->post(event);
    });
  }
  QWidget* widget() const override { return bar_; }
  void apply(const detail::ItemState& item) override {
    const auto orientation = item.rect.width() > item.rect.height() ? Qt::Horizontal : Qt::Vertical;
    if (bar_->orientation() != orientation) bar_->setOrientation(orientation);
    bar_->setRange(0, std::max(0, item.max));
    bar_->setPageStep(std::max(1, item.page));
    if (bar_->value() != item.value && !bar_->isSliderDown()) bar_->setValue(item.value);
  }
  Press press(QWidget*, const QMouseEvent& mouse, bool) override {
    const ScrollPart part = partAt(mouse.position().toPoint());
    if (part == ScrollPart::Thumb) {
      dragModifiers_ = optionOf(mouse.modifiers());
      return {};  // the widget drags the thumb; each move reports its value
    }
    Event event = click();
    event.part = part;
    event.modifiers = optionOf(mouse.modifiers());
    return {event, true};  // the dialog decides how far an arrow or the track scrolls
  }
  bool inject(const detail::Answer& answer, const detail::ItemState&) override {
    using Kind = detail::Answer::Kind;
    if (answer.kind == Kind::Drag) return drag(answer.value);
    if (answer.kind != Kind::Click) return false;
    const ScrollPart part = answer.part == ScrollPart::None ? ScrollPart::PageDown : answer.part;
    const QRect rect = partRect(part);
    if (rect.isEmpty()) return true;  // no such part shown: no event
    sendClick(bar_, rect.center());
    return true;
  }

 private:
  QStyleOptionSlider option() const {
    QStyleOptionSlider option;
    option.initFrom(bar_);
    option.subControls = QStyle::SC_All;
    option.orientation = bar_->orientation();
    option.minimum = bar_->minimum();
    option.maximum = bar_->maximum();
    option.sliderPosition = bar_->sliderPosition();
    option.sliderValue = bar_->value();
    option.pageStep = bar_->pageStep();
    option.singleStep = bar_->singleStep();
    option.upsideDown = bar_->invertedAppearance();
    if (bar_->orientation() == Qt::Horizontal) option.state |= QStyle::State_Horizontal;
    return option;
  }
  static QStyle::SubControl controlOf(ScrollPart part) {
    switch (part) {
      case ScrollPart::LineUp:
        return QStyle::SC_ScrollBarSubLine;
      case ScrollPart::LineDown:
        return QStyle::SC_ScrollBarAddLine;
      case ScrollPart::PageUp:
        return QStyle::SC_ScrollBarSubPage;
      case ScrollPart::PageDown:
        return QStyle::SC_ScrollBarAddPage;
      case ScrollPart::Thumb:
        return QStyle::SC_ScrollBarSlider;
      case ScrollPart::None:
        break;
    }
    return QStyle::SC_None;
  }
  QRect partRect(ScrollPart part) const {
    const QStyleOptionSlider o = option();
    return bar_->style()->subControlRect(QStyle::CC_ScrollBar, &o, controlOf(part), bar_);
  }
  ScrollPart partAt(QPoint at) const {
    const QStyleOptionSlider o = option();
    const auto control = bar_->style()->hitTestComplexControl(QStyle::CC_ScrollBar, &o, at, bar_);
    for (ScrollPart part : {ScrollPart::LineUp, ScrollPart::LineDown, ScrollPart::PageUp,
                            ScrollPart::PageDown, ScrollPart::Thumb}) {
      if (controlOf(part) == control) return part;
    }
    return ScrollPart::None;
  }
  // Presses the thumb, moves the mouse to where the thumb shows `value`, releases.
  bool drag(int value) {
    const QRect thumb = partRect(ScrollPart::Thumb);
    if (thumb.isEmpty()) return true;
    const QStyleOptionSlider o = option();
    const QRect groove =
        bar_->style()->subControlRect(QStyle::CC_ScrollBar, &o, QStyle::SC_ScrollBarGroove, bar_);
    const bool across = bar_->orientation() == Qt::Horizontal;
    const int span = across ? groove.width() - thumb.width() : groove.height() - thumb.height();
    const int offset = QStyle::sliderPositionFromValue(bar_->minimum(), bar_->maximum(), value,
                                                       span, bar_->invertedAppearance());
    const QPoint from = thumb.center();
    QPoint to = from;
    (across ? to.rx() : to.ry()) = (across ? groove.left() : groove.top()) + offset +
                                   (across ? from.x() - thumb.left() : from.y() - thumb.top());
    auto send = [&](QEvent::Type type, QPoint at, Qt::MouseButtons buttons) {
      QMouseEvent mouse(type, QPointF(at), QPointF(bar_->mapTo(bar_->window(), at)),
                        QPointF(bar_->mapToGlobal(at)), Qt::LeftButton, buttons, Qt::NoModifier);
      QCoreApplication::sendEvent(bar_, &mouse);
    };
    send(QEvent::MouseButtonPress, from, Qt::LeftButton);
    send(QEvent::MouseMove, to, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, to, Qt::NoButton);
    return true;
  }

  QScrollBar* bar_;
  unsigned dragModifiers_ = 0;
};

}  // namespace

std::unique_ptr<ItemAdapter> makeScrollBar(int n, Post post, QWidget* parent) {
  return std::make_unique<ScrollBarItem>(n, std::move(post), parent);
}

}  // namespace toolkit::qt
