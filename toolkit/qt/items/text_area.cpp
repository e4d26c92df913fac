// The multi-line text area.
// Implements: plain text with the host's carriage returns, caret, selection and scroll position
// shown from the model and read back from the widget, a click placing the caret, the text's
// geometry in the real font, scrolling by itself (wheel, drag, caret kept in view) reported as a
// Scroll event, no bar of its own when the dialog drives a scroll-bar item beside it, and undo and
// redo of every edit, a person's or the dialog's, since the dialog set the text.
// The widget lays out only the lines it shows, so a long text opens at once; the rest is laid out
// a few milliseconds at a time while the window waits, and a step that finds lines the dialog was
// not told of is reported as a Scroll event, so the scroll bar beside it follows. The geometry is
// counted in lines of the widget's font: the widget scrolls by whole lines, so the distance
// scrolled is its top line times the line height, and a distance the dialog set between two lines
// reads back as the dialog set it.
// Not yet: a horizontal scroll.
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QResizeEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>
#include <QTimer>

#include "items.h"
#include "qt_backend.h"

namespace toolkit::qt {
namespace {

// A text this short is laid out whole when measured: its geometry is exact at once.
constexpr int kLayOutAtOnce = 8192;
// How long one background step of laying out may keep the window from a person's input, and the
// pause between two steps, in which the window draws and takes input first.
constexpr int kStepMilliseconds = 3;
constexpr int kPauseMilliseconds = 10;

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

// The plain-text editor that lays out what it has not shown yet in the background, starting
// again where a resize or an edit across lines made its count of lines an estimate.
class LazyTextEdit final : public QPlainTextEdit {
 public:
  LazyTextEdit(QWidget* parent, std::function<void()> linesCounted)
      : QPlainTextEdit(parent), linesCounted_(std::move(linesCounted)) {
    step_.setInterval(kPauseMilliseconds);
    QObject::connect(&step_, &QTimer::timeout, [this] { layOutStep(); });
    QObject::connect(document(), &QTextDocument::contentsChange, this,
                     [this](int from, int, int added) {
                       const QTextDocument* doc = document();
                       if (doc->findBlock(from) != doc->findBlock(from + added))
                         layOutFrom(doc->findBlock(from));
                     });
  }
  // Its adapter is going: nothing more is reported.
  void forget() {
    linesCounted_ = [] {};
  }
  void layOutFrom(const QTextBlock& block) {
    const int number = std::max(0, block.blockNumber());
    next_ = next_ < 0 ? number : std::min(next_, number);
    if (document()->characterCount() > kLayOutAtOnce) step_.start();  // else when next measured
  }
  // Lays out the blocks whose lines fill `lines` lines before and after `block`, or the whole
  // text when it is short.
  void layOutAround(const QTextBlock& block, int lines) {
    if (document()->characterCount() <= kLayOutAtOnce) {
      if (next_ >= 0) layOutStep(-1);
      layOut(block);
      return;
    }
    int before = 0;
    for (QTextBlock b = block; b.isValid() && before <= lines; b = b.previous())
      before += layOut(b);
    int after = 0;
    for (QTextBlock b = block.next(); b.isValid() && after <= lines; b = b.next())
      after += layOut(b);
  }
  // The count of lines the dialog is told of.
  int measuredLines() {
    measuredLines_ = document()->lineCount();
    return measuredLines_;
  }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QPlainTextEdit::resizeEvent(event);
    if (event->size().width() != event->oldSize().width()) layOutFrom(document()->firstBlock());
  }

 private:
  int layOut(const QTextBlock& block) {
    if (block.layout()->lineCount() == 0) document()->documentLayout()->blockBoundingRect(block);
    return block.lineCount();
  }
  // One step: blocks for at most `budget` milliseconds (no limit when negative).
  void layOutStep(int budget = kStepMilliseconds) {
    QElapsedTimer clock;
    clock.start();
    QTextBlock block = document()->findBlockByNumber(next_);
    while (block.isValid() && (budget < 0 || clock.elapsed() < budget)) {
      layOut(block);
      block = block.next();
    }
    next_ = block.isValid() ? block.blockNumber() : -1;
    if (next_ < 0) step_.stop();
    if (budget >= 0 && document()->lineCount() != measuredLines_) linesCounted_();
  }

