// Loading a plug-in and driving its lifecycle, with the fake plug-in of this folder.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>

#include "host/plugin.h"
#include "host/runner.h"

namespace host {
namespace {

TEST(PluginLoading, BadFilesGiveClearMessages) {
  auto message = [](const std::string& path) -> std::string {
    try {
      Plugin p(path);
    } catch (const PluginLoadError& e) {
      return e.what();
    }
    return "loaded";
  };
  EXPECT_EQ(message("/nonexistent/Mosa.fmx"),
            "the plug-in \"/nonexistent/Mosa.fmx\" does not exist");
  EXPECT_NE(message(NO_ENTRY_PLUGIN).find("has no entry point FMExternCallProc"),
            std::string::npos);
  const std::string junk = testing::TempDir() + "junk.fmx";
  std::FILE* f = std::fopen(junk.c_str(), "w");
  std::fputs("not a module", f);
  std::fclose(f);
  EXPECT_NE(message(junk).find("cannot be loaded"), std::string::npos);
}

TEST(Runner, IdlesAtLevelThreeBetweenStepsAndAtZeroWhileLingering) {
  RunOptions options;
  options.pluginPath = FAKE_PLUGIN;
  options.lingerSeconds = 0.02;
  std::FILE* out = std::tmpfile();
  ASSERT_NE(out, nullptr);
  {
    Runner runner(options, out, out);
    ASSERT_NE(runner.plugin(), nullptr);
    runner.plugin()->call(u"Fake_IdleLog", {});  // forgets the idle calls of start-up
    EXPECT_EQ(runner.runScriptText("1\n\"two\"\n", "steps"), kExitOk);
    EXPECT_EQ(runner.plugin()->call(u"Fake_IdleLog", {}).toUtf8(), "33");
    runner.linger();
    const std::string lingering = runner.plugin()->call(u"Fake_IdleLog", {}).toUtf8();
    EXPECT_FALSE(lingering.empty());
    EXPECT_EQ(lingering.find_first_not_of('0'), std::string::npos) << lingering;
  }
  std::fclose(out);
}

}  // namespace
}  // namespace host
