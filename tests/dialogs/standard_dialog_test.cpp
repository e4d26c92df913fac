// Mosa_Dialog end to end through the dispatcher: what a person's clicks and keys return, and what
// the window showed while they did.
#include <fstream>
#include <iterator>

#include "dialog_fixture.h"
#include "frame/frame.h"
#include "host_fixture.h"
#include "icons/icons.h"
#include "model/state.h"

using dialogtest::DialogTest;
using dialogtest::item;

namespace {
constexpr short kDialog = 4302;
constexpr short kSetPosition = 4316;
constexpr short kGetButton = 4304;
}  // namespace

TEST_P(DialogTest, FourButtonsAndTheThirdIsClicked) {
  answers({"click 3"});
  EXPECT_EQ(
      call(kDialog, {"-CautionIcon", "Save the changes?", "Save", "Cancel", "Don't Save", "Help"}),
      "3");
  EXPECT_EQ(call(kGetButton, {""}), "3");
  auto open = events("open");
  ASSERT_EQ(open.size(), 1u);
  EXPECT_EQ(open[0]["dialog"], 24272);
  for (int n = 1; n <= 4; ++n) EXPECT_EQ(item(open[0], n)["visible"], true);
  EXPECT_EQ(item(open[0], 1)["text"], "Save");
  EXPECT_EQ(item(open[0], 1)["default"], true);
  EXPECT_EQ(item(open[0], 3)["text"], "Don't Save");
  EXPECT_EQ(item(open[0], 5)["text"], "Save the changes?");
  EXPECT_EQ(item(open[0], 6)["icon"], "caution");
  EXPECT_EQ(events("close").size(), 1u);
}

TEST_P(DialogTest, AHiddenButtonKeepsTheOthersInPlace) {
  answers({"click 3"});
  EXPECT_EQ(call(kDialog, {"", "Message", "One", "", "Three"}), "3");
  auto open = events("open");
  ASSERT_EQ(open.size(), 1u);
  EXPECT_EQ(item(open[0], 2)["visible"], false);
  EXPECT_EQ(item(open[0], 4)["visible"], false);
  EXPECT_EQ(item(open[0], 3)["visible"], true);
  EXPECT_EQ(item(open[0], 3)["rect"],
            nlohmann::json::parse("[140,106,228,134]"));  // the template's place
  EXPECT_TRUE(item(open[0], 6)["icon"].is_null());
}

TEST_P(DialogTest, ReturnAndEnterAlwaysGiveOne) {
  answers({"key Return"});
  EXPECT_EQ(call(kDialog, {"-DefaultButton3", "Message", "A", "B", "C"}), "1");
  auto open = events("open");
  EXPECT_EQ(item(open[0], 3)["default"], true);
  answers({"key Enter"});
  EXPECT_EQ(call(kDialog, {"-DefaultButton2", "Message", "A", "B"}), "1");
}

TEST_P(DialogTest, EscapeNeverClosesIt) {
  answers({"key Escape", "key Escape", "click 2"});
  EXPECT_EQ(call(kDialog, {"-StopOnESC", "Message", "A", "B"}), "2");
  EXPECT_EQ(events("state").size(), 3u);  // still open after both escapes
  answers({"key Escape", "click 1"});
  EXPECT_EQ(call(kDialog, {"", "Message", "A", "B"}), "1");
}

TEST_P(DialogTest, ReturnButtonTextStillGivesTheNumber) {
  answers({"click 2"});
  EXPECT_EQ(call(kDialog, {"-ReturnButtonText", "Message", "Yes", "No"}), "2");
}

TEST_P(DialogTest, ButtonNeedingASelectionStaysDisabled) {
  answers({"click 2", "key a", "click 1"});
  EXPECT_EQ(call(kDialog, {"-Button2NeedsSelection", "Message", "A", "B"}), "1");
  for (const auto& state : events("state")) EXPECT_EQ(item(state, 2)["enabled"], false);
}

TEST_P(DialogTest, InputOrPasswordAnywhereIsRefused) {
  answers({});
  EXPECT_EQ(call(kDialog, {"-input", "Message", "A"}), "$$-4243");
  EXPECT_EQ(call(kDialog, {"-dialogName=Input Needed.", "Message"}), "$$-4243");
  EXPECT_EQ(call(kDialog, {"xPASSWORDx", "Message"}), "$$-4243");
  EXPECT_EQ(call(kDialog, {"-userpassword", "Message"}), "$$-4243");
  EXPECT_TRUE(trace().empty());  // nothing was shown
  EXPECT_FALSE(toolkit::sessionStopped());
}

