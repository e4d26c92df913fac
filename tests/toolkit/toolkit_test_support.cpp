#include "toolkit_test_support.h"

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace tktest {

bool qtModuleBuilt() {
  Dl_info info{};
  if (!dladdr(reinterpret_cast<void*>(&toolkit::tickCount), &info) || !info.dli_fname) return false;
  auto dir = std::filesystem::path(info.dli_fname).parent_path();
  return std::filesystem::exists(dir / "libmosa_toolkit_qt.so");
}

toolkit::DialogTemplate everyKindTemplate() {
  using K = toolkit::ItemKind;
  toolkit::DialogTemplate t;
  t.id = 9001;
  t.width = 420;
  t.height = 400;
  t.title = u"Every kind";
  t.resizable = true;
  t.items = {
      {1, K::Button, {330, 360, 400, 380}, u"OK"},
      {2, K::Button, {250, 360, 320, 380}, u"Cancel"},
      {3, K::Text, {70, 10, 400, 40}, u"Message"},
      {4, K::Edit, {70, 50, 400, 72}, u""},
      {5, K::Edit, {70, 80, 400, 102}, u"two"},
      {6, K::Popup, {70, 110, 250, 132}, u""},
      {7, K::Checkbox, {70, 140, 250, 160}, u"Check"},
      {8, K::Icon, {10, 10, 42, 42}, u""},
      {9, K::List, {70, 170, 250, 260}, u""},
      {10, K::TextArea, {260, 170, 384, 260}, u""},
      {11, K::ScrollBar, {384, 170, 400, 260}, u""},
      {12, K::Progress, {70, 280, 400, 292}, u""},
  };
  return t;
}

void BackendTest::SetUp() {
  if (GetParam() == toolkit::Backend::Qt && !qtModuleBuilt())
    GTEST_SKIP() << "the Qt module is not built";
  std::string name = ::testing::UnitTest::GetInstance()->current_test_info()->name();
  std::replace(name.begin(), name.end(), '/', '_');
  tracePath_ = (std::filesystem::temp_directory_path() /
                ("mosa-toolkit-" + std::to_string(::getpid()) + "-" + name + ".jsonl"))
                   .string();
}

void BackendTest::TearDown() {
  if (!tracePath_.empty()) {
    toolkit::endSession();
    std::filesystem::remove(tracePath_);
  }
}

void BackendTest::configure(const std::vector<std::string>& answers) {
  toolkit::SessionOptions options;
  options.backend = GetParam();
  options.answers = answers;
  options.tracePath = tracePath_;
  toolkit::configureSession(options);
}

std::vector<nlohmann::json> BackendTest::trace() const {
  std::vector<nlohmann::json> lines;
  std::ifstream in(tracePath_);
  std::string line;
  while (std::getline(in, line)) lines.push_back(nlohmann::json::parse(line));
  return lines;
}

std::string backendName(const ::testing::TestParamInfo<toolkit::Backend>& info) {
  return info.param == toolkit::Backend::Qt ? "Qt" : "Headless";
}

}  // namespace tktest
