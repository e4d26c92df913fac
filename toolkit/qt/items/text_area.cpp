// The multi-line text area.
// Implements: plain text with the host's carriage returns, caret, selection and scroll position
// shown from the model and read back from the widget, a click placing the caret, the text's
// geometry in the real font, scrolling by itself (wheel, drag, caret kept in view) reported as a
// Scroll event, no bar of its own when the dialog drives a scroll-bar item beside it, and undo and
// redo of every edit, a person's or the dialog's, since the dialog set the text.
// Not yet: a horizontal scroll.
#include <QCoreApplication>
#include <QResizeEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextEdit>

#include "items.h"
#include "qt_backend.h"

namespace toolkit::qt {
namespace {

// The text area keeps line breaks as carriage returns, the host's convention; Qt uses newlines.
QString toAreaText(const std::u16string& text) {
  return toQString(text).replace(QLatin1Char('\r'), QLatin1Char('\n'));
}
std::u16string fromAreaText(const QString& text) {
  QString copy = text;
  copy.replace(QChar::ParagraphSeparator, QLatin1Char('\r'))
      .replace(QLatin1Char('\n'), QLatin1Char('\r'));
  return fromQString(copy);
}

class TextAreaItem final : public ItemAdapter {
 public:
  TextAreaItem(int n, Post post, QWidget* parent, bool ownBar)
      : ItemAdapter(n, std::move(post)), area_(new QTextEdit(parent)) {
    area_->setAcceptRichText(false);
    area_->setTabChangesFocus(true);
    if (!ownBar) area_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QObject::connect(area_->verticalScrollBar(), &QScrollBar::valueChanged,
                     [this] { this->post(Event{.type = Event::Type::Scroll, .item = number()}); });
  }
  QWidget* widget() const override { return area_; }
  void apply(const detail::ItemState& item) override {
    const QString text = toAreaText(item.text);
    if (item.textSet != textSet_) {
      textSet_ = item.textSet;
      area_->setPlainText(text);  // a new text starts a new history
    } else {
      replaceChanged(text);
    }
    const int size = static_cast<int>(text.size());
    const int start = std::clamp(item.selStart, 0, size);
    const int end = std::clamp(item.selEnd, start, size);
    QTextCursor cursor = area_->textCursor();
    if (cursor.selectionStart() != start || cursor.selectionEnd() != end) {
      cursor.setPosition(start);
      cursor.setPosition(end, QTextCursor::KeepAnchor);
      area_->setTextCursor(cursor);
    }
    QScrollBar* bar = area_->verticalScrollBar();
    if (bar->value() != item.scroll) bar->setValue(item.scroll);
  }
  Press press(QWidget* receiver, const QMouseEvent& mouse, bool doubleClick) override {
    if (receiver != area_->viewport()) return {};  // its own bar scrolls it
    Event event = click();
    event.doubleClick = doubleClick;
    event.caret = area_->cursorForPosition(mouse.position().toPoint()).position();
    return {event, false};
  }
  bool inject(const detail::Answer& answer, const detail::ItemState&) override {
    if (answer.kind != detail::Answer::Kind::Click || answer.part != ScrollPart::None) return false;
    // Just after the end of the text, where a person clicks to type on.
    QTextCursor end(area_->document());
    end.movePosition(QTextCursor::End);
    QPoint at = area_->cursorRect(end).center() + QPoint(2, 0);
    if (!area_->viewport()->rect().contains(at)) at = area_->viewport()->rect().bottomRight();
    sendClick(area_->viewport(), at);
    return true;
  }
  bool readBack(detail::ItemState& item) override {
    const QTextCursor cursor = area_->textCursor();
    const int scroll = area_->verticalScrollBar()->value();
    bool changed = scroll != item.scroll || cursor.selectionStart() != item.selStart ||
                   cursor.selectionEnd() != item.selEnd;
    item.scroll = scroll;
    item.selStart = cursor.selectionStart();
    item.selEnd = cursor.selectionEnd();
    if (area_->document()->isModified()) {  // typed or pasted into since it was read
      std::u16string text = fromAreaText(area_->toPlainText());
      area_->document()->setModified(false);
      if (text != item.text) item.text = std::move(text), changed = true;
    }
    return changed;
  }
  detail::TextGeometry textGeometry(const detail::ItemState&) override {
    QTextDocument* document = area_->document();
    if (area_->testAttribute(Qt::WA_PendingResizeEvent)) {
      // A widget not shown yet hears of its size only when shown; the text is measured now, so
      // it lays itself out for that size now, and once.
      QResizeEvent resize(area_->size(), QSize());
      QCoreApplication::sendEvent(area_, &resize);
      area_->setAttribute(Qt::WA_PendingResizeEvent, false);
    }
    // Laying out again costs a pass over the whole text: only when the width really changed.
    const qreal width = area_->viewport()->width();
    if (document->textWidth() != width) document->setTextWidth(width);
    QTextCursor caret = area_->textCursor();
    caret.setPosition(caret.selectionEnd());
    const QRect rect = area_->cursorRect(caret);
    const int scroll = area_->verticalScrollBar()->value();
    return {.content = static_cast<int>(std::ceil(document->size().height())),
            .view = area_->viewport()->height(),
            .line = area_->fontMetrics().lineSpacing(),
            .caretTop = rect.top() + scroll,
            .caretBottom = rect.bottom() + 1 + scroll};
  }

 private:
  // The dialog changed part of the text (a paste it cut to size, say): only that part is replaced,
  // as one edit a person can undo.
  void replaceChanged(const QString& text) {
    const QString shown = area_->toPlainText();
    if (shown == text) return;
    qsizetype head = 0;
    const qsizetype least = std::min(shown.size(), text.size());
    while (head < least && shown[head] == text[head]) ++head;
    qsizetype tail = 0;
    while (tail < least - head && shown[shown.size() - 1 - tail] == text[text.size() - 1 - tail])
      ++tail;
    QTextCursor cursor(area_->document());
    cursor.setPosition(static_cast<int>(head));
    cursor.setPosition(static_cast<int>(shown.size() - tail), QTextCursor::KeepAnchor);
    cursor.insertText(text.mid(head, text.size() - tail - head));
  }

  QTextEdit* area_;
  std::uint64_t textSet_ = ~std::uint64_t{0};  // the model's textSet last shown
};

}  // namespace

std::unique_ptr<ItemAdapter> makeTextArea(int n, Post post, QWidget* parent, bool ownBar) {
  return std::make_unique<TextAreaItem>(n, std::move(post), parent, ownBar);
}

}  // namespace toolkit::qt
