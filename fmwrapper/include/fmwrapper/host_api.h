// What a host program needs from the host library beyond the FM_* interface: the table of
// registered external functions, and fault injection for tests.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fmx/FMWrapper.h"

namespace fmwrapper {

struct Registration {
  std::string pluginId;  // four characters
  fmx::int16 functionId = 0;
  std::u16string name;
  std::u16string prototype;
  fmx::int16 minArgs = 0;
  fmx::int16 maxArgs = 0;
  fmx::uint32 flags = 0;
  fmx::ExtPluginType function = nullptr;
};

// Registrations in the order they were made.
std::vector<Registration> registrations();
// Looks a function up by name as the host application does: ignoring case.
std::optional<Registration> findRegistration(std::u16string_view name);
void clearRegistrations();

// How the host program evaluates a calculation for FM_ExprEnv_Evaluate; answers an error code
// (0 for success) and writes the value into `result`. Without one, every evaluation fails.
using Evaluator = std::function<fmx::errcode(const fmx::Text& expression, fmx::Data& result)>;
void setEvaluator(Evaluator evaluator);

// Makes the k-th FM_* call from now (k >= 1) report `code` in its error pad (1 out of memory,
// 2 other) and do nothing else. k = 0 cancels a pending fault.
void injectFault(std::uint64_t k, int code);
// Number of FM_* calls made so far in this process.
std::uint64_t callCount();
// Number of host objects (texts, data, numbers, ...) currently alive; for leak checks in tests.
std::int64_t liveObjects();

// Text conversion helpers for hosts and tests.
std::u16string utf8ToUtf16(std::string_view s);
std::string utf16ToUtf8(std::u16string_view s);

}  // namespace fmwrapper