TEST_P(DialogTest, OneShotPositionPlacesOnlyTheNextDialog) {
  answers({"click 1", "click 1", "click 1", "click 1"});
  EXPECT_EQ(call(kSetPosition, {"-once", "100", "50"}), "0");
  EXPECT_EQ(call(kDialog, {"", "First"}), "1");
  EXPECT_EQ(call(kDialog, {"", "Second"}), "1");
  EXPECT_EQ(call(kSetPosition, {"-all", "30", "40"}), "0");
  EXPECT_EQ(call(kDialog, {"", "Third"}), "1");
  EXPECT_EQ(call(kDialog, {"", "Fourth"}), "1");
  auto open = events("open");
  ASSERT_EQ(open.size(), 4u);
  EXPECT_EQ(open[0]["window"][0], 100);
  EXPECT_EQ(open[0]["window"][1], 50);
  EXPECT_NE(open[1]["window"][0], 100);  // its default place again
  EXPECT_EQ(open[2]["window"][0], 30);
  EXPECT_EQ(open[3]["window"][1], 40);
}

TEST_P(DialogTest, NoTitlesGiveOneOkButtonAndEachIconShows) {
  answers({"click 1", "click 1", "click 1", "click 1"});
  EXPECT_EQ(call(kDialog, {"-NoteIcon", "Done."}), "1");
  EXPECT_EQ(call(kDialog, {"-StopIcon", "Stopped."}), "1");
  EXPECT_EQ(call(kDialog, {"-CustomIcon", "No picture stored."}), "1");
  EXPECT_EQ(call(kDialog, {"-CautionIcon -NoteIcon", "Note wins."}), "1");
  auto open = events("open");
  ASSERT_EQ(open.size(), 4u);
  EXPECT_EQ(item(open[0], 1)["text"], "OK");
  EXPECT_EQ(item(open[0], 2)["visible"], false);
  EXPECT_EQ(item(open[0], 6)["icon"], "note");
  EXPECT_EQ(item(open[1], 6)["icon"], "stop");
  EXPECT_TRUE(item(open[2], 6)["icon"].is_null());
  EXPECT_EQ(item(open[3], 6)["icon"], "note");
}

TEST_P(DialogTest, TooFewArgumentsAndAMissingTemplate) {
  answers({});
  EXPECT_EQ(call(kDialog, {"-NoteIcon"}), "$$-50");
  mosa_test::TempBundle bare;  // strings but no dialog templates
  for (const char* lang : {"en.lproj/Mosa7.strings", "en.lproj/Alerts.strings"}) {
    std::ifstream in(std::string(MOSA_TEST_BUNDLE) + "/Resources/" + lang);
    bare.write(lang, std::string(std::istreambuf_iterator<char>(in), {}));
  }
  mosa_test::shutdown();
  ASSERT_EQ(mosa_test::init(60, bare.path()), 51);
  EXPECT_EQ(call(kDialog, {"", "Nowhere to show this"}), "0");
  EXPECT_EQ(call(kGetButton, {""}), "0");
  mosa_test::shutdown();
  ASSERT_EQ(mosa_test::init(60), 51);
}

TEST_P(DialogTest, RunningOutOfAnswersStopsTheRun) {
  answers({"key Escape"});
  EXPECT_EQ(call(kDialog, {"", "Waiting", "A"}), "0");
  EXPECT_TRUE(toolkit::sessionStopped());
  EXPECT_NE(toolkit::stopMessage().find("24272"), std::string::npos);
  EXPECT_EQ(events("close").size(), 1u);
}

TEST_P(DialogTest, AlertsGoThroughTheToolkit) {
  answers({});
  XP_DisplayMessage(24213, -4243);
  auto lines = trace();
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0], nlohmann::json::parse(R"({"ev":"alert","id":24213,"number":-4243})"));
}

INSTANTIATE_TEST_SUITE_P(Backends, DialogTest,
                         ::testing::Values(toolkit::Backend::Headless, toolkit::Backend::Qt),
                         dialogtest::backendName);
