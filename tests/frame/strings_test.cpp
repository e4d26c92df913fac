// The .strings reader and the string loaders' limits.
#include <gtest/gtest.h>

#include "frame/frame.h"
#include "frame/strings_file.h"
#include "plugin_fixture.h"

using namespace mosa_test;

TEST(StringsFile, ReadsEntriesCommentsAndEscapes) {
  const auto entries = XP_ParseStringsFile(
      "\xEF\xBB\xBF/* header */\n"
      "\"Zelk 1\" = \"one\"; // trailing\n"
      "\"quote\"=\"say \\\"hi\\\"\\n\\ttab\\\\\";\n"
      "\"uni\" = \"\\U00e9\\UD83D\\UDE00\";\n"
      "bare_key = \"v\";\n"
      "\"self\";\n");
  using P = std::pair<std::string, std::string>;
  EXPECT_EQ(entries, (std::vector<P>{{"Zelk 1", "one"},
                                     {"quote", "say \"hi\"\n\ttab\\"},
                                     {"uni", "\xC3\xA9\xF0\x9F\x98\x80"},
                                     {"bare_key", "v"},
                                     {"self", "self"}}));
}

TEST(StringsLoader, LimitsNameOnlyAndString131) {
  TempBundle bundle;
  bundle.write("en.lproj/Mosa7.strings",
               "\"Zelk 1\" = \"first\";\n\"Zelk 131\" = \"never\";\n\"Zelk 5\" = \"12345\";\n"
               "\"Zelk 6\" = \"Name (a ; b)\";\n\"Zelk 7\" = \"\\U00e9t\\U00e9\";\n\"Zelk 5\" = "
               "\"abcde\";\n");
  FMX_ExternCallStruct pb{};
  pb.instanceID = reinterpret_cast<fmx::ptrtype>(bundle.path().c_str());
  gFMX_ExternCallPtr = &pb;

  UniChar buf[16] = {'x', 0};
  EXPECT_EQ(ZkSub_OSXLoadString("Mosa7", "Zelk %d", 5, buf, 6), 0u)
      << "length = size - 1 does not fit";
  EXPECT_EQ(buf[0], u'x');
  EXPECT_EQ(ZkSub_OSXLoadString("Mosa7", "Zelk %d", 5, buf, 7), 5u);
  EXPECT_EQ(std::u16string(reinterpret_cast<char16_t*>(buf)), u"abcde") << "a later duplicate wins";
  EXPECT_EQ(ZkSub_OSXLoadString("Mosa7", "Zelk %d", 99, buf, 16), 0u);
  EXPECT_EQ(ZkSub_OSXLoadString("Other", "Zelk %d", 5, buf, 16), 0u);
  EXPECT_EQ(ZkSub_OSXLoadString("Mosa7", "Zelk %d", 5, nullptr, 16), 0u);

  fmx::TextAutoPtr t;
  XP7_Do_GetString("Mosa7", "Zelk %d", 131, t, false);
  EXPECT_EQ(toUtf8(*t), "first");
  XP7_Do_GetString("Mosa7", "Zelk %d", 6, t, true);
  EXPECT_EQ(toUtf8(*t), "Name ");
  XP7_Do_GetString("Mosa7", "Zelk %d", 7, t, true);
  EXPECT_EQ(toUtf8(*t), "\xC3\xA9t\xC3\xA9");
  XP7_Do_GetString("Mosa7", "Zelk %d", 99, t, false);
  EXPECT_EQ(toUtf8(*t), "");

  UniChar host[16] = {'x', 0};
  XP7_Do_GetStringUni("Mosa7", "Zelk %d", 131, 0, 16, host);
  EXPECT_EQ(std::u16string(reinterpret_cast<char16_t*>(host)), u"first");
  gFMX_ExternCallPtr = nullptr;
}

TEST(Alerts, TextsComeFromTheBundleWithTheNumberFilledIn) {
  static std::string seen;
  gXP_AlertHook = [](std::int16_t, long, const std::string& text) { seen = text; };
  TempBundle bundle;
  bundle.write("en.lproj/Alerts.strings", "\"Alert 24213\" = \"Failed: ^0^1 (^9)\";");
  FMX_ExternCallStruct pb{};
  pb.instanceID = reinterpret_cast<fmx::ptrtype>(bundle.path().c_str());
  gFMX_ExternCallPtr = &pb;
  XP_DisplayMessage(24213, -108);
  EXPECT_EQ(seen, "Failed: -108 (^9)");
  XP_DisplayMessage(1251, 0);
  EXPECT_EQ(seen, "Alert 1251 (0)") << "a missing text still shows the alert and its number";
  gFMX_ExternCallPtr = nullptr;
  gXP_AlertHook = nullptr;
}
