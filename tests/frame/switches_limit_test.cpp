// Every function reads the same length of switches: a switch within the first 999 bytes counts,
// one that ends later is not seen.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "plugin_fixture.h"

using namespace mosa_test;

TEST(Switches, EveryFunctionReadsTheFirst999Bytes) {
  struct Case {
    short id;
    const char* switchWord;
    std::vector<std::string> more;
    const char* unseen;  // the answer when the switch is missing
  };
  const Case cases[] = {
      {1, "-getversionnumber", {}, "$$-4243"},
      {4305, "-text1", {}, "$$-50"},
      {4306, "-popup1", {}, "$$-50"},
      {4307, "-ForgetCustomIcon", {""}, "$$-50"},
      {4315, "-popup1", {"Red"}, "$$-50"},
      {4317, "-progressbardefunctticks", {"1800"}, "$$-50"},
  };
  for (const Case& c : cases) {
    const std::string word = c.switchWord;
    for (const std::size_t end : {std::size_t{999}, std::size_t{1000}}) {
      std::vector<std::string> args{std::string(end - word.size(), ' ') + word};
      args.insert(args.end(), c.more.begin(), c.more.end());
      const std::string answer = callFunction(c.id, args);
      EXPECT_EQ(answer == c.unseen, end == 1000)
          << c.id << " " << word << " ending at byte " << end << ": " << answer;
    }
  }
}
