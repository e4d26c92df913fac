// Runs dialog functions through the dispatcher with scripted answers on one backend, and reads
// the trace they leave.
#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "toolkit/session.h"

namespace dialogtest {

class DialogTest : public ::testing::TestWithParam<toolkit::Backend> {
 protected:
  void SetUp() override;
  void TearDown() override;
  // Starts a fresh session with these answers (and a trace).
  void answers(const std::vector<std::string>& lines);
  // The function's result; the arguments are texts.
  std::string call(short funcId, const std::vector<std::string>& args);
  std::vector<nlohmann::json> trace() const;
  // The trace events of one kind ("open", "close", …).
  std::vector<nlohmann::json> events(const std::string& ev) const;

  std::string tracePath_;
};

// The item with number n of a traced window.
const nlohmann::json& item(const nlohmann::json& window, int n);

std::string backendName(const ::testing::TestParamInfo<toolkit::Backend>& info);
bool qtModuleBuilt();

}  // namespace dialogtest
