// The plug-in frame: the host's call record, start-up, idle and shut-down, the function table,
// the localized strings and the start-up alerts.
#pragma once

#include <cstdint>
#include <string>

#include "fmx/FMWrapper.h"
#include "util/hosttext.h"

// The plug-in id every function is registered under, and the answer to a successful init.
constexpr char kMosaPluginId[5] = "Z7mo";
constexpr fmx::int32 kMosaInitAnswer = 51;
constexpr fmx::uint32 kMosaDialogFlags = 0xE900;   // 59648
constexpr fmx::uint32 kMosaVersionFlags = 0xFF01;  // 65281

// The strings table and the format of its keys.
constexpr const char* kMosaStringsTable = "Mosa7";
constexpr const char* kMosaKeyFormat = "Zelk %d";

// The call in progress, and the resource file that every call makes current.
extern FMX_ExternCallPtr gFMX_ExternCallPtr;
extern std::int16_t gThisResPath;
extern std::int16_t gAppVersion;
extern unsigned char gHasPlatinum;
extern std::uint32_t gCarbonVersion;
extern unsigned char gMosa7_QuickTimeIsInstalled;
extern std::int16_t gPixelDepth;
extern unsigned char gIsColourDevice;
extern unsigned char gMosaDebugTxts;

// Our equivalent of the platform's current resource file.
std::int16_t XP_CurResFile();
void XP_UseResFile(std::int16_t refNum);

// Lifecycle.
fmx::int32 ZkMosa7_PluginInit(std::int16_t version);
std::int16_t ZkStartSomethingUp();
std::int16_t ZkInit();
std::int16_t ZkMosa7_Init();
void ZkMosa7_PluginShutdown();
void ZkMosaShutdown7();
void ZkMosa_IdleSafe7();
std::int16_t ZkMosa7_QuickTimeIsInstalled();
unsigned char ZkMosa7_InitializeQuickTime();
void ZkMosa7_ShutdownQuickTime();

// Function table and dispatcher. Rows 0 to 17 are the dialog functions 4300 to 4317 in order, then
// the two version entries 0 and 1.
using Zk7Handler = fmx::errcode (*)(short funcId, const fmx::ExprEnv& env,
                                    const fmx::DataVect& args, fmx::Data& result);
struct Zk7FunctionRow {
  std::int16_t funcId;
  Zk7Handler handler;  // null: not written yet; the function answers -4243
  std::int16_t minArgs;
  std::int16_t maxArgs;
};
constexpr int kMosaDialogFunctionCount = 18;
constexpr int kMosaFunctionCount = kMosaDialogFunctionCount + 2;
extern const Zk7FunctionRow gMosaFunctions[kMosaFunctionCount];
// Registers 4300 to 4317 in order and stops at the first that fails; then the version entries.
void ZkMosa7_RegisterAllFunctions();
std::int16_t ZkMosa7_RegisterFunction(std::int16_t funcId, std::int16_t minArgs,
                                      std::int16_t maxArgs, std::uint32_t flags);
void ZkMosa7_RegisterVersionFunctions();
void ZkMosa7_UnregisterAllFunctions();
fmx::errcode ZkMosa7_Dispatch(short funcId, const fmx::ExprEnv& env, const fmx::DataVect& args,
                              fmx::Data& result);

// Localized strings, read from the bundle folder of the call in progress.
fmx::uint32 ZkSub_OSXLoadString(const char* table, const char* keyFormat, int id, UniChar* buffer,
                                fmx::uint32 bufferSize);
void XP7_Do_GetStringUni(const char* table, const char* keyFormat, int id, fmx::uint32 languageId,
                         fmx::uint32 bufferSize, UniChar* buffer);
void XP7_Do_GetString(const char* table, const char* keyFormat, int id, fmx::TextAutoPtr& text,
                      bool nameOnly);
// The folder holding the module and its Resources folder: the bundle reference of the call in
// progress, else the one of the last call, else the folder of the loaded module.
std::string XP_BundleFolder();
void XP_RememberBundleFolder();
// The language in use ("en", "de"): MOSA_LANGUAGE, else LANG, else English.
std::string XP_BundleLanguage();
// Forgets the strings read so far (tests switch bundles and languages).
void XP_ForgetLoadedStrings();

// Alerts: a caution alert with a number in its first parameter text.
std::int16_t XP_DisplayMessage(std::int16_t alertId, long number);
// Classic Pascal-string resources do not exist on this platform: always -192.
std::int16_t XP_CopyStr_Res(std::int16_t id, unsigned char* out);
// Shows alert `alertId` with its finished text. Every alert goes through here.
void XP_ShowCautionAlert(std::int16_t alertId, long number, const std::string& text);
// Tests watch alerts through this hook; when set it replaces the default output.
using XP_AlertHook = void (*)(std::int16_t alertId, long number, const std::string& text);
extern XP_AlertHook gXP_AlertHook;

// The version function's helpers.
bool ZkPluginSpecificVersionFuncs7(const char* switches, fmx::TextAutoPtr& resultTxt);
bool XP7_Debug_CheckSwitches(const char* switches, fmx::TextAutoPtr& resultTxt);
