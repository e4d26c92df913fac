// A dialog window of the Qt backend: real widgets at the template's rectangles, one adapter per
// item (items/). The window keeps the lifecycle, fits the layout to long texts, queues the events
// of the pulled modal loop (a person's hands, or answers performed as real key and mouse events)
// and applies the default handling, reading what the widgets did back into the core's model.
#pragma once

#include <QEventLoop>
#include <QKeyEvent>
#include <QObject>
#include <QTimer>
#include <QWidget>

#include <deque>
#include <map>
#include <memory>
#include <vector>

#include "backend.h"
#include "items/item.h"
#include "qt_fit.h"
#include "qt_keeper.h"
#include "qt_stray.h"

namespace toolkit::qt {

class QtBackend;

class QtWindow final : public QObject, public detail::BackendWindow {
 public:
  QtWindow(QtBackend& backend, const detail::WindowState& state);
  ~QtWindow() override;

  void update(const detail::WindowState& state) override;
  void readBack(detail::WindowState& state) override;
  Event waitEvent(detail::WindowState& state, Tick deadline) override;
  std::vector<Event> inject(detail::WindowState& state, const detail::Answer& answer) override;
  Outcome applyDefault(detail::WindowState& state, const Event& event) override;
  detail::TextGeometry textGeometry(const detail::WindowState& state, int n) override;
  bool saveShot(const detail::WindowState& state, const std::string& path) override;
  void drawLater(std::chrono::milliseconds delay, std::function<void()> draw) override;

  // For tests of the backend itself.
  QWidget* window() const { return window_; }
  QWidget* itemWidget(int n) const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Item {
    std::unique_ptr<ItemAdapter> adapter;
    ItemKind kind = ItemKind::Text;
    std::uint64_t applied = ~std::uint64_t{0};  // the model's change counter last shown
  };

  void placeWindow(const QRect& frame);
  const Fitted& fit(const detail::WindowState& state);
  int itemOf(const QObject* object) const;  // item number owning a widget (or one inside it); 0
  void post(const Event& event);
  bool mousePress(QWidget* widget, QMouseEvent* mouse, bool doubleClick);
  void deliverKeyNatively(int n, const Event& event);
  bool messageKey(const Event& event);
  bool readBackItem(detail::ItemState& item);

  QtBackend& backend_;
  QWidget* window_ = nullptr;  // owned; deleted in the destructor
  std::map<int, Item> items_;
  std::deque<Event> queue_;
  QEventLoop* loop_ = nullptr;  // the loop waitEvent runs, quit when an event arrives
  bool injecting_ = false;      // an answer is being performed: its events are wanted
  bool updating_ = false;       // model -> widgets in progress: signals are not a person's
  bool delivering_ = false;  // a key on its way to a widget after the dialog's filter let it pass
  bool resizable_ = false;
  bool persistent_ = false;
  QRect placed_;         // the frame last given to the window: a window a person moved stays there
  bool opened_ = false;  // shown at least once
  StrayInput stray_;     // input meant for the dialog before this one
  std::unique_ptr<WindowKeeper> keeper_;  // a modal dialog stays on screen
  std::uint64_t fronted_ = 0;             // the model's front requests already carried out
  std::vector<std::uint64_t> fitKey_;     // what the last fit depended on
  Fitted fitted_;
  QTimer frameTimer_;                // a drawing put off to the end of the frame
  std::function<void()> drawLater_;  // what it then does
};

}  // namespace toolkit::qt
