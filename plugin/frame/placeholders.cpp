// Stand-ins for functions whose real code lives in other modules. Each is weak: the module that
// defines the real function simply wins at link time.
#include <array>
#include <memory>

#include "frame/handlers.h"
#include "icons/icons.h"
#include "model/state.h"
#include "util/errors.h"

#define MOSA_PLACEHOLDER(name)               \
  __attribute__((weak)) MOSA_HANDLER(name) { \
    (void)funcId;                            \
    (void)env;                               \
    (void)args;                              \
    try {                                    \
      XP7_OSErrLToData(kErrRefused, result); \
    } catch (...) {                          \
    }                                        \
    return 0;                                \
  }

MOSA_PLACEHOLDER(ZkMosa7_DoBigInputDialog)
MOSA_PLACEHOLDER(ZkMosa7_DoDelayTicks)
MOSA_PLACEHOLDER(ZkMosa7_DoDialog)
MOSA_PLACEHOLDER(ZkMosa7_DoFlashDialog)
MOSA_PLACEHOLDER(ZkMosa7_DoGetButton)
MOSA_PLACEHOLDER(ZkMosa7_DoGetInput)
MOSA_PLACEHOLDER(ZkMosa7_DoGetPopup)
MOSA_PLACEHOLDER(ZkMosa7_DoIconControl)
MOSA_PLACEHOLDER(ZkMosa7_DoInputDialog)
MOSA_PLACEHOLDER(ZkMosa7_DoListDialog)
MOSA_PLACEHOLDER(ZkMosa7_DoProgressBar)
MOSA_PLACEHOLDER(ZkMosa7_DoSetDialogTitle)
MOSA_PLACEHOLDER(ZkMosa7_DoSetInput)
MOSA_PLACEHOLDER(ZkMosa7_DoSetLabels)
MOSA_PLACEHOLDER(ZkMosa7_DoSetListInput)
MOSA_PLACEHOLDER(ZkMosa7_DoSetPopup)
MOSA_PLACEHOLDER(ZkMosa7_DoSetPosition)
MOSA_PLACEHOLDER(ZkMosa7_DoSetPreference)

__attribute__((weak)) void Zk7CheckProgressBarDefunct() {}

__attribute__((weak)) std::int16_t Zk7DeleteAllCustomIconData() {
  return 0;
}

__attribute__((weak)) std::uint32_t gProgressDefunctTicks = 1800;

namespace {

std::array<std::unique_ptr<fmx::TextAutoPtr>, kMosaEntries>& placeholderPopups() {
  static std::array<std::unique_ptr<fmx::TextAutoPtr>, kMosaEntries> rows;
  return rows;
}

}  // namespace

__attribute__((weak)) fmx::TextAutoPtr& gPopupTxt(int row) {
  auto& slot =
      placeholderPopups()[static_cast<std::size_t>(row < 0 || row >= kMosaEntries ? 0 : row)];
  if (!slot) slot = std::make_unique<fmx::TextAutoPtr>();
  return *slot;
}

__attribute__((weak)) void Zk7ReleaseDialogState() {
  for (auto& slot : placeholderPopups()) slot.reset();
}
