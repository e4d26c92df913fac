// Byte-string and UTF-16 buffer helpers, by table.
#include <gtest/gtest.h>

#include <cstring>

#include "util/cstring.h"
#include "util/hosttext.h"

namespace {

std::int32_t position(const char* text, const char* pattern, std::int32_t start,
                      std::int32_t occurrence, unsigned char caseSensitive) {
  return XP_Position(text, XP_Strlen(text), pattern, XP_Strlen(pattern), start, occurrence,
                     caseSensitive);
}

}  // namespace

TEST(CString, ComparisonFoldsOnlyAToZ) {
  EXPECT_NE(XP_Memcmp("\x8E", "\x83", 1, 0), 0) << "Mac Roman e-acute and E-acute stay apart";
  EXPECT_EQ(XP_Memcmp("abc", "abd", 3, 1), -1);
  EXPECT_EQ(XP_Memcmp("abd", "abc", 3, 1), 1);
  EXPECT_EQ(XP_Memcmp("x\x80", "x\x7F", 2, 1), 1) << "bytes compare unsigned";
  EXPECT_EQ(XP_Memcmp("abc", "xyz", 0, 1), 0);
  EXPECT_EQ(XP_Memcmp("@", "`", 1, 0), -1) << "only letters fold";
}

TEST(CString, PositionFindsOverlappingOccurrences) {
  EXPECT_EQ(position("aaaa", "aa", 0, 2, 1), 1);
  EXPECT_EQ(position("aaaa", "aa", 0, 3, 1), 2);
  EXPECT_EQ(position("aaaa", "aa", 0, 4, 1), -1);
  EXPECT_EQ(position("aaaa", "aa", 0, 0, 1), 0) << "occurrence 0 counts as 1";
  EXPECT_EQ(position("xIncRx", "incr", 0, 1, 0), 1);
  EXPECT_EQ(position("xIncRx", "incr", 0, 1, 1), -1);
  EXPECT_EQ(position("abcabc", "abc", 1, 1, 1), 3);
  EXPECT_EQ(position("abc", "abc", 1, 1, 1), -1);
  EXPECT_EQ(position("ab", "abc", 0, 1, 1), -1);
  EXPECT_EQ(position("abc", "", 0, 1, 1), -1);
}

TEST(CString, SwitchesMatchAnywhereIgnoringCase) {
  EXPECT_TRUE(XP_HasSwitch("-NoSelection", "-noselection"));
  EXPECT_TRUE(XP_HasSwitch("-popup12", "-popup1")) << "no word boundaries";
  EXPECT_TRUE(XP_HasSwitch("x-StopOnESCy", "-stoponesc"));
  EXPECT_FALSE(XP_HasSwitch("-pop", "-popup"));
  EXPECT_FALSE(XP_HasSwitch("", "-a"));
  EXPECT_FALSE(XP_HasSwitch(nullptr, "-a"));
}

TEST(CString, TaggedNumbers) {
  struct Case {
    const char* switches;
    const char* tag;
    bool found;
    std::int32_t value;
  };
  const Case cases[] = {
      {"-Height=200-Width=300", "-Width", true, 300},
      {"-Width-Height=200", "-Width", false, 0},
      {"-Width=abc", "-Width", false, 0},
      {"-Width=-5", "-Width", false, 0},
      {"-Width=1 -Width=2", "-Width", true, 1},
      {"-Width 300", "-width", true, 300},
      {"-Width:300", "-Width", true, 300},
      {"-Widthxx300", "-Width", true, 300},
      {"-Width 12a5", "-Width", true, 12},
      {"-Width", "-Width", false, 0},
      {"-popup12", "-popup", true, 12},
      {"-text3-popup1", "-text", true, 3},
      {"nothing", "-Width", false, 0},
      {"-Width=99999999999", "-Width", true, 0x7FFFFFFF},
  };
  for (const Case& c : cases) {
    std::int32_t out = 77;
    EXPECT_EQ(XP_GetTaggedLong(c.switches, c.tag, &out), c.found) << c.switches;
    EXPECT_EQ(out, c.value) << c.switches;
  }
}

TEST(CString, TaggedText) {
  char out[255];
  const char* text = "-Title=Hello World.-Other";
  EXPECT_EQ(XP_GetTaggedStr(text, XP_Strlen(text), "-title=", 7, '.', 0, 1, 0, out, sizeof out), 0);
  EXPECT_STREQ(out, "Hello World");
  EXPECT_EQ(XP_GetTaggedStr(text, XP_Strlen(text), "-title=", 7, '.', 0, 1, 1, out, sizeof out),
            -1);
  EXPECT_STREQ(out, "");
  const char* stopAtOnce = "ab-T=.";
  EXPECT_EQ(
      XP_GetTaggedStr(stopAtOnce, XP_Strlen(stopAtOnce), "-T=", 3, '.', 0, 1, 1, out, sizeof out),
      2);
  EXPECT_STREQ(out, "");
  char small[4];
  EXPECT_EQ(XP_GetTaggedStr(text, XP_Strlen(text), "-Title=", 7, '.', 0, 1, 1, small, sizeof small),
            0);
  EXPECT_STREQ(small, "Hel");
}

TEST(CString, NumbersFromTextReadAsFarAsTheyGo) {
  long n = 0;
  EXPECT_EQ(XP_CStringToNum("  -42abc", &n), -42);
  EXPECT_EQ(n, -42);
  EXPECT_EQ(XP_CStringToNum("+7", &n), 7);
  EXPECT_EQ(XP_CStringToNum("abc", &n), 0);
}

TEST(UniStr, CopyWidenSearch) {
  UniChar dst[8];
  XP7_UniStrToUniStrCopy(reinterpret_cast<const UniChar*>(u"abcdef"), dst, 4);
  EXPECT_EQ(std::u16string(reinterpret_cast<char16_t*>(dst)), u"abcd");
  UniChar wide[8];
  EXPECT_EQ(XP7_CStrToUniStrSimple("d\xE9j\xE0", wide, 7), 8u);
  EXPECT_EQ(std::u16string(reinterpret_cast<char16_t*>(wide)), u"d*j*");
  const auto* text = reinterpret_cast<const UniChar*>(u"aaaa");
  const auto* pattern = reinterpret_cast<const UniChar*>(u"aa");
  EXPECT_EQ(XP7_PositionUniUInt32(text, 4, pattern, 2, 0, 2), 1);
  EXPECT_EQ(XP7_PositionUniUInt32(text, 4, pattern, 2, 3, 1), -1);
}
