// A dialog window of the Qt backend: real widgets at the template's rectangles, mirroring the
// core's model of the window. Events of the pulled modal loop come from the widgets (a person's
// hands, or answers injected as real key and mouse events); their default handling is applied to
// the widgets and read back into the model.
#pragma once

#include <QEventLoop>
#include <QKeyEvent>
#include <QObject>
#include <QPointer>
#include <QScrollArea>
#include <QWidget>

#include <deque>
#include <map>
#include <memory>

#include "backend.h"

namespace toolkit::qt {

class QtBackend;

class QtWindow final : public QObject, public detail::BackendWindow {
 public:
  QtWindow(QtBackend& backend, const detail::WindowState& state);
  ~QtWindow() override;

  void update(const detail::WindowState& state) override;
  Event waitEvent(detail::WindowState& state, Tick deadline) override;
  Event inject(detail::WindowState& state, const detail::Answer& answer) override;
  Outcome applyDefault(detail::WindowState& state, const Event& event) override;
  int textContentHeight(const detail::WindowState& state, int n) override;
  bool saveShot(const detail::WindowState& state, const std::string& path) override;

  // For tests of the backend itself.
  QWidget* window() const { return window_; }
  QWidget* itemWidget(int n) const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Item {
    ItemKind kind = ItemKind::Text;
    QPointer<QWidget> widget;
    QPointer<QScrollArea> scroller;      // a text too long for the screen scrolls in this view
    IconKind icon = IconKind::None;      // icon items: what is drawn
    std::shared_ptr<const Image> image;  // icon items: the custom picture
  };

  void buildItems(const detail::WindowState& state);
  void placeWindow(const QRect& frame);
  void applyItem(const detail::ItemState& item, const detail::WindowState& state, QRect rect,
                 bool scrolled);
  void setScrolled(Item& entry, bool scrolled);
  void drawIcon(Item& entry);
  int itemOf(const QObject* object) const;  // item number owning a widget (or one inside it); 0
  void post(const Event& event);
  Event takeEvent();
  bool nativeEditingKey(const detail::WindowState& state, const Event& event) const;
  void deliverKeyNatively(int n, const Event& event);
  void readBack(detail::WindowState& state, int n);
  void sendClick(QWidget* target, QPoint local, bool doubleClick = false);
  void injectChoose(int n, int menuItem);

  QtBackend& backend_;
  QWidget* window_ = nullptr;  // owned; deleted in the destructor
  std::map<int, Item> items_;
  std::deque<Event> queue_;
  QEventLoop* loop_ = nullptr;  // the loop waitEvent runs, quit when an event arrives
  bool updating_ = false;       // model -> widgets in progress: signals are not a person's
  bool delivering_ = false;  // a key on its way to a widget after the dialog's filter let it pass
  std::unique_ptr<QKeyEvent> lastKey_;  // the real key event behind the last Key event
  bool resizable_ = false;
  QRect placed_;  // the frame last given to the window: a window a person moved stays there
  std::uint64_t fronted_ = 0;  // the model's front requests already carried out
};

}  // namespace toolkit::qt
