// The function table: registration of every entry under the plug-in id, and the dispatcher the
// host calls for all of them.
#include <new>

#include "frame/frame.h"
#include "frame/handlers.h"
#include "util/errors.h"

namespace {

fmx::QuadCharAutoPtr pluginId() {
  return fmx::QuadCharAutoPtr(kMosaPluginId[0], kMosaPluginId[1], kMosaPluginId[2],
                              kMosaPluginId[3]);
}

// Name (up to the first "(") and whole prototype of string `stringId`.
void loadPrototype(int stringId, fmx::TextAutoPtr& name, fmx::TextAutoPtr& prototype) {
  XP7_Do_GetString(kMosaStringsTable, kMosaKeyFormat, stringId, name, true);
  XP7_Do_GetString(kMosaStringsTable, kMosaKeyFormat, stringId, prototype, false);
}

}  // namespace

std::int16_t ZkMosa7_RegisterFunction(std::int16_t funcId, std::int16_t minArgs,
                                      std::int16_t maxArgs, std::uint32_t flags) {
  try {
    fmx::QuadCharAutoPtr id = pluginId();
    fmx::TextAutoPtr name;
    fmx::TextAutoPtr prototype;
    XP7_Do_GetString(kMosaStringsTable, kMosaKeyFormat, funcId, name, true);
    if (name->GetSize() == 0) return kErrTooMuch;
    XP7_Do_GetString(kMosaStringsTable, kMosaKeyFormat, funcId, prototype, false);
    if (prototype->GetSize() == 0) return kErrTooMuch;
    return fmx::ExprEnv::RegisterExternalFunction(*id, funcId, *name, *prototype, minArgs, maxArgs,
                                                  flags, ZkMosa7_Dispatch);
  } catch (const std::bad_alloc&) {
    return kErrMemory;
  } catch (...) {
    return kErrRefused;
  }
}

void ZkMosa7_RegisterVersionFunctions() {
  // The host's answers are not checked here, nor are empty strings caught.
  for (int row = kMosaDialogFunctionCount; row < kMosaFunctionCount; ++row) {
    const Zk7FunctionRow& f = gMosaFunctions[row];
    try {
      fmx::QuadCharAutoPtr id = pluginId();
      fmx::TextAutoPtr name;
      fmx::TextAutoPtr prototype;
      loadPrototype(9000 + f.funcId, name, prototype);
      fmx::ExprEnv::RegisterExternalFunction(*id, f.funcId, *name, *prototype, f.minArgs, f.maxArgs,
                                             kMosaVersionFlags, ZkMosa7_Dispatch);
    } catch (...) {
    }
  }
}

void ZkMosa7_RegisterAllFunctions() {
  for (int row = 0; row < kMosaDialogFunctionCount; ++row) {
    const Zk7FunctionRow& f = gMosaFunctions[row];
    if (ZkMosa7_RegisterFunction(f.funcId, f.minArgs, f.maxArgs, kMosaDialogFlags) != 0) return;
  }
  ZkMosa7_RegisterVersionFunctions();
}

void ZkMosa7_UnregisterAllFunctions() {
  try {
    fmx::QuadCharAutoPtr id = pluginId();
    auto unregister = [&id](std::int16_t funcId) {
      try {
        fmx::ExprEnv::UnRegisterExternalFunction(*id, funcId);
      } catch (...) {
      }
    };
    // The version entries first, then the dialog functions.
    for (int row = kMosaDialogFunctionCount; row < kMosaFunctionCount; ++row)
      unregister(gMosaFunctions[row].funcId);
    for (int row = 0; row < kMosaDialogFunctionCount; ++row) unregister(gMosaFunctions[row].funcId);
  } catch (...) {
  }
}

fmx::errcode ZkMosa7_Dispatch(short funcId, const fmx::ExprEnv& env, const fmx::DataVect& args,
                              fmx::Data& result) {
  const auto id = static_cast<std::uint16_t>(funcId);
  try {
    if (id == 0 || id == 1) return ZkMosa7_DoVersion(funcId, env, args, result);
    const auto row = static_cast<std::uint16_t>(id - 4300);
    if (row >= kMosaDialogFunctionCount) return 0;
    const Zk7FunctionRow& f = gMosaFunctions[row];
    if (!f.handler) {
      XP7_OSErrLToData(kErrRefused, result);
      return 0;
    }
    return f.handler(f.funcId, env, args, result);
  } catch (const std::bad_alloc&) {
    // Handlers report their own failures; these only keep a stray exception inside the plug-in.
    try {
      XP7_OSErrLToData(kErrMemory, result);
    } catch (...) {
    }
  } catch (...) {
    try {
      XP7_OSErrLToData(kErrRefused, result);
    } catch (...) {
    }
  }
  return 0;
}
