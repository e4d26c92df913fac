// The function table: registration of every entry under the plug-in id, and the dispatcher the
// host calls for all of them.
#include <new>

#include "frame/frame.h"
#include "frame/handlers.h"
#include "util/errors.h"

namespace {

using Handler = fmx::errcode (*)(short, const fmx::ExprEnv&, const fmx::DataVect&, fmx::Data&);

// Row n is function 4300 + n.
constexpr Handler kHandlers[18] = {
    ZkMosa7_DoBigInputDialog, ZkMosa7_DoDelayTicks,  ZkMosa7_DoDialog,
    ZkMosa7_DoFlashDialog,    ZkMosa7_DoGetButton,   ZkMosa7_DoGetInput,
    ZkMosa7_DoGetPopup,       ZkMosa7_DoIconControl, ZkMosa7_DoInputDialog,
    ZkMosa7_DoListDialog,     ZkMosa7_DoProgressBar, ZkMosa7_DoSetDialogTitle,
    ZkMosa7_DoSetInput,       ZkMosa7_DoSetLabels,   ZkMosa7_DoSetListInput,
    ZkMosa7_DoSetPopup,       ZkMosa7_DoSetPosition, ZkMosa7_DoSetPreference};

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
  struct Entry {
    std::int16_t funcId;
    int stringId;
    std::int16_t args;
  };
  for (const Entry& e : {Entry{0, 9000, 0}, Entry{1, 9001, 1}}) {
    try {
      fmx::QuadCharAutoPtr id = pluginId();
      fmx::TextAutoPtr name;
      fmx::TextAutoPtr prototype;
      loadPrototype(e.stringId, name, prototype);
      fmx::ExprEnv::RegisterExternalFunction(*id, e.funcId, *name, *prototype, e.args, e.args,
                                             kMosaVersionFlags, ZkMosa7_Dispatch);
    } catch (...) {
    }
  }
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
    unregister(0);
    unregister(1);
    for (std::int16_t funcId = 4300; funcId <= 4317; ++funcId) unregister(funcId);
  } catch (...) {
  }
}

fmx::errcode ZkMosa7_Dispatch(short funcId, const fmx::ExprEnv& env, const fmx::DataVect& args,
                              fmx::Data& result) {
  const auto id = static_cast<std::uint16_t>(funcId);
  try {
    if (id == 0 || id == 1) return ZkMosa7_DoVersion(funcId, env, args, result);
    const auto row = static_cast<std::uint16_t>(id - 4300);
    if (row > 17) return 0;
    return kHandlers[row](static_cast<short>(4300 + row), env, args, result);
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
