// Icon items.
// Implements: the note, caution and stop icons from the platform's icon theme (the style's own as
// the fallback), a custom picture scaled
// into the rectangle keeping its proportions, drawn again for the pixel ratio of the screen the
// window moves to, and a mouse-down reaching the dialog.
// Not yet: icons that change while shown (an animated picture).
#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QPixmap>
#include <QStyle>

#include "items.h"

namespace toolkit::qt {
namespace {

QPixmap iconPixmap(IconKind kind, const Image* image, QSize size, qreal ratio) {
  if (size.isEmpty()) return {};
  if (kind == IconKind::Custom) {
    if (!image || image->empty()) return {};
    QImage picture(reinterpret_cast<const uchar*>(image->pixels.data()), image->width,
                   image->height, image->width * 4, QImage::Format_ARGB32);
    QPixmap scaled = QPixmap::fromImage(
        picture.scaled(size * ratio, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    scaled.setDevicePixelRatio(ratio);
    return scaled;
  }
  const QIcon icon = themeIcon(kind);
  if (icon.isNull()) return {};
  const int side = std::min(size.width(), size.height());
  return icon.pixmap(QSize(side, side), ratio);
}

class IconItem final : public ItemAdapter {
 public:
  IconItem(int n, Post post, QWidget* parent)
      : ItemAdapter(n, std::move(post)), label_(new QLabel(parent)) {
    label_->setAlignment(Qt::AlignCenter);
  }
  QWidget* widget() const override { return label_; }
  void apply(const detail::ItemState& item) override {
    icon_ = item.icon;
    image_ = item.image;
    draw();
  }
  void refresh() override { draw(); }

 private:
  // Drawn again only when what is drawn, its size or the pixel ratio changed.
  void draw() {
    const qreal ratio = label_->devicePixelRatioF();
    const QString key = QStringLiteral("%1:%2:%3x%4@%5")
                            .arg(static_cast<int>(icon_))
                            .arg(reinterpret_cast<quintptr>(image_.get()))
                            .arg(label_->width())
                            .arg(label_->height())
                            .arg(ratio);
    if (label_->property("iconKey").toString() == key) return;
    label_->setProperty("iconKey", key);
    label_->setPixmap(iconPixmap(icon_, image_.get(), label_->size(), ratio));
  }

  QLabel* label_;
  IconKind icon_ = IconKind::None;
  std::shared_ptr<const Image> image_;
};

}  // namespace

QIcon themeIcon(IconKind kind) {
  const char* name = nullptr;
  QStyle::StandardPixmap standard = QStyle::SP_MessageBoxInformation;
  switch (kind) {
    case IconKind::Note:
      name = "dialog-information";
      break;
    case IconKind::Caution:
      name = "dialog-warning";
      standard = QStyle::SP_MessageBoxWarning;
      break;
    case IconKind::Stop:
      name = "dialog-error";
      standard = QStyle::SP_MessageBoxCritical;
      break;
    default:
      return {};
  }
  return QIcon::fromTheme(QLatin1String(name), QApplication::style()->standardIcon(standard));
}

std::unique_ptr<ItemAdapter> makeIcon(int n, Post post, QWidget* parent) {
  return std::make_unique<IconItem>(n, std::move(post), parent);
}

}  // namespace toolkit::qt
