// The session: clock and deadlines, the stop when answers run out, beeps and alerts in the trace,
// and templates read from their files.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "toolkit_test_support.h"

using tktest::BackendTest;
using toolkit::Event;

TEST_P(BackendTest, DeadlinesEndWaitsAndWaitAnswersPassTime) {
  configure({"wait 2", "click 1", "wait 100"});
  auto d = toolkit::DialogWindow::create(tktest::everyKindTemplate());
  ASSERT_TRUE(d);
  d->show();
  const toolkit::Tick start = toolkit::tickCount();
  Event e = d->nextEvent(start + 30);
  EXPECT_EQ(e.type, Event::Type::Click);  // the wait was shorter than the deadline
  EXPECT_GE(toolkit::tickCount(), start + 2);
  e = d->nextEvent(start + 6);  // "wait 100" is cut short by the deadline
  EXPECT_EQ(e.type, Event::Type::Null);
  EXPECT_GE(toolkit::tickCount(), start + 6);
  e = d->nextEvent(toolkit::tickCount() + 3);  // no answer left but a deadline: time runs to it
  EXPECT_EQ(e.type, Event::Type::Null);
  EXPECT_FALSE(toolkit::sessionStopped());
}

TEST_P(BackendTest, NoAnswerLeftStopsTheRun) {
  configure({"click 2"});
  auto d = toolkit::DialogWindow::create(tktest::everyKindTemplate());
  ASSERT_TRUE(d);
  d->show();
  EXPECT_EQ(d->nextEvent().item, 2);
  EXPECT_THROW(d->nextEvent(), toolkit::NoAnswerLeft);
  EXPECT_TRUE(toolkit::sessionStopped());
  EXPECT_NE(toolkit::stopMessage().find("9001"), std::string::npos);
  EXPECT_THROW(d->nextEvent(), toolkit::NoAnswerLeft);  // a stopped run stays stopped
}

// The ready observer hears of each shown window once, when it first waits for input.
TEST_P(BackendTest, TheReadyObserverHearsOfEachShownWindowOnce) {
  configure({"wait 2", "click 2", "click 1"});
  int ready = 0;
  toolkit::setReadyObserver([&] { ++ready; });
  auto hidden = toolkit::DialogWindow::create(tktest::everyKindTemplate());
  ASSERT_TRUE(hidden);
  // Never shown: not ready for a person, and nothing in it can be clicked.
  EXPECT_EQ(hidden->nextEvent(toolkit::tickCount() + 1).type, Event::Type::Null);
  EXPECT_EQ(ready, 0);
  auto d = toolkit::DialogWindow::create(tktest::everyKindTemplate());
  d->show();
  EXPECT_EQ(ready, 0);
  EXPECT_EQ(d->nextEvent().item, 2);
  EXPECT_EQ(ready, 1);
  EXPECT_EQ(d->nextEvent().item, 1);
  EXPECT_EQ(ready, 1);
  toolkit::setReadyObserver(nullptr);
}

TEST_P(BackendTest, BeepsAndAlertsAreTraced) {
  configure({});
  toolkit::beep();
  toolkit::showAlert(24213, "Initialisation failed (-4243).", -4243);
  auto lines = trace();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0]["ev"], "beep");
  EXPECT_TRUE(lines[0]["tick"].is_number());
  EXPECT_EQ(lines[1], nlohmann::json::parse(R"({"ev":"alert","id":24213,"number":-4243})"));
}

// (BackendTest is instantiated for both backends in dialog_test.cpp.)

TEST(HeadlessClock, MovesOnlyWhenSomethingWaits) {
  toolkit::SessionOptions options;
  options.backend = toolkit::Backend::Headless;
  toolkit::configureSession(options);
  const toolkit::Tick start = toolkit::tickCount();
  EXPECT_EQ(toolkit::tickCount(), start);
  toolkit::delay(120);
  EXPECT_EQ(toolkit::tickCount(), start + 120);
  toolkit::delay(0);
  EXPECT_EQ(toolkit::tickCount(), start + 120);
  toolkit::endSession();
}

TEST(Templates, ReadFromJsonAndRefuseBrokenFiles) {
  auto dir =
      std::filesystem::temp_directory_path() / ("mosa-templates-" + std::to_string(::getpid()));
  std::filesystem::create_directories(dir / "dialogs");
  {
    std::ofstream(dir / "dialogs" / "24272.json")
        << R"({"id":24272,"width":420,"height":150,"title":"","items":[)"
        << R"({"n":1,"kind":"button","rect":[330,110,400,130],"text":"OK"},)"
        << R"({"n":6,"kind":"icon","rect":[20,20,52,52]}]})";
    std::ofstream(dir / "dialogs" / "1.json") << R"({"id":1,"width":420)";
    std::ofstream(dir / "dialogs" / "2.json")
        << R"({"id":2,"width":10,"height":10,"items":[{"n":1,"kind":"knob","rect":[0,0,1,1]}]})";
  }
  auto t = toolkit::loadTemplate(dir.string(), 24272);
  ASSERT_TRUE(t);
  EXPECT_EQ(t->width, 420);
  ASSERT_EQ(t->items.size(), 2u);
  EXPECT_EQ(t->items[0].text, u"OK");
  EXPECT_EQ(t->items[1].kind, toolkit::ItemKind::Icon);
  EXPECT_EQ(t->items[1].rect, (toolkit::Rect{20, 20, 52, 52}));
  EXPECT_FALSE(toolkit::loadTemplate(dir.string(), 1));
  EXPECT_FALSE(toolkit::loadTemplate(dir.string(), 2));
  EXPECT_FALSE(toolkit::loadTemplate(dir.string(), 3));
  std::filesystem::remove_all(dir);
}
