// Mosa_Version: which plug-in and which version is loaded.
#include "frame/frame.h"
#include "frame/handler_frame.h"
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
  (void)funcId, (void)env;
  return Zk7HandlerFrame(
      args, result, 0,
      [](Zk7Call& call, fmx::int32& err) {
        // The version answers in the result's own locale, with or without an argument.
        *call.locale = call.result.GetLocale();
        if (call.args.Size() == 0 || call.args.AtAsText(0).GetSize() == 0) {
          versionText(call.resultTxt);
        } else if (XP_HasSwitch(call.switches, "-getversionnumber")) {
          XP7_CStrToTxt(kVersionNumber, call.resultTxt, kMacRoman);
        } else if (XP_HasSwitch(call.switches, "-getversionstring")) {
          versionText(call.resultTxt);
        } else if (!ZkPluginSpecificVersionFuncs7(call.switches, call.resultTxt)) {
          err = kErrRefused;  // a switch this function does not know
        }
      },
      kMacRoman);
}
