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

enum class Default { Enabled, Disabled, Hidden };

struct ItemHitCase {
  const char* what;
  std::int16_t item;
  Default defaultState;  // of button 2, the switches' default
  bool rowSelected;
  bool stopOnEsc;
  bool ends;
  std::int16_t endsAs;
  int beeps;
};

const ItemHitCase kItemHitCases[] = {
    {"Return on an enabled default", kItemReturnKey, Default::Enabled, false, false, true, 2, 0},
    {"Return on a disabled default", kItemReturnKey, Default::Disabled, false, false, false, 0, 0},
    {"Return on a hidden default", kItemReturnKey, Default::Hidden, false, false, false, 0, 1},
    {"double-click on a row", kItemListDoubleClick, Default::Enabled, true, false, true, 2, 0},
    {"double-click, nothing selected", kItemListDoubleClick, Default::Enabled, false, false, false,
     0, 0},
    {"double-click, default disabled", kItemListDoubleClick, Default::Disabled, true, false, false,
     0, 0},
    {"double-click, default hidden", kItemListDoubleClick, Default::Hidden, true, false, false, 0,
     1},
    {"Escape without -StopOnESC", kItemEscape, Default::Enabled, false, false, false, 0, 0},
    {"Escape with -StopOnESC", kItemEscape, Default::Enabled, false, true, true, kItemEscape, 0},
    {"a button", 3, Default::Enabled, false, false, true, 3, 0},
    {"a click in the list", kList, Default::Enabled, true, true, false, 0, 0},
};

TEST_F(SharedRules, ItemHits) {
  for (const ItemHitCase& c : kItemHitCases) {
    SCOPED_TRACE(c.what);
    const int beepsBefore = beeps();
    ParSwitches7Tag sw{};
    sw.defaultButton = 2;
    sw.ignoreEscape = c.stopOnEsc ? 0 : 1;
    dialog_->setItemEnabled(2, c.defaultState == Default::Enabled);
    dialog_->setItemVisible(2, c.defaultState != Default::Hidden);
    dialog_->selectRow(kList, c.rowSelected ? 1 : -1);
    std::int16_t item = c.item;
    EXPECT_EQ(Mac_HandleItemHit(dialog_.get(), &item, &sw), c.ends);
    if (c.ends) {
      EXPECT_EQ(item, c.endsAs);
    }
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
