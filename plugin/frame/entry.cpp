// The host's single entry point and the plug-in's lifecycle: init, idle, shut-down, get-string.
#include "dialogs/list_dialog.h"
#include "fmx/FMXExtern.h"
#include "frame/frame.h"
#include "frame/handlers.h"
#include "icons/icons.h"
#include "model/state.h"
#include "toolkit/platform.h"

FMX_ExternCallPtr gFMX_ExternCallPtr = nullptr;
std::int16_t gThisResPath = 0;
std::int16_t gAppVersion = 0;
unsigned char gHasPlatinum = 0;
std::uint32_t gCarbonVersion = 0;
unsigned char gMosa7_QuickTimeIsInstalled = 0;
std::int16_t gPixelDepth = 0;
unsigned char gIsColourDevice = 0;

namespace {

std::int16_t gCurrentResFile = 0;

constexpr std::uint32_t kOldestRefusedLibrary = 0x103;
constexpr std::int16_t kAlertOldSystem = 1251;
constexpr std::int16_t kAlertInitFailed = 24213;

void handleCall(FMX_ExternCallPtr pb) {
  switch (pb->whichCall) {
    case kFMXT_Init:
      pb->result = static_cast<fmx::ptrtype>(
          static_cast<std::intptr_t>(ZkMosa7_PluginInit(pb->extnVersion)));
      break;
    case kFMXT_Idle:
      if (pb->parm1 < kFMXT_Unsafe) ZkMosa_IdleSafe7();
      break;
    case kFMXT_Shutdown:
      ZkMosa7_PluginShutdown();
      break;
    case kFMXT_GetString:
      XP7_Do_GetStringUni(kMosaStringsTable, kMosaKeyFormat, pb->parm1,
                          static_cast<fmx::uint32>(pb->parm2), static_cast<fmx::uint32>(pb->parm3),
                          reinterpret_cast<UniChar*>(pb->result));
      break;
    default:
      break;
  }
}

}  // namespace

std::int16_t XP_CurResFile() {
  return gCurrentResFile;
}
void XP_UseResFile(std::int16_t refNum) {
  gCurrentResFile = refNum;
}

extern "C" __attribute__((visibility("default"))) void FMExternCallProc(FMX_ExternCallPtr pb) {
  if (!pb) return;
  gFMX_ExternCallPtr = pb;
  XP_RememberBundleFolder();
  const std::int16_t saved = XP_CurResFile();
  gThisResPath = pb->resourceID;
  XP_UseResFile(gThisResPath);
  try {
    handleCall(pb);
  } catch (...) {
    // Nothing may leave the plug-in; a failed init still has to answer something the host accepts.
    if (pb->whichCall == kFMXT_Init)
      pb->result = static_cast<fmx::ptrtype>(static_cast<std::intptr_t>(kDoNotEnable));
  }
  XP_UseResFile(saved);
  // The record belongs to the host and ends with the call; only its bundle folder is kept.
  gFMX_ExternCallPtr = nullptr;
}

fmx::int32 ZkMosa7_PluginInit(std::int16_t version) {
  if (static_cast<std::uint16_t>(version - 50) > 205) return kBadExtn;
  gAppVersion = version;
  if (ZkStartSomethingUp() != 0) return kDoNotEnable;
  // A function that cannot be registered stops the rest, but the plug-in stays enabled.
  ZkMosa7_RegisterAllFunctions();
  return kMosaInitAnswer;
}

std::int16_t ZkStartSomethingUp() {
  return ZkInit();
}

std::int16_t ZkInit() {
  gHasPlatinum = toolkit::platform::toolkitPresent() ? 1 : 0;
  gCarbonVersion = toolkit::platform::systemLibraryVersion();
  if (gCarbonVersion <= kOldestRefusedLibrary) {
    XP_DisplayMessage(kAlertOldSystem, 0);
    return 1;
  }
  std::int16_t err = ZkMosa7_Init();
  if (err != 0) {
    XP_DisplayMessage(kAlertInitFailed, err);
    return 1;
  }
  return 0;
}

std::int16_t ZkMosa7_Init() {
  gProgressDefunctTicks = 1800;
  if (!toolkit::platform::jpegDecoderPresent()) {
    gMosa7_QuickTimeIsInstalled = 0;
    return -2020;
  }
  gMosa7_QuickTimeIsInstalled = 1;
  // Every screen the toolkit draws on is a 32-bit colour device.
  gPixelDepth = 32;
  gIsColourDevice = 1;
  for (int row = 0; row < kMosaEntries; ++row) gPopupTxt(row)->DeleteText(0, fmx::kSize_End);
  return 0;
}

void ZkMosa_IdleSafe7() {
  Zk7CheckProgressBarDefunct();
}

void ZkMosa7_PluginShutdown() {
  ZkMosa7_UnregisterAllFunctions();
  ZkMosaShutdown7();
}

void ZkMosaShutdown7() {
  Zk7DeleteAllCustomIconData();
  Zk7DisposeLeftListDialog();
  // The dialog state's host texts must go before the host library does.
  Zk7ReleaseDialogState();
}

std::int16_t ZkMosa7_QuickTimeIsInstalled() {
  return gMosa7_QuickTimeIsInstalled ? 0 : -2020;
}

unsigned char ZkMosa7_InitializeQuickTime() {
  gMosa7_QuickTimeIsInstalled = toolkit::platform::jpegDecoderPresent() ? 1 : 0;
  return gMosa7_QuickTimeIsInstalled;
}

void ZkMosa7_ShutdownQuickTime() {}