  std::function<void()> linesCounted_;
  QTimer step_;
  int next_ = -1;  // the first block not laid out since the last change, -1 when none
  int measuredLines_ = -1;
};

class TextAreaItem final : public ItemAdapter {
 public:
  TextAreaItem(int n, Post post, QWidget* parent, bool ownBar)
      : ItemAdapter(n, std::move(post)), area_(new LazyTextEdit(parent, [this] { postScroll(); })) {
    area_->setTabChangesFocus(true);
    if (!ownBar) area_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scrolled_ = QObject::connect(area_->verticalScrollBar(), &QScrollBar::valueChanged, [this] {
      if (!applying_) shownLine_ = -1;  // scrolled by the widget: whole lines again
      postScroll();
    });
  }
  ~TextAreaItem() override {
    // The widget outlives its adapter by a moment, and must not call back into it.
    QObject::disconnect(scrolled_);
    area_->forget();
  }
  QWidget* widget() const override { return area_; }
  void apply(const detail::ItemState& item) override {
    applying_ = true;
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
    // The nearest whole line, and the distance itself kept for reading back.
    const int line = lineHeight();
    shownScroll_ = item.scroll;
    shownLine_ = (item.scroll + line / 2) / line;
    QScrollBar* bar = area_->verticalScrollBar();
    if (bar->value() != shownLine_) bar->setValue(shownLine_);
    applying_ = false;
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
    const int scroll = scrolled();
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
    // A widget not shown yet hears of its size only when shown; the text is measured now, so it
    // lays itself out for that size now, and once. The editor lays out for its viewport's size.
    for (QWidget* widget : {static_cast<QWidget*>(area_), area_->viewport()}) {
      if (!widget->testAttribute(Qt::WA_PendingResizeEvent)) continue;
      QResizeEvent resize(widget->size(), QSize());
      QCoreApplication::sendEvent(widget, &resize);
      widget->setAttribute(Qt::WA_PendingResizeEvent, false);
    }
    QTextDocument* document = area_->document();
    const int line = lineHeight();
    const int view = area_->viewport()->height();
    const int position = area_->textCursor().selectionEnd();
    const QTextBlock block = document->findBlock(position);
    area_->layOutAround(block, view / line + 1);
    const QTextLine inBlock = block.layout()->lineForTextPosition(position - block.position());
    const int margin = static_cast<int>(document->documentMargin());
    const int caretTop =
        margin + (block.firstLineNumber() + std::max(0, inBlock.lineNumber())) * line;
    return {.content = area_->measuredLines() * line + 2 * margin,
            .view = view,
            .line = line,
            .caretTop = caretTop,
            .caretBottom = caretTop + line};
  }

 private:
  int lineHeight() const { return std::max(1, area_->fontMetrics().lineSpacing()); }
  int scrolled() const {
    const int top = area_->verticalScrollBar()->value();
    return top == shownLine_ ? shownScroll_ : top * lineHeight();
  }
  void postScroll() {
    if (!applying_) post(Event{.type = Event::Type::Scroll, .item = number()});
  }
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

  LazyTextEdit* area_;
  QMetaObject::Connection scrolled_;
  std::uint64_t textSet_ = ~std::uint64_t{0};  // the model's textSet last shown
  bool applying_ = false;
  int shownScroll_ = 0;  // the distance the model last asked for...
  int shownLine_ = -1;   // ...and the whole line shown for it; -1 once the widget scrolled
};

}  // namespace

std::unique_ptr<ItemAdapter> makeTextArea(int n, Post post, QWidget* parent, bool ownBar) {
  return std::make_unique<TextAreaItem>(n, std::move(post), parent, ownBar);
}

}  // namespace toolkit::qt
