// A loaded plug-in module and its lifecycle as the host drives it: init, idle, get-string,
// shutdown, and calls of the functions it registered with the host library.
#pragma once

#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "fmwrapper/host_api.h"
#include "fmx/FMXExtern.h"
#include "host/calc.h"

namespace host {

// The newest host interface version this host speaks, given to init unless the caller chooses
// another. Plug-ins written for the 7-and-later interface accept 50 to 255.
constexpr std::int16_t kNewestExtnVersion = 255;
// The get-string id under which a plug-in answers its name.
constexpr std::uint8_t kPluginNameString = 128;

// A plug-in file that is missing, cannot be loaded or lacks the entry point.
class PluginLoadError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A dialog waited for a person while answers drove the run and none was left: the run stops.
class RunStopped : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class Plugin : public ExternalFunctions {
 public:
  // Loads the module; throws PluginLoadError. Nothing is called yet.
  explicit Plugin(const std::string& path);
  // Shuts the plug-in down if it is enabled, then unloads it.
  ~Plugin() override;
  Plugin(const Plugin&) = delete;
  Plugin& operator=(const Plugin&) = delete;

  // Init (selector 0); returns the plug-in's answer. The plug-in is enabled unless the answer
  // is -1 (bad extension version) or -2 (do not enable).
  std::int32_t init(std::int16_t extnVersion = kNewestExtnVersion);
  bool enabled() const { return enabled_; }
  // Idle (selector 1) at a level from 0 (user idle) to 4 (unsafe).
  void idle(std::uint8_t level);
  // Get-string (selector 7): the plug-in's string `id` in a buffer of `bufferUnits` UTF-16 units.
  std::u16string getString(std::uint8_t id, std::uint32_t language = 0,
                           std::uint32_t bufferUnits = 1024);
  // Shutdown (selector 4); afterwards the plug-in is disabled and its functions are gone.
  void shutdown();

  // The folder that holds the module and its Resources: what the instance id points at.
  const std::string& folder() const { return folder_; }
  // The registrations the plug-in made, in order.
  std::vector<fmwrapper::Registration> functions() const;

  std::vector<Range> lookup(std::u16string_view name) override;
  // Throws RunStopped when the call left the toolkit's session stopped.
  Value call(std::u16string_view name, const std::vector<Value>& args) override;
  std::uint64_t generation() const override { return generation_; }
  int resolve(std::u16string_view name, int count) override;
  Value callResolved(int function, const std::vector<Value>& args) override;
  // The call path without name lookup, for callers that already hold the registration.
  Value call(const fmwrapper::Registration& reg, const std::vector<Value>& args);

 private:
  void send(std::uint8_t selector, std::uint8_t parm1, std::uintptr_t parm2, std::uintptr_t parm3,
            std::uintptr_t result, std::int16_t extnVersion);
  void refreshTable();

  std::string path_;
  std::string folder_;
  void* handle_ = nullptr;
  FMX_ExternCallProc entry_ = nullptr;
  std::int16_t extnVersion_ = kNewestExtnVersion;
  bool enabled_ = false;
  std::intptr_t lastResult_ = 0;
  // The registrations, and their indexes by folded name; several may share one name (with
  // different argument counts).
  std::vector<fmwrapper::Registration> registrations_;
  std::map<std::u16string, std::vector<int>> table_;
  std::uint64_t generation_ = 0;
};

// Converts between the host's values and the host library's Data; texts take `locale`.
void toData(const Value& v, fmx::Data& out, const fmx::Locale& locale);
Value fromData(const fmx::Data& data);

}  // namespace host
