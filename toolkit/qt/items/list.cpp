// Lists.
// Implements: rows (set again only when the dialog changed them), the selected row brought into
// view, a mouse-down on a row (or below the last row) and a double click reaching the dialog with
// the row, the model deciding what the click selects, the wheel and the list's own scroll bar.
// Not yet: several selected rows; type-select is the dialog's (keys go to its filter).
#include <QListWidget>
#include <QScrollBar>

#include "items.h"
#include "qt_backend.h"

namespace toolkit::qt {
namespace {

class ListItem final : public ItemAdapter {
 public:
  ListItem(int n, Post post, QWidget* parent)
      : ItemAdapter(n, std::move(post)), list_(new QListWidget(parent)) {
    list_->setFocusPolicy(Qt::NoFocus);
    list_->setSelectionMode(QAbstractItemView::SingleSelection);
    list_->setUniformItemSizes(true);
  }
  QWidget* widget() const override { return list_; }
  void apply(const detail::ItemState& item) override {
    // The rows of a long list are copied into the widget only when the dialog sets them.
    if (rowsSet_ != item.rowsSet) {
      QStringList rows;
      rows.reserve(static_cast<qsizetype>(item.rows.size()));
      for (const std::u16string& row : item.rows) rows.push_back(toQString(row));
      list_->clear();
      list_->addItems(rows);
      rowsSet_ = item.rowsSet;
    }
    const int row =
        item.selectedRow >= 0 && item.selectedRow < list_->count() ? item.selectedRow : -1;
    if (list_->currentRow() != row || (row >= 0 && !list_->item(row)->isSelected())) {
      if (row < 0) {
        list_->clearSelection();
        list_->setCurrentRow(-1);
      } else {
        list_->setCurrentRow(row, QItemSelectionModel::ClearAndSelect);
        list_->scrollToItem(list_->item(row));
      }
    }
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
    if (row >= list_->count()) return true;  // no such row to click: no event
    QPoint at(list_->viewport()->width() / 2, list_->viewport()->height() - 2);  // below the rows
    if (row >= 0) {
      list_->scrollToItem(list_->item(row));
      at = list_->visualItemRect(list_->item(row)).center();
    }
    sendClick(list_->viewport(), at, answer.kind == Kind::DoubleClickRow);
    return true;
  }

 private:
  QListWidget* list_;
  std::uint64_t rowsSet_ = ~std::uint64_t{0};
};

}  // namespace

std::unique_ptr<ItemAdapter> makeList(int n, Post post, QWidget* parent) {
  return std::make_unique<ListItem>(n, std::move(post), parent);
}

}  // namespace toolkit::qt
