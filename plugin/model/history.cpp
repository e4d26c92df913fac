#include "model/history.h"

#include "model/state.h"

namespace {

// Rows 1 and 2 take the new values, rows 3 to 9 are emptied, even if a script had set them.
void ClearInputsFromRow3() {
  for (int row = 2; row < kMosaEntries; ++row) gInputTextUNI[row][0] = 0;
}

void MacRomanToRow(const char* s, UniChar* row) {
  fmx::TextAutoPtr txt;
  XP7_CStrToTxt(s, txt, fmx::Text::kEncoding_ASCII_Mac);
  XP7_TxtToUniStr(txt, row, kMosaRowUnits);
}

}  // namespace

void Zk7CleanupHistory() {
  if (!gHistoryTxt_Stored) return;
  gHistoryTxt()->DeleteText(0, fmx::kSize_End);
  gHistoryTxt_Stored = 0;
}

fmx::int32 Zk7SaveDialogHistory(const char* buttonText, std::int32_t buttonNumber,
                                const char* value1, const char* value2) {
  Zk7CleanupHistory();
  gLastButtonNumberClicked = buttonNumber;
  XP7_CStrToTxt(buttonText, gLastButtonTextClickedTxt(), fmx::Text::kEncoding_ASCII_Mac);
  MacRomanToRow(value1, gInputTextUNI[0]);
  MacRomanToRow(value2, gInputTextUNI[1]);
  ClearInputsFromRow3();
  // A failing host call throws before this point, so reaching it means no error.
  return 0;
}

void Zk7SaveDialogHistoryUNI(const UniChar* buttonText, std::int32_t buttonNumber,
                             const UniChar* value1, const UniChar* value2) {
  Zk7CleanupHistory();
  gLastButtonNumberClicked = buttonNumber;
  gLastButtonTextClickedTxt()->AssignUnicode(buttonText);
  XP7_UniStrToUniStrCopy(value1, gInputTextUNI[0], kMosaRowUnits - 1);
  XP7_UniStrToUniStrCopy(value2, gInputTextUNI[1], kMosaRowUnits - 1);
  ClearInputsFromRow3();
}
