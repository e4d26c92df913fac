// Start-up, registration, get-string, dispatch and shut-down, driven through the entry point.
#include <gtest/gtest.h>

#include <cstdlib>

#include "frame/frame.h"
#include "plugin_fixture.h"
#include "toolkit/platform.h"

using namespace mosa_test;

namespace {

struct Alert {
  std::int16_t id;
  long number;
  std::string text;
  std::int16_t resFile;
};
std::vector<Alert> gAlerts;

void recordAlert(std::int16_t id, long number, const std::string& text) {
  gAlerts.push_back({id, number, text, XP_CurResFile()});
}

class Lifecycle : public ::testing::Test {
 protected:
  void SetUp() override {
    setenv("MOSA_LANGUAGE", "en", 1);
    fmwrapper::clearRegistrations();
    gAlerts.clear();
    gXP_AlertHook = recordAlert;
  }
  void TearDown() override {
    shutdown();
    gXP_AlertHook = nullptr;
    for (auto s : {toolkit::platform::Service::Toolkit, toolkit::platform::Service::ToolkitVersion,
                   toolkit::platform::Service::JpegDecoder}) {
      toolkit::platform::setServiceDisabled(s, false);
    }
  }
};

std::vector<fmx::int16> registeredIds() {
  std::vector<fmx::int16> ids;
  for (const auto& r : fmwrapper::registrations()) ids.push_back(r.functionId);
  return ids;
}

}  // namespace

TEST_F(Lifecycle, EveryCallRestoresTheCurrentResourceFile) {
  XP_UseResFile(3);
  for (fmx::uchar selector : {0, 1, 4, 5, 7, 8, 9, 200}) {
    std::u16string buffer(16, u'\0');
    callEntry(selector, buildBundle(), 60, 1, 0, 16, reinterpret_cast<fmx::ptrtype>(buffer.data()),
              42);
    EXPECT_EQ(XP_CurResFile(), 3) << int(selector);
    EXPECT_EQ(gThisResPath, 42);
  }
}

TEST_F(Lifecycle, GetStringAnswersFromTheStringsTable) {
  EXPECT_EQ(toUtf8(getString(1)), "Z7mo1nnYnn");
  EXPECT_EQ(toUtf8(getString(131)), "Z7mo1nnYnn");
  EXPECT_EQ(toUtf8(getString(128)), "Mosa");
  EXPECT_EQ(getString(77), u"");
  // The buffer must hold the string, its terminator and one unit more.
  EXPECT_EQ(getString(1, 11), u"");
  EXPECT_EQ(toUtf8(getString(1, 12)), "Z7mo1nnYnn");
  EXPECT_EQ(getString(1, 1), u"");
}

TEST_F(Lifecycle, DispatcherRoutesVersionIdsAndIgnoresUnknownIds) {
  ASSERT_EQ(init(60), 51);
  EXPECT_EQ(callFunction(0, {}), "Zelk Mosa Plug-In 4.5.2");
  EXPECT_EQ(callFunction(1, {"-getversionnumber"}), "4520");
  EXPECT_EQ(callFunction(4318, {"x"}), "");
  EXPECT_EQ(callFunction(2, {"-getversionnumber"}), "");
  EXPECT_EQ(callFunction(-1, {"x"}), "");
  // The host reaches the functions through the registered pointer.
  const auto regs = fmwrapper::registrations();
  fmx::DataVectUniquePtr args;
  fmx::ExprEnvUniquePtr env;
  fmx::DataUniquePtr result;
  EXPECT_EQ(regs[18].function(0, *env, *args, *result), 0);
  EXPECT_EQ(toUtf8(result->GetAsText()), "Zelk Mosa Plug-In 4.5.2");
}

TEST_F(Lifecycle, BundleWithAMissingKeyStopsRegistrationThere) {
  TempBundle bundle;
  std::string strings;
  for (int id = 4300; id <= 4317; ++id) {
    if (id == 4305) continue;
    strings += "\"Zelk " + std::to_string(id) + "\" = \"F" + std::to_string(id) + "(x)\";\n";
  }
  strings += "\"Zelk 9000\" = \"V0\";\n\"Zelk 9001\" = \"V1 (s)\";\n";
  bundle.write("en.lproj/Mosa7.strings", strings);
  EXPECT_EQ(init(60, bundle.path()), 51);
  EXPECT_EQ(registeredIds(), (std::vector<fmx::int16>{4300, 4301, 4302, 4303, 4304}));
  // The host's record ends with the call; its bundle is remembered for the function calls after it.
  EXPECT_EQ(gFMX_ExternCallPtr, nullptr);
  EXPECT_EQ(XP_BundleFolder(), bundle.path());
  EXPECT_EQ(toUtf8(fmwrapper::registrations()[0].name), "F4300");
  shutdown(bundle.path());
  EXPECT_TRUE(fmwrapper::registrations().empty());

  // With every dialog function present, the version entries follow; a blank before "(" stays.
  bundle.write("en.lproj/Mosa7.strings", strings + "\"Zelk 4305\" = \"F4305\";\n");
  XP_ForgetLoadedStrings();
  EXPECT_EQ(init(60, bundle.path()), 51);
  const auto regs = fmwrapper::registrations();
  ASSERT_EQ(regs.size(), 20u);
  EXPECT_EQ(toUtf8(regs[5].name), "F4305");
  EXPECT_EQ(toUtf8(regs[19].name), "V1 ");
  shutdown(bundle.path());
}

TEST_F(Lifecycle, StringsFollowTheLanguage) {
  const char* lang = std::getenv("LANG");
  const std::string savedLang = lang ? lang : "";
  setenv("MOSA_LANGUAGE", "de", 1);
  ASSERT_EQ(init(60), 51);
  EXPECT_EQ(toUtf8(fmwrapper::registrations()[2].prototype),
            "Mosa_Dialog(Schalter ; Meldung { ; Taste1 ; Taste2 ; Taste3 ; Taste4 })");
  shutdown();
  fmwrapper::clearRegistrations();

  unsetenv("MOSA_LANGUAGE");
  setenv("LANG", "de_DE.UTF-8", 1);
  EXPECT_EQ(toUtf8(getString(129)).find("Fortschrittsdialoge") != std::string::npos, true);
  setenv("LANG", "fr_FR.UTF-8", 1);
  EXPECT_NE(toUtf8(getString(129)).find("progress dialogs"), std::string::npos);
  setenv("LANG", "C", 1);
  EXPECT_NE(toUtf8(getString(129)).find("progress dialogs"), std::string::npos);
  setenv("MOSA_LANGUAGE", "en", 1);
  setenv("LANG", savedLang.c_str(), 1);
}
