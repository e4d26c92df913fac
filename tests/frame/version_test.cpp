// Mosa_Version through the dispatcher, as a script calls it.
#include <gtest/gtest.h>

#include "frame/frame.h"
#include "plugin_fixture.h"

using namespace mosa_test;

TEST(Version, AnswersByItsSwitches) {
  struct Case {
    short id;
    std::vector<std::string> args;
    const char* result;
  };
  const Case cases[] = {
      {0, {}, "Zelk Mosa Plug-In 4.5.2"},
      {1, {""}, "Zelk Mosa Plug-In 4.5.2"},
      {1, {"-getversionnumber"}, "4520"},
      {1, {"-GetVersionNumber"}, "4520"},
      {1, {"-getversionstring"}, "Zelk Mosa Plug-In 4.5.2"},
      {1, {"-getversionstring -getversionnumber"}, "4520"},
      {1, {"please-getversionnumberquickly"}, "4520"},
      {0, {"-getversionnumber"}, "4520"},
      {1, {"   "}, "$$-4243"},
      {1, {"-version"}, "$$-4243"},
      {1, {"-getversion"}, "$$-4243"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.args.empty() ? "(none)" : c.args[0]);
    EXPECT_EQ(callFunction(c.id, c.args), c.result);
  }
}

TEST(Version, DebugSwitchesSetTheFlagAndAnswerZero) {
  EXPECT_EQ(callFunction(1, {"-DebugTxtsON"}), "0");
  EXPECT_EQ(gMosaDebugTxts, 1);
  EXPECT_EQ(callFunction(1, {"-debugtxtsoff"}), "0");
  EXPECT_EQ(gMosaDebugTxts, 0);
}
