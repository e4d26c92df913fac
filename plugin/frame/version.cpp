// Mosa_Version: which plug-in and which version is loaded.
#include "frame/frame.h"
#include "frame/handlers.h"
#include "util/cstring.h"
#include "util/errors.h"

unsigned char gMosaDebugTxts = 0;

namespace {

constexpr const char* kProductName = "Zelk Mosa Plug-In";
constexpr const char* kVersionString = "4.5.2";
constexpr const char* kVersionNumber = "4520";
constexpr fmx::int32 kMacRoman = fmx::Text::kEncoding_ASCII_Mac;

void versionText(fmx::TextAutoPtr& out) {
  XP7_CStrToTxt(kProductName, out, kMacRoman);
  XP7_AppendCStrToTxt(" ", out, kMacRoman);
  XP7_AppendCStrToTxt(kVersionString, out, kMacRoman);
}

}  // namespace

bool XP7_Debug_CheckSwitches(const char* switches, fmx::TextAutoPtr& resultTxt) {
  // "-DebugTxtsOFF" is tested first: "-DebugTxtsON" is a prefix of it.
  if (XP_HasSwitch(switches, "-DebugTxtsOFF")) {
    gMosaDebugTxts = 0;
  } else if (XP_HasSwitch(switches, "-DebugTxtsON")) {
    gMosaDebugTxts = 1;
  } else {
    return false;
  }
  XP7_CStrToTxt("0", resultTxt, kMacRoman);
  return true;
}

bool ZkPluginSpecificVersionFuncs7(const char* switches, fmx::TextAutoPtr& resultTxt) {
  return XP7_Debug_CheckSwitches(switches, resultTxt);
}

MOSA_HANDLER(ZkMosa7_DoVersion) {
  (void)funcId;
  (void)env;
  try {
    fmx::TextAutoPtr resultTxt;
    if (args.Size() == 0 || args.AtAsText(0).GetSize() == 0) {
      versionText(resultTxt);
    } else {
      char switches[1000];
      fmx::uint32 index = 0;
      XP7_GetNextCStringFromVect(args, switches, sizeof switches, &index, kMacRoman);
      if (XP_HasSwitch(switches, "-getversionnumber")) {
        XP7_CStrToTxt(kVersionNumber, resultTxt, kMacRoman);
      } else if (XP_HasSwitch(switches, "-getversionstring")) {
        versionText(resultTxt);
      } else if (!ZkPluginSpecificVersionFuncs7(switches, resultTxt)) {
        // A switch this function does not know is refused.
        XP7_OSErrLToTxt(kErrRefused, resultTxt);
      }
    }
    result.SetAsText(*resultTxt, result.GetLocale());
  } catch (...) {
  }
  return 0;
}
