#include "model/results.h"

#include "util/cstring.h"
#include "util/hosttext.h"

namespace {

// A button number that names a real button (1 to 4) can be answered with that button's title.
bool IsButton(std::int16_t number) {
  return number >= 1 && number <= kMosaButtons;
}

}  // namespace

void Zk7MakeButtonResultUNI(const ParSwitches7Tag& sw, std::int16_t* buttonNumber,
                            const UniChar buttonTexts[kMosaButtons][kMosaRowUnits],
                            fmx::TextAutoPtr& result) {
  if (*buttonNumber == kItemEscape) *buttonNumber = 0;
  if (sw.returnButtonText && IsButton(*buttonNumber)) {
    result->AssignUnicode(buttonTexts[*buttonNumber - 1]);
    return;
  }
  XP7_longToTxt(*buttonNumber, result);
}

void Zk7MakeListResultUNI(const ParSwitches7Tag& sw, std::int32_t itemNumber,
                          const UniChar* itemText, fmx::TextAutoPtr& result) {
  if (sw.returnListText) {
    XP7_AppendUniStrToTxt(itemText, result);
    return;
  }
  char number[24];
  XP_NumToCString(itemNumber, number);
  XP7_AppendCStrToTxt(number, result, fmx::Text::kEncoding_ASCII_DOS);
}

const char* Zk7GetSeparator() {
  return gSeparatorStr;
}
