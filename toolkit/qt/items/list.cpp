// Lists.
// Implements: a list view with rows of one height and a model that makes a row's text only when
// the view shows it, so 16,000 rows open as fast as 10; rows set again only when the dialog
// changed them; the selected row brought into view, also after the list was resized; a mouse-down
// on a row (or below the last row) and a double click reaching the dialog with the row, the model
// deciding what the click selects; the wheel and the list's own scroll bar; every row read by a
// screen reader (the rows are the view's accessible children).
// Not yet: several selected rows; type-select is the dialog's (keys go to its filter).
#include <QAbstractListModel>
#include <QListView>
#include <QScrollBar>

#include "items.h"
#include "qt_backend.h"

namespace toolkit::qt {
namespace {

// The rows in one string with where each starts: a few allocations, whatever the number of rows.
class Rows final : public QAbstractListModel {
 public:
  explicit Rows(QObject* parent) : QAbstractListModel(parent) {}
  void set(const std::vector<std::u16string>& rows) {
    beginResetModel();
    std::size_t size = 0;
    for (const std::u16string& row : rows) size += row.size();
    text_.clear();
    text_.reserve(static_cast<qsizetype>(size));
    starts_.clear();
    starts_.reserve(rows.size() + 1);
    for (const std::u16string& row : rows) {
      starts_.push_back(text_.size());
      text_.append(reinterpret_cast<const QChar*>(row.data()), static_cast<qsizetype>(row.size()));
    }
    starts_.push_back(text_.size());
    endResetModel();
  }
  int count() const { return starts_.empty() ? 0 : static_cast<int>(starts_.size() - 1); }
  int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : count(); }
  QVariant data(const QModelIndex& index, int role) const override {
    if (!index.isValid() || index.row() >= count()) return {};
    if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole) return {};
    const auto row = static_cast<std::size_t>(index.row());
    return text_.mid(starts_[row], starts_[row + 1] - starts_[row]);
  }

 private:
  QString text_;
  std::vector<qsizetype> starts_;
};

class ListItem final : public ItemAdapter {
 public:
  ListItem(int n, Post post, QWidget* parent)
      : ItemAdapter(n, std::move(post)), list_(new QListView(parent)), rows_(new Rows(list_)) {
    list_->setModel(rows_);
    list_->setFocusPolicy(Qt::NoFocus);
    list_->setSelectionMode(QAbstractItemView::SingleSelection);
    list_->setUniformItemSizes(true);
    list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  }
  QWidget* widget() const override { return list_; }
  void apply(const detail::ItemState& item) override {
    if (rowsSet_ != item.rowsSet) {
      rows_->set(item.rows);
      rowsSet_ = item.rowsSet;
    }
    const int row =
        item.selectedRow >= 0 && item.selectedRow < rows_->count() ? item.selectedRow : -1;
    const QModelIndex index = rows_->index(row, 0);
    QItemSelectionModel* selection = list_->selectionModel();
    if (list_->currentIndex() == index && (row < 0 || selection->isSelected(index))) return;
    if (row < 0) {
      selection->clear();
    } else {
      selection->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
      list_->scrollTo(index);
    }
  }
  void refresh() override {
    if (list_->currentIndex().isValid()) list_->scrollTo(list_->currentIndex());
  }
  Press press(QWidget* receiver, const QMouseEvent& mouse, bool doubleClick) override {
    if (receiver != list_->viewport()) return {};  // its scroll bar scrolls it
    Event event = click();
    event.row = list_->indexAt(mouse.position().toPoint()).row();
    event.doubleClick = doubleClick;
    return {event, true};  // the model decides what the click selects
  }
  bool inject(const detail::Answer& answer, const detail::ItemState& item) override {
    using Kind = detail::Answer::Kind;
    int row = -1;
    if (answer.kind == Kind::Row || answer.kind == Kind::DoubleClickRow)
      row = answer.row - 1;
    else if (answer.kind == Kind::Click && answer.part == ScrollPart::None)
      row = item.selectedRow;
    else
      return false;
    QPoint at;
    if (row >= 0 && row < rows_->count()) {
      const QModelIndex index = rows_->index(row, 0);
      list_->scrollTo(index);
      at = list_->visualRect(index).center();
    } else {
      // Below the last row, where there is room for a person to click; a full list has none.
      list_->scrollToBottom();
      const int bottom =
          rows_->count() ? list_->visualRect(rows_->index(rows_->count() - 1, 0)).bottom() : -1;
      at = QPoint(list_->viewport()->width() / 2, list_->viewport()->height() - 2);
      if (at.y() <= bottom) return true;  // no event: the answer reaches nothing
    }
    sendClick(list_->viewport(), at, answer.kind == Kind::DoubleClickRow);
    return true;
  }

 private:
  QListView* list_;
  Rows* rows_;
  std::uint64_t rowsSet_ = ~std::uint64_t{0};
};

}  // namespace

std::unique_ptr<ItemAdapter> makeList(int n, Post post, QWidget* parent) {
  return std::make_unique<ListItem>(n, std::move(post), parent);
}

}  // namespace toolkit::qt
