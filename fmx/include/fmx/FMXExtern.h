// Host interface: the call record the host hands to a plug-in's single entry point.
#pragma once

#include <cstddef>

#include "fmx/FMXCalcEngine.h"
#include "fmx/FMXTypes.h"

extern "C" {

struct FMX_ExternCallStruct;
using FMX_ExternCallPtr = FMX_ExternCallStruct*;
using FMX_ExternCallProc = void (*)(FMX_ExternCallPtr);

// Selectors (which call the host is making).
enum : fmx::uchar {
  kFMXT_Init = 0,
  kFMXT_Idle = 1,
  kFMXT_Shutdown = 4,
  kFMXT_DoAppPreferences = 5,
  kFMXT_GetString = 7,
  kFMXT_SessionShutdown = 8,
  kFMXT_FileShutdown = 9
};

// Idle levels, passed in parm1 of an idle call.
enum : fmx::uchar {
  kFMXT_UserIdle = 0,
  kFMXT_UserNotIdle = 1,
  kFMXT_ScriptPaused = 2,
  kFMXT_ScriptRunning = 3,
  kFMXT_Unsafe = 4
};

// Answers to init besides the plug-in's own version constant.
enum : fmx::int32 { kBadExtn = -1, kDoNotEnable = -2 };

// Packed, fields in the host's order. parm2, parm3, the instance id and the result are
// pointer-sized, so on a 32-bit target the offsets are those of the host's 32-bit interface.
// The instance id is the plug-in's bundle reference: on this platform a pointer to the
// zero-terminated UTF-8 path of the folder that holds the plug-in and its Resources folder.
#pragma pack(push, 1)
struct FMX_ExternCallStruct {
  fmx::int16 extnVersion;
  fmx::int16 resourceID;
  FMX_ExternCallProc entryPoint;
  fmx::uchar cfmCalls;
  fmx::uchar whichCall;
  fmx::uchar unsafeCalls;
  fmx::uchar parm1;
  fmx::ptrtype parm2;
  fmx::ptrtype parm3;
  fmx::ptrtype instanceID;
  fmx::ptrtype result;
  void* hostCallback1;
  void* hostCallback2;
};
#pragma pack(pop)

#if UINTPTR_MAX == 0xFFFFFFFFu
static_assert(offsetof(FMX_ExternCallStruct, extnVersion) == 0);
static_assert(offsetof(FMX_ExternCallStruct, resourceID) == 2);
static_assert(offsetof(FMX_ExternCallStruct, whichCall) == 9);
static_assert(offsetof(FMX_ExternCallStruct, parm1) == 11);
static_assert(offsetof(FMX_ExternCallStruct, parm2) == 12);
static_assert(offsetof(FMX_ExternCallStruct, parm3) == 16);
static_assert(offsetof(FMX_ExternCallStruct, instanceID) == 20);
static_assert(offsetof(FMX_ExternCallStruct, result) == 24);
#endif

// The one symbol a plug-in exports.
void FMExternCallProc(FMX_ExternCallPtr pb);
}
