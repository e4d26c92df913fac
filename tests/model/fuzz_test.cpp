// Random switches and random argument vectors, fed to every setter and getter: the answer is
// always "0", the value asked for, or "$$" and a negative number, and the state stays well formed.
#include <gtest/gtest.h>

#include <random>
#include <regex>
#include <set>
#include <string>

#include "fmwrapper/host_api.h"
#include "model/switches.h"
#include "plugin_fixture.h"

using namespace mosa_test;

namespace {

const char* const kWords[] = {"-popup",
                              "-text",
                              "-NoSelection",
                              "-once",
                              "-all",
                              "-default",
                              "-Animation42",
                              "-dialogName=",
                              "-progressbardefunctticks",
                              "-StartField",
                              "-MaxChars",
                              "-MinChars",
                              "-Width",
                              "-Bullet",
                              "-Checkbox",
                              "-DefaultButton",
                              "-StopOnESC",
                              "-NoteIcon",
                              "-CustomIcon",
                              ".",
                              "=",
                              " ",
                              "-"};

std::string RandomSwitches(std::mt19937& rng) {
  std::uniform_int_distribution<int> length(0, 1600);
  std::uniform_int_distribution<int> pick(0, 9);
  std::uniform_int_distribution<int> byte(1, 255);  // a host text cannot carry a zero byte
  std::uniform_int_distribution<int> word(0, std::size(kWords) - 1);
  std::uniform_int_distribution<int> digits(0, 99999);
  const int target = length(rng);
  std::string s;
  while (static_cast<int>(s.size()) < target) {
    const int p = pick(rng);
    if (p < 4)
      s += kWords[word(rng)];
    else if (p < 6)
      s += std::to_string(digits(rng) % (p == 4 ? 12 : 100000));
    else
      s += static_cast<char>(byte(rng));
  }
  return s;
}

Arg RandomArg(std::mt19937& rng) {
  std::uniform_int_distribution<int> kind(0, 3);
  switch (kind(rng)) {
    case 0:
      return static_cast<std::int32_t>(rng());
    case 1:
      return std::string(std::uniform_int_distribution<int>(0, 400)(rng), 'x');
    case 2:
      return std::to_string(std::uniform_int_distribution<int>(-100, 100)(rng));
    default:
      return MacRoman(RandomSwitches(rng));
  }
}

void ExpectStateWellFormed() {
  auto terminated = [](const UniChar* row) {
    for (int i = 0; i < kMosaRowUnits; ++i)
      if (row[i] == 0) return true;
    return false;
  };
  for (int n = 0; n < kMosaEntries; ++n) {
    ASSERT_TRUE(terminated(gLabelTextsUNI[n]));
    ASSERT_TRUE(terminated(gInputTextUNI[n]));
    ASSERT_TRUE(gItemSelected[n] == 1 || gItemSelected[n] == -42);
  }
  ASSERT_TRUE(terminated(gDefaultDialogTitleUNI));
  ASSERT_TRUE(terminated(gInitialSelectStr));
  ASSERT_LE(gCustomWindPosition, kPositionAlways);
  ASSERT_LE(gAnimateWindPosition, 1);
  ASSERT_NE(gProgressDefunctTicks, 0u);
}

TEST(ModelFuzz, RandomCallsNeverBreakTheContract) {
  ResetModelState();
  const std::regex okOrError(R"(0|\$\$-[0-9]+)");
  const Zk7Handler setters[] = {ZkMosa7_DoSetLabels,   ZkMosa7_DoSetInput,
                                ZkMosa7_DoSetPopup,    ZkMosa7_DoSetDialogTitle,
                                ZkMosa7_DoSetPosition, ZkMosa7_DoSetPreference,
                                ZkMosa7_DoSetListInput};
  std::mt19937 rng(20261123);
  for (int round = 0; round < 250; ++round) {
    std::vector<Arg> args;
    const int count = std::uniform_int_distribution<int>(0, 12)(rng);
    if (count > 0) args.push_back(MacRoman(RandomSwitches(rng)));
    for (int i = 1; i < count; ++i) args.push_back(RandomArg(rng));

    for (Zk7Handler setter : setters) {
      const std::string answer = callHandler(setter, args);
      ASSERT_TRUE(std::regex_match(answer, okOrError)) << round << ": " << answer;
      ExpectStateWellFormed();
    }

    // Getters answer a row's text, a pop-up's text, or "$$-50".
    std::set<std::string> inputs{"$$-50"}, popups{"$$-50"};
    for (int n = 0; n < kMosaEntries; ++n) {
      inputs.insert(toUtf8(Row(gInputTextUNI[n])));
      popups.insert(toUtf8(*gPopupTxt(n)));
    }
    if (gHistoryTxt_Stored) inputs.insert(toUtf8(*gHistoryTxt()));
    EXPECT_TRUE(inputs.count(callHandler(ZkMosa7_DoGetInput, args))) << round;
    EXPECT_TRUE(popups.count(callHandler(ZkMosa7_DoGetPopup, args))) << round;
    const std::string button = callHandler(ZkMosa7_DoGetButton, args);
    EXPECT_EQ(button, std::to_string(gLastButtonNumberClicked)) << round;

    ParSwitches7Tag rec;
    Zk7ParseSwitches(RandomSwitches(rng).c_str(), static_cast<std::int16_t>(round % 12), &rec);
    ASSERT_GE(rec.defaultButton, 1);
    ASSERT_LE(rec.defaultButton, 4);
    std::int16_t width = 0, height = 0;
    std::int32_t maxChars = 0, minChars = 0;
    const std::int16_t err =
        ZkParseBTSwitches(RandomSwitches(rng).c_str(), &width, &height, &maxChars, &minChars);
    ASSERT_TRUE(err == 0 || err == -92);
    ASSERT_TRUE(minChars >= 1 && maxChars >= 0 && maxChars <= 64000);
  }
  ResetModelState();
}

}  // namespace

namespace {

// A host call that fails (out of memory, or any other failure) surfaces as an exception from the
// handler, which the dispatcher turns into an error; the handler itself leaks no host object.
TEST(ModelFuzz, HostFailuresLeakNothing) {
  ResetModelState();
  const std::vector<std::pair<Zk7Handler, std::vector<Arg>>> calls = {
      {ZkMosa7_DoSetLabels, {"", "a", "b"}},
      {ZkMosa7_DoSetInput, {"", "a", "b"}},
      {ZkMosa7_DoSetPopup, {"-popup2 -NoSelection", "x\ry"}},
      {ZkMosa7_DoSetDialogTitle, {"", "Title"}},
      {ZkMosa7_DoSetPosition, {"-all", 10, 20}},
      {ZkMosa7_DoSetPreference, {"-progressbardefunctticks", 60}},
      {ZkMosa7_DoSetListInput, {"", "Item"}},
      {ZkMosa7_DoGetButton, {""}},
      {ZkMosa7_DoGetInput, {"-text1"}},
      {ZkMosa7_DoGetPopup, {"-popup2"}},
  };
  for (const auto& [handler, args] : calls) {
    const std::int64_t before = fmwrapper::liveObjects();
    for (std::uint64_t k = 1; k <= 100; ++k) {
      fmwrapper::injectFault(k, k % 2 ? 1 : 2);
      try {
        callHandler(handler, args);
      } catch (const std::exception&) {
      }
      fmwrapper::injectFault(0, 0);
      ExpectStateWellFormed();
      ASSERT_EQ(fmwrapper::liveObjects(), before) << "fault at call " << k;
    }
  }
  ResetModelState();
}

}  // namespace
