// Drives the plug-in as the host does: call records for the entry point, argument vectors and
// results for the functions, with the bundle of the build or one a test made; and puts the dialog
// state back between tests.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "fmwrapper/host_api.h"
#include "fmx/FMWrapper.h"
#include "frame/frame.h"
#include "frame/handlers.h"
#include "model/state.h"

namespace mosa_test {

// The folder holding Mosa.fmx and its Resources, as the build leaves it.
std::string buildBundle();

// One call of the entry point; answers the record's result field.
fmx::ptrtype callEntry(fmx::uchar selector, const std::string& bundle, fmx::int16 extnVersion = 60,
                       fmx::uchar parm1 = 0, fmx::ptrtype parm2 = 0, fmx::ptrtype parm3 = 0,
                       fmx::ptrtype result = 0, fmx::int16 resourceId = 0);
fmx::int32 init(fmx::int16 extnVersion, const std::string& bundle = buildBundle());
void shutdown(const std::string& bundle = buildBundle());

// A string of the bundle through the get-string selector; empty when nothing was copied.
std::u16string getString(int id, fmx::uint32 bufferUnits = 1024,
                         const std::string& bundle = buildBundle());

// A text argument (UTF-8) or a number argument.
using Arg = std::variant<std::string, std::int32_t>;

// Calls a function through the dispatcher with text arguments, or one handler directly, and answers
// the result as UTF-8.
std::string callFunction(short funcId, const std::vector<std::string>& args);
std::string callHandler(Zk7Handler handler, const std::vector<Arg>& args);

std::string toUtf8(const fmx::Text& text);
std::string toUtf8(const std::u16string& text);
std::u16string toU16(const std::string& utf8);
std::u16string Row(const UniChar* row);

// Puts every field of the dialog state back to its start-up value.
void ResetModelState();

// A bundle folder in a fresh temporary directory with the given strings files
// ("en.lproj/Mosa7.strings").
class TempBundle {
 public:
  TempBundle();
  ~TempBundle();
  TempBundle(const TempBundle&) = delete;
  TempBundle& operator=(const TempBundle&) = delete;
  void write(const std::string& relative, const std::string& content) const;
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace mosa_test
