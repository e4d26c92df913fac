// Result parts of a dialog (button, list item, separator) and the record of the last dialog.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "model/history.h"
#include "model/results.h"
#include "model/state.h"
#include "plugin_fixture.h"

using namespace mosa_test;

namespace {

class ResultsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ResetModelState();
    Zk7ParseSwitches("", kDlgKindInput, &plain);
    Zk7ParseSwitches("-ReturnButtonText -ReturnListText", kDlgKindInput, &texts);
    const char* titles[kMosaButtons] = {"OK", "Cancel", "", "Später"};
    for (int b = 0; b < kMosaButtons; ++b) {
      const std::u16string u = toU16(titles[b]);
      std::memcpy(uTitles[b], u.c_str(), (u.size() + 1) * sizeof(UniChar));
    }
  }
  void TearDown() override { ResetModelState(); }

  ParSwitches7Tag plain{};
  ParSwitches7Tag texts{};
  UniChar uTitles[kMosaButtons][kMosaRowUnits] = {};
};

TEST_F(ResultsTest, ButtonPartInUnicodeReplaces) {
  fmx::TextAutoPtr result;
  result->Assign("previous", fmx::Text::kEncoding_ASCII_Mac);
  std::int16_t button = 4;
  Zk7MakeButtonResultUNI(texts, &button, uTitles, result);
  EXPECT_EQ(toUtf8(*result), "Später");
  Zk7MakeButtonResultUNI(plain, &button, uTitles, result);
  EXPECT_EQ(toUtf8(*result), "4");
  button = kItemEscape;
  Zk7MakeButtonResultUNI(texts, &button, uTitles, result);
  EXPECT_EQ(button, 0);
  EXPECT_EQ(toUtf8(*result), "0");
  button = 3;
  Zk7MakeButtonResultUNI(texts, &button, uTitles, result);
  EXPECT_EQ(toUtf8(*result), "");
}

TEST_F(ResultsTest, ListPartAppendsNumberOrText) {
  fmx::TextAutoPtr txt;
  txt->Assign("2", fmx::Text::kEncoding_ASCII_Mac);
  Zk7MakeListResultUNI(plain, 12, reinterpret_cast<const UniChar*>(u"Zwölf"), txt);
  EXPECT_EQ(toUtf8(*txt), "212");
  Zk7MakeListResultUNI(texts, 12, reinterpret_cast<const UniChar*>(u"Zwölf"), txt);
  EXPECT_EQ(toUtf8(*txt), "212Zwölf");
  EXPECT_STREQ(Zk7GetSeparator(), "|");
}

TEST_F(ResultsTest, HistoryOverwritesRowsOneAndTwoAndClearsTheRest) {
  callHandler(ZkMosa7_DoSetInput, {"", "1", "2", "3", "4", "5", "6", "7", "8", "9"});
  gHistoryTxt()->Assign("old big text", fmx::Text::kEncoding_ASCII_Mac);
  gHistoryTxt_Stored = 1;
  // Mac OS Roman bytes: 0x8A is "ä".
  EXPECT_EQ(Zk7SaveDialogHistory("N\x8A"
                                 "chste",
                                 4, "first", std::string(300, 'v').c_str()),
            0);
  EXPECT_EQ(gHistoryTxt_Stored, 0);
  EXPECT_EQ(gHistoryTxt()->GetSize(), 0u);
  EXPECT_EQ(gLastButtonNumberClicked, 4);
  EXPECT_EQ(callHandler(ZkMosa7_DoGetButton, {""}), "Nächste");
  EXPECT_EQ(Row(gInputTextUNI[0]), u"first");
  EXPECT_EQ(Row(gInputTextUNI[1]), std::u16string(255, u'v'));
  for (int n = 2; n < kMosaEntries; ++n) EXPECT_EQ(Row(gInputTextUNI[n]), u"") << n;
}

TEST_F(ResultsTest, UnicodeHistoryAndCleanup) {
  callHandler(ZkMosa7_DoSetInput, {"", "1", "2", "3"});
  gHistoryTxt()->Assign("big", fmx::Text::kEncoding_ASCII_Mac);
  gHistoryTxt_Stored = 1;
  const std::u16string value(300, u'\u00E9');
  Zk7SaveDialogHistoryUNI(reinterpret_cast<const UniChar*>(u"Ja ✓"), 1,
                          reinterpret_cast<const UniChar*>(value.c_str()),
                          reinterpret_cast<const UniChar*>(u""));
  EXPECT_EQ(gHistoryTxt_Stored, 0);
  EXPECT_EQ(callHandler(ZkMosa7_DoGetButton, {""}), "Ja ✓");
  EXPECT_EQ(Row(gInputTextUNI[0]), std::u16string(255, u'\u00E9'));
  EXPECT_EQ(callHandler(ZkMosa7_DoGetInput, {"-text3"}), "");
  Zk7SaveDialogHistoryUNI(reinterpret_cast<const UniChar*>(u""), 2,
                          reinterpret_cast<const UniChar*>(u""),
                          reinterpret_cast<const UniChar*>(u""));
  EXPECT_EQ(callHandler(ZkMosa7_DoGetButton, {""}), "2");

  gHistoryTxt()->Assign("big", fmx::Text::kEncoding_ASCII_Mac);
  gHistoryTxt_Stored = 1;
  Zk7CleanupHistory();
  Zk7CleanupHistory();
  EXPECT_EQ(gHistoryTxt_Stored, 0);
  EXPECT_EQ(gHistoryTxt()->GetSize(), 0u);
}

}  // namespace
