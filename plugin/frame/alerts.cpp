// Start-up alerts: texts from the bundle's "Alerts" table, the number in placeholder ^0.
#include <cstdio>

#include "frame/frame.h"
#include "frame/strings_file.h"
#include "toolkit/dialog.h"

XP_AlertHook gXP_AlertHook = nullptr;

namespace {

std::string toUtf8(const std::u16string& s) {
  std::string out;
  for (std::size_t i = 0; i < s.size(); ++i) {
    char32_t cp = s[i];
    if (cp >= 0xD800 && cp < 0xDC00 && i + 1 < s.size() && s[i + 1] >= 0xDC00 &&
        s[i + 1] <= 0xDFFF) {
      cp = 0x10000 + ((cp - 0xD800) << 10) + (s[++i] - 0xDC00);
    }
    if (cp < 0x80) {
      out += static_cast<char>(cp);
    } else if (cp < 0x800) {
      out += static_cast<char>(0xC0 | (cp >> 6));
      out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
      out += static_cast<char>(0xE0 | (cp >> 12));
      out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
      out += static_cast<char>(0xF0 | (cp >> 18));
      out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
      out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (cp & 0x3F));
    }
  }
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
