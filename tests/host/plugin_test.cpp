// Loading a plug-in and driving its lifecycle, with the fake plug-in of this folder.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>

#include "host/plugin.h"
#include "host/runner.h"

namespace host {
namespace {

TEST(PluginLoading, LifecycleRegistrationsAndCalls) {
  {
    Plugin p(FAKE_PLUGIN);
    EXPECT_EQ(p.init(49), -1);
    EXPECT_FALSE(p.enabled());
    EXPECT_TRUE(p.lookup(u"Fake_Echo").empty());

    EXPECT_EQ(p.init(50), 100);
    ASSERT_TRUE(p.enabled());
    EXPECT_EQ(p.functions().size(), 8u);
    // The instance id points at the folder that holds the module.
    EXPECT_EQ(p.call(u"fake_folder", {}).toUtf8(),
              std::filesystem::path(FAKE_PLUGIN).parent_path().string());
    EXPECT_EQ(p.getString(128), u"Fake Plug-In");
    EXPECT_EQ(p.getString(128, 0, 4), u"");  // too small a buffer: the plug-in leaves it empty

    // Two registrations share a name; the argument count picks one.
    auto ranges = p.lookup(u"FAKE_VERSION");
    ASSERT_EQ(ranges.size(), 2u);
    EXPECT_EQ(p.call(u"Fake_Version", {}).toUtf8(), "Fake Plug-In 1.0");
    EXPECT_EQ(p.call(u"Fake_Version", {Value::fromUtf8("-x")}).toUtf8(), "switches:-x");
    EXPECT_EQ(p.call(u"Fake_Echo", {Value::fromUtf8("a¶"), Value::number(Number(5, 2))}).toUtf8(),
              "a¶|2.5");
    Value sum = p.call(u"Fake_Add", {Value::number(40L), Value::fromUtf8("2")});
    EXPECT_TRUE(sum.isNumber());
    EXPECT_EQ(sum.toUtf8(), "42");
    EXPECT_EQ(p.call(u"Fake_Fail", {Value::number(1L)}).toUtf8(), "?");

    p.idle(3);
    p.idle(2);
    EXPECT_EQ(p.call(u"Fake_IdleLog", {}).toUtf8(), "32");
    p.shutdown();
    EXPECT_TRUE(fmwrapper::registrations().empty());
    EXPECT_TRUE(p.lookup(u"Fake_Echo").empty());
  }
  {
    Plugin p(FAKE_PLUGIN);  // the destructor shuts an enabled plug-in down
    p.init();
  }
  EXPECT_TRUE(fmwrapper::registrations().empty());
}

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
