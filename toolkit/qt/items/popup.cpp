// Pop-up menus.
// Implements: entries with separator lines, the chosen entry, a choice arriving as the pop-up's
// hit with its entry, an answer opening the menu and clicking the entry as a person would.
// Not yet: type-select inside an open menu.
#include <QAbstractItemView>
#include <QComboBox>

#include "items.h"
#include "qt_backend.h"

namespace toolkit::qt {
namespace {

class PopupItem final : public ItemAdapter {
 public:
  PopupItem(int n, Post post, QWidget* parent)
      : ItemAdapter(n, std::move(post)), combo_(new QComboBox(parent)) {
    combo_->setFocusPolicy(Qt::NoFocus);
    QObject::connect(combo_, &QComboBox::activated, [this](int index) {
      Event event = click();
      event.menuItem = index + 1;
      activated_ = true;
      this->post(event);
    });
  }
  QWidget* widget() const override { return combo_; }
  void apply(const detail::ItemState& item) override {
    const QString name = toQString(item.label);
    if (combo_->accessibleName() != name) combo_->setAccessibleName(name);
    bool same = combo_->count() == static_cast<int>(item.menu.size());
    for (int i = 0; same && i < combo_->count(); ++i) {
      const std::u16string& entry = item.menu[static_cast<std::size_t>(i)];
      same =
          entry == u"-" ? combo_->itemText(i).isEmpty() : combo_->itemText(i) == toQString(entry);
    }
    if (!same) {
      combo_->clear();
      for (const std::u16string& entry : item.menu) {
        if (entry == u"-") {
          combo_->insertSeparator(combo_->count());
        } else {
          combo_->addItem(toQString(entry));
        }
      }
    }
    const int index = item.value >= 1 && item.value <= combo_->count() ? item.value - 1 : -1;
    if (combo_->currentIndex() != index) combo_->setCurrentIndex(index);
  }
  Press press(QWidget*, const QMouseEvent&, bool) override {
    if (combo_->isEnabled()) return {};  // the choice arrives when the menu closes
    return {click(), false};
  }
  bool inject(const detail::Answer& answer, const detail::ItemState& item) override {
    using Kind = detail::Answer::Kind;
    if (answer.kind != Kind::Choose && answer.kind != Kind::Click) return false;
    const int entry = answer.kind == Kind::Choose ? answer.menuItem : item.value;
    if (!combo_->isEnabled()) {
      sendClick(combo_, combo_->rect().center());
      return true;
    }
    if (entry < 1 || entry > combo_->count()) return true;  // nothing to click: no event
    // Open the menu as a click would, then click the entry in it.
    combo_->showPopup();
    QAbstractItemView* view = combo_->view();
    const QModelIndex index = combo_->model()->index(entry - 1, combo_->modelColumn());
    view->scrollTo(index);
    const QRect rect = view->visualRect(index);
    activated_ = false;
    if (rect.isValid()) sendClick(view->viewport(), rect.center());
    combo_->hidePopup();
    if (!activated_) {
      // A separator closes the menu with no choice: the pop-up was still pressed.
      Event event = click();
      event.menuItem = entry;
      post(event);
    }
    return true;
  }

 private:
  QComboBox* combo_;
  bool activated_ = false;
};

}  // namespace

std::unique_ptr<ItemAdapter> makePopup(int n, Post post, QWidget* parent) {
  return std::make_unique<PopupItem>(n, std::move(post), parent);
}

}  // namespace toolkit::qt
