// The rules all modal dialogs share: which item ends a dialog, what Return, Enter and a
// double-click do with the default button, the needs-selection rule, and where the buttons go when
// a resizable dialog changes size. The list dialog's window is the test bed: it has four buttons
// and a list.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "dialogs/dialog_helpers.h"
#include "toolkit/session.h"

namespace {

constexpr int kList = 5;

class SharedRules : public ::testing::Test {
 protected:
  void SetUp() override {
    trace_ = (std::filesystem::temp_directory_path() /
              ("mosa-shared-rules-" + std::to_string(::getpid()) + ".jsonl"))
                 .string();
    toolkit::SessionOptions options;
    options.backend = toolkit::Backend::Headless;
    options.tracePath = trace_;
    toolkit::configureSession(options);
    auto tmpl = toolkit::loadTemplate(std::string(MOSA_TEST_BUNDLE) + "/Resources", 24266);
    ASSERT_TRUE(tmpl);
    dialog_ = toolkit::DialogWindow::create(*tmpl);
    dialog_->setRows(kList, {u"Red", u"Green", u"Blue"});
    dialog_->moveTo(100, 100);
  }
  void TearDown() override {
    dialog_.reset();
    toolkit::endSession();
    std::filesystem::remove(trace_);
  }
  int beeps() const {
    std::ifstream in(trace_);
    int n = 0;
    for (std::string line; std::getline(in, line);) n += line.find("\"beep\"") != std::string::npos;
    return n;
  }

  std::string trace_;
  std::unique_ptr<toolkit::DialogWindow> dialog_;
};

// Button 2 is the default; how it stands, and whether a row is selected, decide the outcome.
enum Default { kEnabled, kDisabled, kHidden };

struct ItemHitCase {
  std::int16_t item;
  Default defaultButton;
  bool rowSelected, stopOnEsc, ends;
  std::int16_t endsAs;
  int beeps;
};

TEST_F(SharedRules, ItemHits) {
  const ItemHitCase cases[] = {
      {kItemReturnKey, kEnabled, false, false, true, 2, 0},
      {kItemReturnKey, kDisabled, false, false, false, 0, 0},  // waits for the button
      {kItemReturnKey, kHidden, false, false, false, 0, 1},    // no such button: a beep
      {kItemListDoubleClick, kEnabled, true, false, true, 2, 0},
      {kItemListDoubleClick, kEnabled, false, false, false, 0, 0},  // no row: nothing
      {kItemListDoubleClick, kDisabled, true, false, false, 0, 0},
      {kItemListDoubleClick, kHidden, true, false, false, 0, 1},
      {kItemEscape, kEnabled, false, false, false, 0, 0},
      {kItemEscape, kEnabled, false, true, true, kItemEscape, 0},
      {3, kEnabled, false, false, true, 3, 0},
      {kList, kEnabled, true, true, false, 0, 0},
  };
  for (const ItemHitCase& c : cases) {
    SCOPED_TRACE(testing::Message() << "case " << &c - cases);
    const int beepsBefore = beeps();
    ParSwitches7Tag sw{};
    sw.defaultButton = 2;
    sw.ignoreEscape = c.stopOnEsc ? 0 : 1;
    dialog_->setItemEnabled(2, c.defaultButton == kEnabled);
    dialog_->setItemVisible(2, c.defaultButton != kHidden);
    dialog_->selectRow(kList, c.rowSelected ? 1 : -1);
    std::int16_t item = c.item;
    EXPECT_EQ(Mac_HandleItemHit(dialog_.get(), &item, &sw), c.ends);
    EXPECT_EQ(item, c.ends ? c.endsAs : c.item);
    EXPECT_EQ(beeps() - beepsBefore, c.beeps);
  }
}

TEST_F(SharedRules, AnyOtherItemReappliesTheNeedsSelectionRule) {
  ParSwitches7Tag sw{};
  sw.defaultButton = 1;
  sw.buttonNeedsInput[0] = sw.buttonNeedsInput[2] = 1;
  for (int row : {-1, 0, -1}) {
    dialog_->selectRow(kList, row);
    std::int16_t item = kList;
    EXPECT_FALSE(Mac_HandleItemHit(dialog_.get(), &item, &sw));
    EXPECT_EQ(dialog_->itemEnabled(1), row >= 0);
    EXPECT_EQ(dialog_->itemEnabled(3), row >= 0);
    EXPECT_TRUE(dialog_->itemEnabled(2));  // needs nothing: left alone
  }
  // Return follows the rule: nothing selected, the default waits.
  std::int16_t item = kItemReturnKey;
  EXPECT_FALSE(Mac_HandleItemHit(dialog_.get(), &item, &sw));
}

TEST_F(SharedRules, ButtonsKeepTheirDistanceFromTheBottomRightCorner) {
  const toolkit::Rect button1 = dialog_->itemRect(1);
  const toolkit::Rect button4 = dialog_->itemRect(4);
  const toolkit::Rect list = dialog_->itemRect(kList);
  Mac_MoveButtons(dialog_.get(), 480, 282, 600, 320);
  EXPECT_EQ(dialog_->itemRect(1), (toolkit::Rect{button1.left + 120, button1.top + 38,
                                                 button1.right + 120, button1.bottom + 38}));
  EXPECT_EQ(dialog_->itemRect(4).left, button4.left + 120);
  EXPECT_EQ(dialog_->itemRect(kList), list);  // not a button
  Mac_MoveButtons(dialog_.get(), 600, 320, 480, 282);
  EXPECT_EQ(dialog_->itemRect(1), button1);
  EXPECT_EQ(dialog_->itemRect(4), button4);
}

struct ResizeCase {
  int left, width, height;
  bool hasButton4;
  int laidOutWidth, laidOutHeight;
};

TEST_F(SharedRules, ResizeClampsToTheScreenAndTheLeastSize) {
  // The headless screen is 800 by 800; the window opens 480 by 282.
  const ResizeCase cases[] = {
      {100, 100, -1, true, 480, 282},     // too narrow; -1 keeps the height
      {100, 100, -1, false, 360, 282},    // no fourth button: narrower allowed
      {100, -1, 150, true, 480, 200},     // -1 keeps the width; too low
      {100, 600, 400, false, 600, 400},   // fits as asked
      {100, 2000, 2000, true, 692, 672},  // past the edges: the room left less 8 and 28
      {100, 700, 700, true, 700, 700},    // reaching the edges exactly is not past them
      {500, 400, -1, true, 480, 282},     // cut to 292 by the edge, then the least width wins
  };
  static int laidOut[2];
  for (const ResizeCase& c : cases) {
    SCOPED_TRACE(testing::Message() << c.left << ": " << c.width << " x " << c.height);
    dialog_->moveTo(c.left, 100);
    laidOut[0] = laidOut[1] = 0;
    Mac_ResizeMyDialog(
        dialog_.get(), c.width, c.height, c.hasButton4,
        [](toolkit::DialogWindow*, int w, int h) { laidOut[0] = w, laidOut[1] = h; });
    EXPECT_EQ(laidOut[0], c.laidOutWidth);
    EXPECT_EQ(laidOut[1], c.laidOutHeight);
  }
}

}  // namespace
