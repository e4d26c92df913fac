// Loads the Qt backend module (libmosa_toolkit_qt.so, beside this library) on first Qt use, so
// loading the toolkit, and every headless run, never loads Qt.
#include <dlfcn.h>

#include <string>

#include "session_state.h"

namespace toolkit::detail {

Backend* loadQtBackend(std::string& why) {
  Dl_info info{};
  std::string dir;
  if (dladdr(reinterpret_cast<void*>(&loadQtBackend), &info) && info.dli_fname) {
    dir = info.dli_fname;
    auto slash = dir.rfind('/');
    dir = slash == std::string::npos ? std::string() : dir.substr(0, slash + 1);
  }
  void* module = dlopen((dir + "libmosa_toolkit_qt.so").c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!module) {
    const char* error = dlerror();
    why = error ? error : "the Qt module is missing";
    return nullptr;
  }
  using Factory = Backend* (*)(char*, std::size_t);
  auto factory = reinterpret_cast<Factory>(dlsym(module, "mosa_toolkit_qt_create"));
  if (!factory) {
    why = "the Qt module has no factory";
    return nullptr;
  }
  char reason[512] = "";
  Backend* created = factory(reason, sizeof reason);
  if (!created) why = *reason ? reason : "Qt could not start";
  return created;
}

}  // namespace toolkit::detail
