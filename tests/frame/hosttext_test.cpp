// Host text helpers, argument readers and error texts, on the host library's own values.
#include <gtest/gtest.h>

#include <climits>

#include "plugin_fixture.h"
#include "util/errors.h"
#include "util/hosttext.h"

using namespace mosa_test;

namespace {

fmx::TextAutoPtr text(const char* utf8) {
  fmx::TextAutoPtr t;
  t->Assign(utf8, fmx::Text::kEncoding_UTF8);
  return t;
}

std::string str(const fmx::TextAutoPtr& t) {
  return toUtf8(*t);
}

}  // namespace

TEST(HostText, ArgumentReadersAdvanceOncePerCallAndReadMissingAsEmpty) {
  fmx::DataVectUniquePtr args;
  fmx::LocaleUniquePtr locale;
  for (const char* value : {"-popup2", "na\xC3\xAFve caf\xC3\xA9", "42.9", "plain"}) {
    fmx::DataUniquePtr d;
    d->SetAsText(*text(value), *locale);
    args->PushBack(*d);
  }
  fmx::uint32 index = 0;
  char switches[1000];
  XP7_GetNextCStringFromVect(*args, switches, sizeof switches, &index, fmx::Text::kEncoding_Native);
  EXPECT_STREQ(switches, "-popup2");
  char macRoman[8];
  XP7_GetNextCStringFromVect(*args, macRoman, sizeof macRoman, &index, fmx::Text::kEncoding_Native);
  EXPECT_STREQ(macRoman, "na\x95ve c") << "Native reads as Mac Roman, cut at the buffer's end";
  EXPECT_EQ(XP7_GetNextlongFromVect(*args, &index), 42);
  EXPECT_EQ(XP7_GetNextlongFromVect(*args, &index), 0) << "plain text is no number";
  EXPECT_EQ(index, 4u);

  fmx::TextAutoPtr out = text("old");
  XP7_GetNextTxtFromVect(*args, out, &index);
  EXPECT_EQ(str(out), "");
  XP7_GetNextCStringFromVect(*args, switches, sizeof switches, &index, 0);
  EXPECT_STREQ(switches, "");
  EXPECT_EQ(XP7_GetNextlongFromVect(*args, &index), 0);
  EXPECT_EQ(index, 7u);
  index = 1;
  XP7_GetNextTxtFromVect(*args, out, &index);
  EXPECT_EQ(str(out), "na\xC3\xAFve caf\xC3\xA9");
}

TEST(HostText, ConversionsAndTheirLimits) {
  fmx::TextAutoPtr t = text("abcd");
  UniChar buf[8];
  XP7_TxtToUniStr(t, buf, 5);
  EXPECT_EQ(std::u16string(reinterpret_cast<char16_t*>(buf)), u"abcd");
  XP7_TxtToUniStr(t, buf, 4);
  EXPECT_EQ(std::u16string(reinterpret_cast<char16_t*>(buf)), u"abc");

  char c[4];
  XP7_TxtToCStr(t, 0, fmx::kSize_End, sizeof c, c, fmx::Text::kEncoding_ASCII_Mac);
  EXPECT_STREQ(c, "abc");
  XP7_TxtToCStr(t, 2, 1, sizeof c, c, fmx::Text::kEncoding_ASCII_Mac);
  EXPECT_STREQ(c, "c");

  fmx::TextAutoPtr out = text("xyz");
  XP7_AppendCStrToTxt("|", out, fmx::Text::kEncoding_ASCII_Mac);
  XP7_AppendUniStrToTxt(reinterpret_cast<const UniChar*>(u"\u00E9"), out);
  EXPECT_EQ(str(out), "xyz|\xC3\xA9");
  XP7_TxtToTxt(t, out);
  EXPECT_EQ(str(out), "abcd");
  XP7_TxtToTxt(out, out);
  EXPECT_EQ(str(out), "abcd");
  XP7_longToTxt(-1234567, out);
  EXPECT_EQ(str(out), "-1234567");
  XP7_CStrToTxt("\x8E", out, fmx::Text::kEncoding_ASCII_Mac);
  EXPECT_EQ(str(out), "\xC3\xA9");
  EXPECT_EQ(XP7_TxtToU16String(*out), u"\u00E9");
}

TEST(HostText, SearchIsNonOverlapping) {
  struct Case {
    const char* text;
    const char* pattern;
    fmx::uint32 start, occurrence;
    unsigned char caseSensitive;
    fmx::int32 expected;
  };
  const Case cases[] = {
      {"aaaa", "aa", 0, 2, 1, 2}, {"aaaa", "aa", 0, 3, 1, -1}, {"aaaa", "aa", 0, 0, 1, 0},
      {"aXbx", "x", 0, 2, 0, 3},  {"aXbx", "x", 0, 1, 1, 3},   {"abc", "abc", 1, 1, 1, -1},
      {"", "a", 0, 1, 1, -1},     {"abc", "", 0, 1, 1, -1},    {"ab", "abc", 0, 1, 1, -1},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(XP7_Position(text(c.text), text(c.pattern), c.start, c.occurrence, c.caseSensitive),
              c.expected)
        << c.text << " / " << c.pattern;
  }
}
