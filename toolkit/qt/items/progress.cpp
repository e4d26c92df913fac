// Progress indicators.
// Implements: value against maximum, the indeterminate (busy) state, a mouse-down reaching the
// dialog (a click anywhere in the window).
// Not yet: the animation steps the model counts are Qt's own busy animation, not drawn per step.
#include <QProgressBar>

#include "items.h"

namespace toolkit::qt {
namespace {

class ProgressItem final : public ItemAdapter {
 public:
  ProgressItem(int n, Post post, QWidget* parent)
      : ItemAdapter(n, std::move(post)), progress_(new QProgressBar(parent)) {
    progress_->setTextVisible(false);
  }
  QWidget* widget() const override { return progress_; }
  void apply(const detail::ItemState& item) override {
    if (item.indeterminate) {
      progress_->setRange(0, 0);
    } else {
      progress_->setRange(0, std::max(1, item.max));
      progress_->setValue(std::clamp(item.value, 0, std::max(1, item.max)));
    }
  }

 private:
  QProgressBar* progress_;
};

}  // namespace

std::unique_ptr<ItemAdapter> makeProgress(int n, Post post, QWidget* parent) {
  return std::make_unique<ProgressItem>(n, std::move(post), parent);
}

}  // namespace toolkit::qt
