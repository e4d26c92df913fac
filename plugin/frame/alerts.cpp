// Start-up alerts: texts from the bundle's "Alerts" table, the number in placeholder ^0.
#include <unicode/ustring.h>

#include <cstdio>

#include "frame/frame.h"
#include "frame/strings_file.h"
#include "toolkit/dialog.h"

XP_AlertHook gXP_AlertHook = nullptr;

namespace {

std::string toUtf8(const std::u16string& s) {
  if (s.empty()) return {};
  std::string out(s.size() * 3, '\0');  // at most three bytes per UTF-16 unit
  int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strToUTF8WithSub(out.data(), static_cast<int32_t>(out.size()), &length,
                     reinterpret_cast<const UChar*>(s.data()), static_cast<int32_t>(s.size()),
                     0xFFFD, nullptr, &status);
  if (U_FAILURE(status)) return {};
  out.resize(static_cast<std::size_t>(length));
  return out;
}

// ParamText: ^0 is the number, ^1 to ^3 are empty.
std::string fillParams(std::string text, long number) {
  const std::string params[4] = {std::to_string(number), "", "", ""};
  for (std::size_t at = text.find('^'); at != std::string::npos; at = text.find('^', at)) {
    if (at + 1 < text.size() && text[at + 1] >= '0' && text[at + 1] <= '3') {
      const std::string& with = params[text[at + 1] - '0'];
      text.replace(at, 2, with);
      at += with.size();
    } else {
      ++at;
    }
  }
  return text;
}

}  // namespace

void XP_ShowCautionAlert(std::int16_t alertId, long number, const std::string& text) {
  if (gXP_AlertHook) {
    gXP_AlertHook(alertId, number, text);
    return;
  }
  toolkit::showAlert(alertId, text, number);
}

std::int16_t XP_DisplayMessage(std::int16_t alertId, long number) {
  try {
    XP_UseResFile(gThisResPath);
    bool found = false;
    std::string text =
        toUtf8(XP_LocalizedString("Alerts", "Alert " + std::to_string(alertId), &found));
    if (!found) text = "Alert " + std::to_string(alertId) + " (^0)";
    XP_ShowCautionAlert(alertId, number, fillParams(text, number));
  } catch (...) {
  }
  return 1;  // the alert's only button
}

std::int16_t XP_CopyStr_Res(std::int16_t /*id*/, unsigned char* out) {
  if (out) out[0] = 0;
  return -192;
}
