#include "dialog_fixture.h"

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "host_fixture.h"
#include "model/state.h"

namespace dialogtest {

bool qtModuleBuilt() {
  return std::filesystem::exists(std::filesystem::path(MOSA_TEST_BUNDLE) / "libmosa_toolkit_qt.so");
}

void DialogTest::SetUp() {
  if (GetParam() == toolkit::Backend::Qt && !qtModuleBuilt())
    GTEST_SKIP() << "the Qt module is not built";
  std::string name = ::testing::UnitTest::GetInstance()->current_test_info()->name();
  std::replace(name.begin(), name.end(), '/', '_');
  tracePath_ = (std::filesystem::temp_directory_path() /
                ("mosa-dialogs-" + std::to_string(::getpid()) + "-" + name + ".jsonl"))
                   .string();
  ASSERT_EQ(mosa_test::init(60), 51);
  gCustomWindPosition = kPositionDefault;
}

void DialogTest::TearDown() {
  if (tracePath_.empty()) return;
  mosa_test::shutdown();
  toolkit::endSession();
  std::filesystem::remove(tracePath_);
}

void DialogTest::answers(const std::vector<std::string>& lines) {
  toolkit::SessionOptions options;
  options.backend = GetParam();
  options.answers = lines;
  options.tracePath = tracePath_;
  toolkit::configureSession(options);
}

std::string DialogTest::call(short funcId, const std::vector<std::string>& args) {
  return mosa_test::callFunction(funcId, args);
}

std::vector<nlohmann::json> DialogTest::trace() const {
  std::vector<nlohmann::json> lines;
  std::ifstream in(tracePath_);
  std::string line;
  while (std::getline(in, line)) lines.push_back(nlohmann::json::parse(line));
  return lines;
}

std::vector<nlohmann::json> DialogTest::events(const std::string& ev) const {
  std::vector<nlohmann::json> out;
  for (auto& line : trace())
    if (line["ev"] == ev) out.push_back(line);
  return out;
}

const nlohmann::json& item(const nlohmann::json& window, int n) {
  for (const auto& i : window["items"])
    if (i["n"] == n) return i;
  static const nlohmann::json none;
  return none;
}

std::string backendName(const ::testing::TestParamInfo<toolkit::Backend>& info) {
  return info.param == toolkit::Backend::Qt ? "Qt" : "Headless";
}

}  // namespace dialogtest
