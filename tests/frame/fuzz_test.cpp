// Random input from a fixed start: the byte-string helpers, the .strings reader and the version
// function take any bytes without crashing and answer within their rules.
#include <gtest/gtest.h>

#include <random>

#include "frame/strings_file.h"
#include "host_fixture.h"
#include "util/cstring.h"

namespace {

std::string randomBytes(std::mt19937& rng, std::size_t maxLen, bool withZero) {
  // Mostly switch-like characters, so that tags and quotes are actually hit.
  static const std::string alphabet = "-=\"\\;/*Uu0123456789 aAwWtTpP\n.";
  std::uniform_int_distribution<std::size_t> len(0, maxLen);
  std::uniform_int_distribution<int> pick(0, 9);
  std::string s(len(rng), ' ');
  for (char& c : s) {
    c = pick(rng) < 7 ? alphabet[rng() % alphabet.size()] : static_cast<char>(rng() & 0xFF);
    if (!withZero && c == '\0') c = '0';
  }
  return s;
}

}  // namespace

TEST(Fuzz, ByteStringHelpersStayInsideTheirBuffers) {
  std::mt19937 rng(4520);
  for (int round = 0; round < 3000; ++round) {
    const std::string text = randomBytes(rng, 1100, false);
    const std::string tag = randomBytes(rng, 8, false);
    std::int32_t number = -1;
    if (XP_GetTaggedLong(text.c_str(), tag.c_str(), &number)) {
      EXPECT_GE(number, 0);
    } else {
      EXPECT_EQ(number, 0);
    }
    EXPECT_EQ(XP_HasSwitch(text.c_str(), tag.c_str()),
              XP_Position(text.c_str(), XP_Strlen(text.c_str()), tag.c_str(),
                          XP_Strlen(tag.c_str()), 0, 1, 0) >= 0 ||
                  tag.empty());
    char out[16];
    const std::int32_t at =
        XP_GetTaggedStr(text.c_str(), XP_Strlen(text.c_str()), tag.c_str(), XP_Strlen(tag.c_str()),
                        '.', static_cast<std::int32_t>(rng() % 20),
                        static_cast<std::int32_t>(rng() % 3), 0, out, sizeof out);
    EXPECT_LT(XP_Strlen(out), 16);
    EXPECT_LT(at, XP_Strlen(text.c_str()) + 1);
  }
}

TEST(Fuzz, StringsReaderTakesAnyBytes) {
  std::mt19937 rng(131);
  const std::string valid = "\"Zelk 1\" = \"a\\U00e9\";\n/* c */ \"k\" = \"v\"; // x\n";
  for (int round = 0; round < 3000; ++round) {
    std::string content = round % 2 ? randomBytes(rng, 200, true) : valid;
    if (round % 2 == 0) {
      // Damage the valid file in a few places.
      for (int k = 0; k < 3; ++k) content[rng() % content.size()] = static_cast<char>(rng() & 0xFF);
    }
    const auto entries = XP_ParseStringsFile(content);
    EXPECT_LE(entries.size(), content.size());
  }
}

TEST(Fuzz, VersionFunctionAnswersEveryArgument) {
  std::mt19937 rng(9001);
  for (int round = 0; round < 300; ++round) {
    std::string arg = randomBytes(rng, 1200, false);
    // Text arguments reach the plug-in as valid Unicode.
    for (char& c : arg) c = static_cast<char>(c & 0x7F);
    for (char& c : arg)
      if (c == '\0') c = ' ';
    const std::string result = mosa_test::callFunction(1, {arg});
    EXPECT_TRUE(result == "4520" || result == "Zelk Mosa Plug-In 4.5.2" || result == "0" ||
                result == "$$-4243")
        << result;
  }
}
