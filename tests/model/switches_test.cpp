// Switch parsing: what each word in a call's first argument turns into in the switch record.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "icons/icons.h"
#include "model/switches.h"
#include "plugin_fixture.h"
#include "util/cstring.h"

using namespace mosa_test;

namespace {

class SwitchesTest : public ::testing::Test {
 protected:
  void SetUp() override { ResetModelState(); }
  void TearDown() override { ResetModelState(); }

  ParSwitches7Tag Parse(const std::string& switches, std::int16_t kind = kDlgKindInput) {
    ParSwitches7Tag rec;
    std::memset(&rec, 0xA5, sizeof rec);  // every field must be written
    Zk7ParseSwitches(switches.c_str(), kind, &rec);
    return rec;
  }
};

TEST_F(SwitchesTest, EmptySwitchesGiveTheDefaults) {
  XP7_CStrToUniStrSimple("Stored title", gDefaultDialogTitleUNI, 255);
  const ParSwitches7Tag rec = Parse("");
  EXPECT_EQ(rec.returnButtonText, 0);
  EXPECT_EQ(rec.returnListText, 0);
  for (unsigned char flag : rec.buttonNeedsInput) EXPECT_EQ(flag, 0);
  EXPECT_EQ(rec.defaultButton, 1);
  EXPECT_EQ(rec.startField, -42);
  EXPECT_EQ(Row(rec.dialogTitle), u"Stored title");
  for (int n = 0; n < kMosaEntries; ++n) {
    EXPECT_EQ(rec.bullet[n], 0);
    EXPECT_EQ(rec.fieldKind[n], kFieldKindText);
  }
  EXPECT_EQ(rec.removeBulletText, 1);
  EXPECT_EQ(rec.ignoreEscape, 1);
  EXPECT_EQ(rec.icon, 32042);
}

TEST_F(SwitchesTest, IconsFirstMatchWinsInTheFixedOrder) {
  struct Case {
    const char* switches;
    std::int32_t withServices;
    std::int32_t classic;
  };
  const Case cases[] = {
      {"-noteicon", 0x6E6F7465, 1},
      {"-CAUTIONICON", 0x63617574, 2},
      {"-StopIcon", 0x73746F70, 0},
      {"-CustomIcon", 32001, 32001},
      {"-StopIcon -CautionIcon -NoteIcon", 0x6E6F7465, 1},
      {"-CustomIcon -StopIcon", 0x73746F70, 0},
      {"-CustomIcon -CautionIcon", 0x63617574, 2},
      {"-Note Icon", 32042, 32042},
      {"", 32042, 32042},
  };
  for (const Case& c : cases) {
    gIconServicesAvailable = 1;
    EXPECT_EQ(Parse(c.switches).icon, c.withServices) << c.switches;
    gIconServicesAvailable = 0;
    EXPECT_EQ(Parse(c.switches).icon, c.classic) << c.switches;
  }
}

TEST_F(SwitchesTest, DefaultButtonTakesTheFirstInNumberOrder) {
  const std::pair<const char*, int> cases[] = {
      {"-DefaultButton3 -DefaultButton1", 1},
      {"-defaultbutton4", 4},
      {"-DefaultButton2-DefaultButton3", 2},
      {"-DefaultButton5", 1},
      {"-DefaultButton0", 1},
      {"-DefaultButton12", 1},
  };
  for (const auto& [switches, button] : cases)
    EXPECT_EQ(Parse(switches).defaultButton, button) << switches;
}

TEST_F(SwitchesTest, ButtonFlagsDependOnTheDialogKind) {
  ParSwitches7Tag big = Parse("-Button1NeedsText -Button4NeedsSelection", kDlgKindBigInput);
  EXPECT_EQ(big.buttonNeedsInput[0], 1);
  EXPECT_EQ(big.buttonNeedsInput[3], 0);
  for (std::int16_t kind : {kDlgKindStandard, kDlgKindFlash, kDlgKindList, kDlgKindInput}) {
    ParSwitches7Tag rec =
        Parse("-Button1NeedsText -button2needsselection -Button4NeedsSelection", kind);
    EXPECT_EQ(rec.buttonNeedsInput[0], 0) << kind;
    EXPECT_EQ(rec.buttonNeedsInput[1], 1) << kind;
    EXPECT_EQ(rec.buttonNeedsInput[2], 0) << kind;
    EXPECT_EQ(rec.buttonNeedsInput[3], 1) << kind;
  }
}

TEST_F(SwitchesTest, StartFieldNeedsANumber) {
  const std::pair<const char*, int> cases[] = {
      {"-StartField3", 3},          {"-StartField", -42},
      {"-StartField -popup1", -42}, {"-startfield=7", 7},
      {"-StartField=x", -42},       {"-StartField=70000", 4464},
      {"-StartField-5", -42},       {"-StartField 2 -StartField 4", 2},
  };
  for (const auto& [switches, field] : cases)
    EXPECT_EQ(Parse(switches).startField, field) << switches;
}

TEST_F(SwitchesTest, BulletsAndFieldKindsPerField) {
  ParSwitches7Tag rec = Parse("-popup12 -Checkbox4 -popup3 -Checkbox3 -Bullet9 -bullet25");
  // "-popup1" is found inside "-popup12"; "-popup2" is not.
  EXPECT_EQ(rec.fieldKind[0], kFieldKindPopup);
  EXPECT_EQ(rec.fieldKind[1], kFieldKindText);
  EXPECT_EQ(rec.fieldKind[2], kFieldKindPopup);  // a pop-up wins over a check box
  EXPECT_EQ(rec.fieldKind[3], kFieldKindCheckbox);
  for (int n : {1, 3, 4, 5, 6, 7}) EXPECT_EQ(rec.bullet[n - 1], 0) << n;
  EXPECT_EQ(rec.bullet[1], 1);
  EXPECT_EQ(rec.bullet[8], 1);
}

TEST_F(SwitchesTest, TitleComesFromDialogNameUpToTheFirstFullStop) {
  XP7_CStrToUniStrSimple("Default", gDefaultDialogTitleUNI, 255);
  EXPECT_EQ(Row(Parse("-dialogName=Orders.2024").dialogTitle), u"Orders");
  EXPECT_EQ(Row(Parse("-StopIcon -DIALOGNAME=Sales report").dialogTitle), u"Sales report");
  EXPECT_EQ(Row(Parse("-dialogName=.hidden").dialogTitle), u"");
  EXPECT_EQ(Row(Parse("-dialogName=").dialogTitle), u"");
  EXPECT_EQ(Row(Parse("-dialogName Orders").dialogTitle), u"Default");
  // The switches are Mac OS Roman: 0x8E is "é".
  EXPECT_EQ(Row(Parse("-dialogName=Caf\x8E.").dialogTitle), u"Caf\u00E9");
  // At most 254 characters are taken from the switches.
  const std::string longName(400, 'n');
  EXPECT_EQ(Row(Parse("-dialogName=" + longName).dialogTitle), std::u16string(254, u'n'));
}

TEST_F(SwitchesTest, BigInputSizeAndLengthSwitches) {
  struct Case {
    const char* switches;
    std::int16_t width, height;
    std::int32_t maxChars, minChars;
    std::int16_t err;
  };
  const Case cases[] = {
      {"", 400, 300, 64000, 1, 0},
      {"-Width=500 -Height 200", 500, 200, 64000, 1, 0},
      {"-Height=200-Width=300", 300, 200, 64000, 1, 0},
      {"-Width-Height=200", 400, 200, 64000, 1, 0},
      {"-MaxChars=64000", 400, 300, 64000, 1, 0},
      {"-MaxChars=64001", 400, 300, 64000, 1, -92},
      {"-MaxChars=100 -MinChars=10", 400, 300, 100, 10, 0},
      {"-MinChars=1", 400, 300, 64000, 1, -92},
      {"-MinChars=0", 400, 300, 64000, 1, -92},
      {"-MinChars=5 -MaxChars=3", 400, 300, 3, 1, -92},
      {"-MinChars=3 -MaxChars=3", 400, 300, 3, 3, 0},
      {"-MaxChars=99999999999 -MinChars=2", 400, 300, 64000, 2, -92},
      {"-MaxChars=abc", 400, 300, 64000, 1, 0},
  };
  for (const Case& c : cases) {
    std::int16_t width = 400, height = 300;
    std::int32_t maxChars = -1, minChars = -1;
    EXPECT_EQ(ZkParseBTSwitches(c.switches, &width, &height, &maxChars, &minChars), c.err)
        << c.switches;
    EXPECT_EQ(width, c.width) << c.switches;
    EXPECT_EQ(height, c.height) << c.switches;
    EXPECT_EQ(maxChars, c.maxChars) << c.switches;
    EXPECT_EQ(minChars, c.minChars) << c.switches;
  }
}

TEST_F(SwitchesTest, DelayTimeDefaultsAndCaps) {
  EXPECT_EQ(Zk7ParseDelayTime("", 60, 600), 60u);
  EXPECT_EQ(Zk7ParseDelayTime("0", 60, 600), 60u);
  EXPECT_EQ(Zk7ParseDelayTime("abc", 60, 600), 60u);
  EXPECT_EQ(Zk7ParseDelayTime(" 90", 60, 600), 90u);
  EXPECT_EQ(Zk7ParseDelayTime("9000", 60, 600), 600u);
  EXPECT_EQ(Zk7ParseDelayTime("-5", 60, 600), 600u);  // negative counts as very large
  EXPECT_EQ(Zk7ParseDelayTime("0", 900, 600), 600u);
}

}  // namespace
