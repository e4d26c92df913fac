#include "toolkit/platform.h"

#include <array>
#include <cstdlib>
#include <string_view>

namespace toolkit::platform {
namespace {

constexpr std::uint32_t kSystemLibraryVersion = 0x0600;  // the toolkit's own version, 6.0

struct DisabledServices {
  std::array<bool, 3> flags{};
  DisabledServices() {
    const char* env = std::getenv("MOSA_DISABLE");
    if (!env) return;
    std::string_view list(env);
    while (!list.empty()) {
      auto comma = list.find(',');
      std::string_view name = list.substr(0, comma);
      if (name == "toolkit") flags[0] = true;
      if (name == "toolkit-version") flags[1] = true;
      if (name == "jpeg") flags[2] = true;
      if (comma == std::string_view::npos) break;
      list.remove_prefix(comma + 1);
    }
  }
};

DisabledServices& disabled() {
  static DisabledServices services;
  return services;
}

}  // namespace

void setServiceDisabled(Service service, bool isDisabled) {
  disabled().flags[static_cast<std::size_t>(service)] = isDisabled;
}

bool serviceDisabled(Service service) {
  return disabled().flags[static_cast<std::size_t>(service)];
}

bool toolkitPresent() {
  return !serviceDisabled(Service::Toolkit);
}

std::uint32_t systemLibraryVersion() {
  if (!toolkitPresent()) return 0;
  // An old library is reported as the last version the plug-in refuses.
  return serviceDisabled(Service::ToolkitVersion) ? 0x0103 : kSystemLibraryVersion;
}

bool jpegDecoderPresent() {
  return !serviceDisabled(Service::JpegDecoder);
}

}  // namespace toolkit::platform
