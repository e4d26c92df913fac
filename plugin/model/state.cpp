#include "model/state.h"

#include <optional>

UniChar gLabelTextsUNI[kMosaEntries][kMosaRowUnits] = {};
UniChar gInputTextUNI[kMosaEntries][kMosaRowUnits] = {};
std::int32_t gItemSelected[kMosaEntries] = {1, 1, 1, 1, 1, 1, 1, 1, 1};
UniChar gDefaultDialogTitleUNI[kMosaRowUnits] = {};

std::uint16_t gCustomWindPosition = kPositionDefault;
unsigned char gAnimateWindPosition = 0;
std::int16_t gLeft = 0;
std::int16_t gTop = 0;

UniChar gInitialSelectStr[kMosaRowUnits] = {};
std::uint32_t gProgressDefunctTicks = kDefaultDefunctTicks;

std::int32_t gLastButtonNumberClicked = 0;
unsigned char gHistoryTxt_Stored = 0;

const char* gSeparatorStr = "|";
std::int32_t gRemoveEmptyLineAtEnd = 0;
std::int16_t gAListCount = 0;
std::int16_t gAInitialSelectItem = -1;

namespace {

// Host texts cannot be made before the host library is there, so they wait for their first use.
std::optional<fmx::TextAutoPtr> gPopupTxts[kMosaEntries];
std::optional<fmx::TextAutoPtr> gLastButtonTxt;
std::optional<fmx::TextAutoPtr> gHistory;

fmx::TextAutoPtr& Made(std::optional<fmx::TextAutoPtr>& slot) {
  if (!slot) slot.emplace();
  return *slot;
}

}  // namespace

fmx::TextAutoPtr& gPopupTxt(int row) {
  return Made(gPopupTxts[row]);
}
fmx::TextAutoPtr& gLastButtonTextClickedTxt() {
  return Made(gLastButtonTxt);
}
fmx::TextAutoPtr& gHistoryTxt() {
  return Made(gHistory);
}

void Zk7ReleaseDialogState() {
  for (auto& txt : gPopupTxts) txt.reset();
  gLastButtonTxt.reset();
  gHistory.reset();
  gHistoryTxt_Stored = 0;
}
