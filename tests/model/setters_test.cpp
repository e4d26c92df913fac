// The setters and getters as a script calls them: what they store, what they answer, and that a
// refused call leaves the state alone.
#include <gtest/gtest.h>

#include <string>

#include "calls.h"
#include "model/history.h"
#include "model/state.h"

using namespace modeltest;

namespace {

class SettersTest : public ::testing::Test {
 protected:
  void SetUp() override { ResetModelState(); }
  void TearDown() override { ResetModelState(); }
};

std::string Input(int n) {
  return Call(ZkMosa7_DoGetInput, {"-text" + std::to_string(n)});
}
std::string Popup(int n) {
  return Call(ZkMosa7_DoGetPopup, {"-popup" + std::to_string(n)});
}

TEST_F(SettersTest, LabelsFewerLabelsClearTheRest) {
  EXPECT_EQ(Call(ZkMosa7_DoSetLabels, {"", "1", "2", "3", "4", "5", "6", "7", "8", "9"}), "0");
  EXPECT_EQ(Row(gLabelTextsUNI[8]), u"9");
  EXPECT_EQ(Call(ZkMosa7_DoSetLabels, {"-any", "Name", "Straße", "Ort"}), "0");
  EXPECT_EQ(Row(gLabelTextsUNI[0]), u"Name");
  EXPECT_EQ(Row(gLabelTextsUNI[1]), u"Straße");
  EXPECT_EQ(Row(gLabelTextsUNI[2]), u"Ort");
  for (int n = 3; n < kMosaEntries; ++n) EXPECT_EQ(Row(gLabelTextsUNI[n]), u"") << n;
}

TEST_F(SettersTest, LabelsRefusedCallStillStoresFromArgumentOne) {
  Call(ZkMosa7_DoSetLabels, {"", "a", "b"});
  EXPECT_EQ(Call(ZkMosa7_DoSetLabels, {"only switches"}), "$$-50");
  EXPECT_EQ(Row(gLabelTextsUNI[0]), u"only switches");
  EXPECT_EQ(Row(gLabelTextsUNI[1]), u"");
  Call(ZkMosa7_DoSetLabels, {"", "a", "b"});
  EXPECT_EQ(Call(ZkMosa7_DoSetLabels, {}), "$$-50");
  EXPECT_EQ(Row(gLabelTextsUNI[0]), u"");
}

TEST_F(SettersTest, LongTextsKeepTheirFirst255Units) {
  const std::string label300(300, 'L');
  EXPECT_EQ(Call(ZkMosa7_DoSetLabels, {"", label300}), "0");
  EXPECT_EQ(Row(gLabelTextsUNI[0]), std::u16string(255, u'L'));
  std::string input255;
  for (int i = 0; i < 255; ++i) input255 += static_cast<char>('a' + i % 26);
  EXPECT_EQ(Call(ZkMosa7_DoSetInput, {"", input255 + "XYZ"}), "0");
  EXPECT_EQ(Input(1), input255);
  EXPECT_EQ(Call(ZkMosa7_DoSetDialogTitle, {"", std::string(300, 'T')}), "0");
  EXPECT_EQ(Row(gDefaultDialogTitleUNI), std::u16string(255, u'T'));
  EXPECT_EQ(Call(ZkMosa7_DoSetListInput, {"", std::string(300, 'S')}), "0");
  EXPECT_EQ(Row(gInitialSelectStr), std::u16string(255, u'S'));
}

TEST_F(SettersTest, InputsNeedMoreThanTheSwitches) {
  Call(ZkMosa7_DoSetInput, {"", "one", "two"});
  EXPECT_EQ(Call(ZkMosa7_DoSetInput, {"-x"}), "$$-50");
  EXPECT_EQ(Input(1), "one");
  EXPECT_EQ(Input(2), "two");
  EXPECT_EQ(Input(3), "");
  for (const char* bad : {"-text0", "-text10", "", "-text", "-text-1"})
    EXPECT_EQ(Call(ZkMosa7_DoGetInput, {bad}), "$$-50") << bad;
  EXPECT_EQ(Call(ZkMosa7_DoGetInput, {}), "$$-50");
  EXPECT_EQ(Call(ZkMosa7_DoGetInput, {"xx-TEXT2yy"}), "two");
}

TEST_F(SettersTest, BigInputTextAnswersEntryOneUntilTheNextSetInput) {
  Call(ZkMosa7_DoSetInput, {"", "row one", "row two"});
  // What the big input dialog leaves behind when it closes.
  Zk7SaveDialogHistory("OK", 1, "", "");
  const std::u16string big(70000, u'b');
  gHistoryTxt()->AssignUnicodeWithLength(reinterpret_cast<const fmx::uint16*>(big.data()),
                                         static_cast<fmx::uint32>(big.size()));
  gHistoryTxt_Stored = 1;
  EXPECT_EQ(Input(1), std::string(70000, 'b'));
  EXPECT_EQ(Input(2), "");
  EXPECT_EQ(Call(ZkMosa7_DoSetInput, {"", "again"}), "0");
  EXPECT_EQ(gHistoryTxt_Stored, 0);
  EXPECT_EQ(Input(1), "again");
}

TEST_F(SettersTest, PopupsByNumberWithOptionalNoSelection) {
  for (const char* bad : {"-popup0", "-popup10", "", "-popup", "-NoSelection"}) {
    EXPECT_EQ(Call(ZkMosa7_DoSetPopup, {bad, "x\ry"}), "$$-50") << bad;
  }
  for (int n = 0; n < kMosaEntries; ++n) {
    EXPECT_EQ(gItemSelected[n], 1);
    EXPECT_EQ(Popup(n + 1), "");  // never set is empty, not an error
  }
  EXPECT_EQ(Call(ZkMosa7_DoSetPopup, {"-popup9", "Red\rGreen\rBlue"}), "0");
  EXPECT_EQ(Popup(9), "Red\rGreen\rBlue");
  EXPECT_EQ(Call(ZkMosa7_DoSetPopup, {"-popup2 -NoSelection", "A\rB"}), "0");
  EXPECT_EQ(gItemSelected[1], -42);
  EXPECT_EQ(Call(ZkMosa7_DoSetPopup, {"-Popup2", "C\rD"}), "0");
  EXPECT_EQ(gItemSelected[1], 1);
  EXPECT_EQ(Popup(2), "C\rD");
  // No length limit on the items text.
  const std::string many(5000, 'm');
  EXPECT_EQ(Call(ZkMosa7_DoSetPopup, {"-popup3", many}), "0");
  EXPECT_EQ(Popup(3), many);
  EXPECT_EQ(Call(ZkMosa7_DoSetPopup, {"-popup3"}), "$$-50");
  EXPECT_EQ(Call(ZkMosa7_DoGetPopup, {"-popup0"}), "$$-50");
  EXPECT_EQ(Call(ZkMosa7_DoGetPopup, {}), "$$-50");
}

TEST_F(SettersTest, TitleSetAndCleared) {
  EXPECT_EQ(Call(ZkMosa7_DoSetDialogTitle, {"", "Orders"}), "0");
  EXPECT_EQ(Row(gDefaultDialogTitleUNI), u"Orders");
  EXPECT_EQ(Call(ZkMosa7_DoSetDialogTitle, {""}), "$$-50");
  EXPECT_EQ(Row(gDefaultDialogTitleUNI), u"Orders");
  EXPECT_EQ(Call(ZkMosa7_DoSetDialogTitle, {"", ""}), "0");
  EXPECT_EQ(Row(gDefaultDialogTitleUNI), u"");
}

TEST_F(SettersTest, PositionModesAndCoordinates) {
  EXPECT_EQ(Call(ZkMosa7_DoSetPosition, {}), "$$-50");
  EXPECT_EQ(gCustomWindPosition, kPositionDefault);
  EXPECT_EQ(Call(ZkMosa7_DoSetPosition, {"", 100, 50}), "0");
  EXPECT_EQ(gCustomWindPosition, kPositionOnce);
  EXPECT_EQ(gLeft, 100);
  EXPECT_EQ(gTop, 50);
  EXPECT_EQ(Call(ZkMosa7_DoSetPosition, {"-ALL -Animation42", 10, -20}), "0");
  EXPECT_EQ(gCustomWindPosition, kPositionAlways);
  EXPECT_EQ(gAnimateWindPosition, 1);
  EXPECT_EQ(gTop, -20);
  EXPECT_EQ(Call(ZkMosa7_DoSetPosition, {"-default", 7, 8}), "0");
  EXPECT_EQ(gCustomWindPosition, kPositionDefault);
  EXPECT_EQ(gAnimateWindPosition, 0);
  EXPECT_EQ(gLeft, 7);  // stored, though not used
  EXPECT_EQ(Call(ZkMosa7_DoSetPosition, {"-all -once -default", 70000}), "0");
  EXPECT_EQ(gCustomWindPosition, kPositionOnce);
  EXPECT_EQ(gLeft, 4464);  // low 16 bits
  EXPECT_EQ(gTop, 0);
  EXPECT_EQ(Call(ZkMosa7_DoSetPosition, {"-all"}), "0");
  EXPECT_EQ(gLeft, 0);
  EXPECT_EQ(gTop, 0);
}

TEST_F(SettersTest, PreferenceDefunctTicks) {
  EXPECT_EQ(Call(ZkMosa7_DoSetPreference, {"-progressbardefunctticks", 600}), "0");
  EXPECT_EQ(gProgressDefunctTicks, 600u);
  EXPECT_EQ(Call(ZkMosa7_DoSetPreference, {"-ProgressBarDefunctTicks", 0}), "0");
  EXPECT_EQ(gProgressDefunctTicks, 20u);
  Call(ZkMosa7_DoSetPreference, {"-progressbardefunctticks", 600});
  EXPECT_EQ(Call(ZkMosa7_DoSetPreference, {"-progressbarticks", 5}), "$$-50");
  EXPECT_EQ(Call(ZkMosa7_DoSetPreference, {"-progressbardefunctticks"}), "$$-50");
  EXPECT_EQ(gProgressDefunctTicks, 600u);
  EXPECT_EQ(Call(ZkMosa7_DoSetPreference, {"-progressbardefunctticks", "soon"}), "0");
  EXPECT_EQ(gProgressDefunctTicks, 20u);
}

TEST_F(SettersTest, ListPreselectionKeepsAnyText) {
  EXPECT_EQ(Call(ZkMosa7_DoSetListInput, {"", "Zürich ✓"}), "0");
  EXPECT_EQ(Row(gInitialSelectStr), u"Zürich ✓");
  EXPECT_EQ(Call(ZkMosa7_DoSetListInput, {"x"}), "$$-50");
  EXPECT_EQ(Row(gInitialSelectStr), u"Zürich ✓");
}

TEST_F(SettersTest, GetButtonAnswersTextOrNumber) {
  EXPECT_EQ(Call(ZkMosa7_DoGetButton, {""}), "0");
  EXPECT_EQ(Call(ZkMosa7_DoGetButton, {}), "0");
  Zk7SaveDialogHistory("Cancel", 2, "", "");
  EXPECT_EQ(Call(ZkMosa7_DoGetButton, {"-whatever"}), "Cancel");
  Zk7SaveDialogHistory("", 3, "", "");
  EXPECT_EQ(Call(ZkMosa7_DoGetButton, {""}), "3");
}

}  // namespace
