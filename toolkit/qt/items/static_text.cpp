// Static texts.
// Implements: plain text wrapped as the host wraps it (a word wider than the item may break
// anywhere), the height it needs at a width (the window grows to show it), a scrolling view when
// even the grown window cannot hold it, a mouse-down reaching the dialog,
// a selection made with the mouse, copied with the command key and C or the context menu, and a
// scrolling view moved by Page Up, Page Down, Home, End and the arrows.
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>

#include "items.h"
#include "qt_backend.h"

namespace toolkit::qt {
namespace {

// A static text as its label shows it: its lines broken where the host breaks them, and a word
// wider than the item (a long path, a link) may break anywhere, so that none of it is cut off at
// the right.
QString wrappableText(const std::u16string& text, const QLabel& label, int width) {
  // The host ends lines with carriage returns; a label breaks lines at newlines only.
  QString source = toQString(text)
                       .replace(QLatin1String("\r\n"), QLatin1String("\n"))
                       .replace(QLatin1Char('\r'), QLatin1Char('\n'));
  const QFontMetrics metrics = label.fontMetrics();
  // The narrower width of a scrolling view, so a word breaks the same way in both.
  width -= label.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  QString out;
  qsizetype start = 0;
  while (start < source.size()) {
    qsizetype end = start;
    while (end < source.size() && !source.at(end).isSpace()) ++end;
    QStringView word = QStringView(source).mid(start, end - start);
    if (metrics.horizontalAdvance(word.toString()) > width) {
      for (qsizetype i = 0; i < word.size(); ++i) {
        const QChar c = word.at(i);
        if (i > 0 && !c.isLowSurrogate() && !c.isMark()) out += QChar(0x200B);
        out += c;
      }
    } else {
      out += word;
    }
    while (end < source.size() && source.at(end).isSpace()) out += source.at(end++);
    start = end;
  }
  return out;
}

class StaticTextItem final : public ItemAdapter {
 public:
  StaticTextItem(int n, Post post, QWidget* parent)
      : ItemAdapter(n, std::move(post)), label_(new QLabel(parent)), parent_(parent) {
    label_->setTextFormat(Qt::PlainText);
    label_->setWordWrap(true);
    label_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    // A person can select the message and copy it; the focus stays where the dialog put it.
    label_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label_->setFocusPolicy(Qt::NoFocus);
  }
  QWidget* widget() const override { return label_; }
  QWidget* outer() const override {
    return scroller_ ? static_cast<QWidget*>(scroller_.data()) : label_;
  }
  void apply(const detail::ItemState& item) override {
    const QString text = wrappableText(item.text, *label_, item.rect.width());
    if (label_->text() != text) label_->setText(text);
  }
  int neededHeight(int width) const { return label_->heightForWidth(width); }
  // A text too long for the screen scrolls in a view of its own.
  void setScrolled(bool scrolled) {
    if (scrolled == !scroller_.isNull()) return;
    if (scrolled) {
      auto* area = new QScrollArea(parent_);
      area->setFrameShape(QFrame::NoFrame);
      area->setFocusPolicy(Qt::NoFocus);
      area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
      area->setWidgetResizable(true);
      area->setWidget(label_);
      scroller_ = area;
      label_->show();  // the view shows it
    } else {
      scroller_->takeWidget();
      label_->setParent(parent_);
      label_->setAutoFillBackground(false);
      delete scroller_.data();
    }
  }
  bool copySelection() const {
    if (!label_->hasSelectedText()) return false;
    QString text = label_->selectedText();
    text.remove(QChar(0x200B));  // the breaks added for long words are not the message's
    QGuiApplication::clipboard()->setText(text);
    return true;
  }
  bool scrollByKey(char16_t key) const {
    if (!scroller_) return false;
    QScrollBar* bar = scroller_->verticalScrollBar();
    switch (key) {
      case kCharPageUp:
        bar->triggerAction(QAbstractSlider::SliderPageStepSub);
        return true;
      case kCharPageDown:
        bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
        return true;
      case kCharUp:
        bar->triggerAction(QAbstractSlider::SliderSingleStepSub);
        return true;
      case kCharDown:
        bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
        return true;
      case kCharHome:
        bar->triggerAction(QAbstractSlider::SliderToMinimum);
        return true;
      case kCharEnd:
        bar->triggerAction(QAbstractSlider::SliderToMaximum);
        return true;
      default:
        return false;
    }
  }
  Press press(QWidget* receiver, const QMouseEvent& mouse, bool doubleClick) override {
    if (scroller_ && receiver != label_ && receiver != scroller_->viewport()) return {};  // its bar
    return ItemAdapter::press(receiver, mouse, doubleClick);
  }

 private:
  QLabel* label_;
  QWidget* parent_;
  QPointer<QScrollArea> scroller_;
};

}  // namespace

std::unique_ptr<ItemAdapter> makeStaticText(int n, Post post, QWidget* parent) {
  return std::make_unique<StaticTextItem>(n, std::move(post), parent);
}

int neededTextHeight(ItemAdapter& adapter, int width) {
  return static_cast<StaticTextItem&>(adapter).neededHeight(width);
}
void setTextScrolled(ItemAdapter& adapter, bool scrolled) {
  static_cast<StaticTextItem&>(adapter).setScrolled(scrolled);
}
bool textKey(ItemAdapter& adapter, const Event& event) {
  auto& text = static_cast<StaticTextItem&>(adapter);
  if ((event.modifiers & kModCommand) && (event.character | 0x20) == u'c')
    return text.copySelection();
  return !event.modifiers && text.scrollByKey(event.character);
}

}  // namespace toolkit::qt
