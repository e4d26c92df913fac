// Facts about the platform that the plug-in checks at start-up, and a way for tests to make each
// check fail. A service can also be switched off from outside the process with the environment
// variable MOSA_DISABLE, a comma-separated list of the names below ("toolkit", "toolkit-version",
// "jpeg").
#pragma once

#include <cstdint>

namespace toolkit::platform {

enum class Service { Toolkit, ToolkitVersion, JpegDecoder };

// The platform's system-library version in the host's 0xMmr form; 0 when the toolkit is absent.
// A version of 0x103 or less is too old for the plug-in.
std::uint32_t systemLibraryVersion();
bool toolkitPresent();
// Whether the JPEG decoder behind the picture service may be used.
bool jpegDecoderPresent();

// For tests: force a service to report itself missing (or restore it).
void setServiceDisabled(Service service, bool disabled);
bool serviceDisabled(Service service);

}  // namespace toolkit::platform
