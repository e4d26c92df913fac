// Buttons, check boxes and edit fields.
// Implements: titles as plain text, a title wider than its button cut in the middle with its
// whole text as a tooltip, a button's or check box's hit when the mouse goes up inside
// it (a mouse-down on a disabled one still reaches the dialog), a field's text, mask, caret and
// selection, a click placing the caret, and reading back what a person typed or selected.
// Not yet: a field's own length limit (the dialog's filter enforces it).
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QStyleOptionButton>

#include "items.h"
#include "qt_backend.h"

namespace toolkit::qt {
namespace {

// Button and check box titles are plain text: '&' would otherwise mark a shortcut.
QString plainTitle(const std::u16string& text) {
  return toQString(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}

// The hit arrives with the release; a press reaches the dialog only on a disabled control.
Press pressOnControl(const QWidget* widget, Event click) {
  if (widget->isEnabled()) return {};
  return {click, false};
}

class ButtonItem final : public ItemAdapter {
 public:
  ButtonItem(int n, Post post, QWidget* parent)
      : ItemAdapter(n, std::move(post)), button_(new QPushButton(parent)) {
    button_->setAutoDefault(false);
    // The model moves the focus (Tab); a click on a button does not take it.
    button_->setFocusPolicy(Qt::TabFocus);
    QObject::connect(button_, &QPushButton::clicked, [this] { this->post(click()); });
  }
  QWidget* widget() const override { return button_; }
  void apply(const detail::ItemState& item) override {
    title_ = toQString(item.text);
    refresh();
  }
  // A title wider than the button is cut in its middle, and shown whole as a tooltip.
  void refresh() override {
    const int room = button_->width() - widthFor(QString());
    QString shown = button_->fontMetrics().elidedText(title_, Qt::ElideMiddle, room);
    if (widthFor(title_) <= button_->width()) shown = title_;
    const QString tip = shown == title_ ? QString() : title_;
    shown.replace(QLatin1Char('&'), QLatin1String("&&"));  // '&' would mark a shortcut
    if (button_->text() != shown) button_->setText(shown);
    if (button_->toolTip() != tip) button_->setToolTip(tip);
  }
  Press press(QWidget*, const QMouseEvent&, bool) override {
    return pressOnControl(button_, click());
  }
  // The width the whole title needs, with the style's margins.
  int widthFor(const QString& title) const {
    QStyleOptionButton option;
    option.initFrom(button_);
    option.text = title;
    const QSize text = button_->fontMetrics().size(Qt::TextSingleLine, title);
    return button_->style()
        ->sizeFromContents(QStyle::CT_PushButton, &option, text, button_)
        .width();
  }
  int neededWidth() const { return widthFor(title_); }

 private:
  QPushButton* button_;
  QString title_;
};

class CheckboxItem final : public ItemAdapter {
 public:
  CheckboxItem(int n, Post post, QWidget* parent)
      : ItemAdapter(n, std::move(post)), box_(new QCheckBox(parent)) {
    box_->setFocusPolicy(Qt::NoFocus);
    QObject::connect(box_, &QCheckBox::clicked, [this] { this->post(click()); });
  }
  QWidget* widget() const override { return box_; }
  void apply(const detail::ItemState& item) override {
    const QString title = plainTitle(item.text);
    if (box_->text() != title) box_->setText(title);
    if (box_->isChecked() != (item.value != 0)) box_->setChecked(item.value != 0);
  }
  Press press(QWidget*, const QMouseEvent&, bool) override { return pressOnControl(box_, click()); }
  bool inject(const detail::Answer& answer, const detail::ItemState&) override {
    if (answer.kind != detail::Answer::Kind::Click || answer.part != ScrollPart::None) return false;
    // On the box itself: a short title leaves most of the rectangle outside the control.
    QStyleOptionButton option;
    option.initFrom(box_);
    const QRect box = box_->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, box_);
    sendClick(box_, box.center());
    return true;
  }

 private:
  QCheckBox* box_;
};

class EditItem final : public ItemAdapter {
 public:
  EditItem(int n, Post post, QWidget* parent)
      : ItemAdapter(n, std::move(post)), edit_(new QLineEdit(parent)) {}
  QWidget* widget() const override { return edit_; }
  void apply(const detail::ItemState& item) override {
    const QString name = toQString(item.label);
    if (edit_->accessibleName() != name) edit_->setAccessibleName(name);
    const auto mode = item.masked ? QLineEdit::Password : QLineEdit::Normal;
    if (edit_->echoMode() != mode) edit_->setEchoMode(mode);
    const QString text = toQString(item.text);
    if (edit_->text() != text) edit_->setText(text);
    const int start = std::clamp(item.selStart, 0, static_cast<int>(text.size()));
    const int end = std::clamp(item.selEnd, start, static_cast<int>(text.size()));
    if (start == end) {
      if (edit_->hasSelectedText() || edit_->cursorPosition() != end) edit_->setCursorPosition(end);
    } else if (edit_->selectionStart() != start || edit_->selectionLength() != end - start) {
      edit_->setSelection(start, end - start);
    }
  }
  Press press(QWidget*, const QMouseEvent& mouse, bool doubleClick) override {
    // The field puts the caret where the mouse went down; the dialog hears where that is.
    Event event = click();
    event.doubleClick = doubleClick;
    event.caret = edit_->cursorPositionAt(mouse.position().toPoint());
    return {event, false};
  }
  bool inject(const detail::Answer& answer, const detail::ItemState&) override {
    if (answer.kind != detail::Answer::Kind::Click || answer.part != ScrollPart::None) return false;
    // Right of the text, where a person clicks to type on at the end.
    sendClick(edit_, QPoint(edit_->width() - 3, edit_->height() / 2));
    return true;
  }
  bool readBack(detail::ItemState& item) override {
    const std::u16string text = fromQString(edit_->text());
    int start = edit_->cursorPosition();
    int end = start;
    if (edit_->hasSelectedText()) {
      start = edit_->selectionStart();
      end = edit_->selectionEnd();
    }
    if (text == item.text && start == item.selStart && end == item.selEnd) return false;
    item.text = text;
    item.selStart = start;
    item.selEnd = end;
    return true;
  }
  detail::TextGeometry textGeometry(const detail::ItemState&) override {
    const QRect caret = edit_->inputMethodQuery(Qt::ImCursorRectangle).toRect();
    const int line = edit_->fontMetrics().lineSpacing();
    return {.content = line,
            .view = edit_->height(),
            .line = line,
            .caretTop = caret.top(),
            .caretBottom = caret.bottom() + 1};
  }

 private:
  QLineEdit* edit_;
};

}  // namespace

std::unique_ptr<ItemAdapter> makeButton(int n, Post post, QWidget* parent) {
  return std::make_unique<ButtonItem>(n, std::move(post), parent);
}
int neededButtonWidth(ItemAdapter& button) {
  return static_cast<ButtonItem&>(button).neededWidth();
}
std::unique_ptr<ItemAdapter> makeCheckbox(int n, Post post, QWidget* parent) {
  return std::make_unique<CheckboxItem>(n, std::move(post), parent);
}
std::unique_ptr<ItemAdapter> makeEdit(int n, Post post, QWidget* parent) {
  return std::make_unique<EditItem>(n, std::move(post), parent);
}

}  // namespace toolkit::qt
