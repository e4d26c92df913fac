// Shared by the toolkit tests: run a case on each backend, read the trace back.
#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "toolkit/dialog.h"
#include "toolkit/session.h"

namespace tktest {

// Whether the Qt module was built next to the toolkit library.
bool qtModuleBuilt();

// A dialog template with every kind of item, numbered 1..11:
// 1 OK, 2 Cancel (buttons), 3 text, 4 edit, 5 edit, 6 popup, 7 checkbox, 8 icon, 9 list,
// 10 textarea, 11 scrollbar, 12 progress.
toolkit::DialogTemplate everyKindTemplate();

class BackendTest : public ::testing::TestWithParam<toolkit::Backend> {
 protected:
  void SetUp() override;
  void TearDown() override;
  // Configures the session for this case's backend with a trace file.
  void configure(const std::vector<std::string>& answers);
  std::vector<nlohmann::json> trace() const;
  std::string tracePath_;
};

std::string backendName(const ::testing::TestParamInfo<toolkit::Backend>& info);

}  // namespace tktest
