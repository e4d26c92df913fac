// The external functions, one handler per function id. All share the host's signature and return
// 0 to the host; success or failure is in the result value. Each is written on the handler frame
// (frame/handler_frame.h) and named on its row of the function table (frame/function_table.cpp).
#pragma once

#include "fmx/FMWrapper.h"

#define MOSA_HANDLER(name)                                                            \
  fmx::errcode name(short funcId, const fmx::ExprEnv& env, const fmx::DataVect& args, \
                    fmx::Data& result)

MOSA_HANDLER(ZkMosa7_DoBigInputDialog);  // 4300
MOSA_HANDLER(ZkMosa7_DoDelayTicks);      // 4301
MOSA_HANDLER(ZkMosa7_DoDialog);          // 4302
MOSA_HANDLER(ZkMosa7_DoFlashDialog);     // 4303
MOSA_HANDLER(ZkMosa7_DoGetButton);       // 4304
MOSA_HANDLER(ZkMosa7_DoGetInput);        // 4305
MOSA_HANDLER(ZkMosa7_DoGetPopup);        // 4306
MOSA_HANDLER(ZkMosa7_DoIconControl);     // 4307
MOSA_HANDLER(ZkMosa7_DoInputDialog);     // 4308
MOSA_HANDLER(ZkMosa7_DoListDialog);      // 4309
MOSA_HANDLER(ZkMosa7_DoProgressBar);     // 4310
MOSA_HANDLER(ZkMosa7_DoSetDialogTitle);  // 4311
MOSA_HANDLER(ZkMosa7_DoSetInput);        // 4312
MOSA_HANDLER(ZkMosa7_DoSetLabels);       // 4313
MOSA_HANDLER(ZkMosa7_DoSetListInput);    // 4314
MOSA_HANDLER(ZkMosa7_DoSetPopup);        // 4315
MOSA_HANDLER(ZkMosa7_DoSetPosition);     // 4316
MOSA_HANDLER(ZkMosa7_DoSetPreference);   // 4317
MOSA_HANDLER(ZkMosa7_DoVersion);         // 0 and 1

// Other modules' services the frame calls at idle and shut-down.
void Zk7CheckProgressBarDefunct();
