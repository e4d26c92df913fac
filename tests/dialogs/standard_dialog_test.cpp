// Mosa_Dialog through the dispatcher where mosa-host cannot reach: a call the host would refuse
// and a bundle without dialog templates. What a person's clicks and keys return is walked
// through mosa-host by the scenarios in tests/scenarios/.
#include <fstream>
#include <iterator>

#include "dialog_fixture.h"
#include "host_fixture.h"

using dialogtest::DialogTest;

namespace {
constexpr short kDialog = 4302;
constexpr short kGetButton = 4304;
}  // namespace

TEST_P(DialogTest, TooFewArgumentsAndAMissingTemplate) {
  answers({});
  EXPECT_EQ(call(kDialog, {"-NoteIcon"}), "$$-50");
  mosa_test::TempBundle bare;  // strings but no dialog templates
  for (const char* lang : {"en.lproj/Mosa7.strings", "en.lproj/Alerts.strings"}) {
    std::ifstream in(std::string(MOSA_TEST_BUNDLE) + "/Resources/" + lang);
    bare.write(lang, std::string(std::istreambuf_iterator<char>(in), {}));
  }
  mosa_test::shutdown();
  ASSERT_EQ(mosa_test::init(60, bare.path()), 51);
  EXPECT_EQ(call(kDialog, {"", "Nowhere to show this"}), "0");
  EXPECT_EQ(call(kGetButton, {""}), "0");
  mosa_test::shutdown();
  ASSERT_EQ(mosa_test::init(60), 51);
}

INSTANTIATE_TEST_SUITE_P(Backends, DialogTest,
                         ::testing::Values(toolkit::Backend::Headless, toolkit::Backend::Qt),
                         dialogtest::backendName);
