// The function table: every function the plug-in registers, with its handler and argument counts.
// A new handler is its own file and its name on its row here; a row without a handler is
// registered all the same and answers -4243 until its handler is written.
#include "frame/frame.h"
#include "frame/handlers.h"

const Zk7FunctionRow gMosaFunctions[kMosaFunctionCount] = {
    // id, handler, min args, max args
    {4300, ZkMosa7_DoBigInputDialog, 2, 7},
    {4301, ZkMosa7_DoDelayTicks, 2, 2},
    {4302, ZkMosa7_DoDialog, 2, 6},
    {4303, ZkMosa7_DoFlashDialog, 3, 3},
    {4304, ZkMosa7_DoGetButton, 1, 1},
    {4305, ZkMosa7_DoGetInput, 1, 1},
    {4306, ZkMosa7_DoGetPopup, 1, 1},
    {4307, ZkMosa7_DoIconControl, 2, 2},
    {4308, ZkMosa7_DoInputDialog, 4, 7},
    {4309, ZkMosa7_DoListDialog, 3, 7},
    {4310, ZkMosa7_DoProgressBar, 2, 4},
    {4311, ZkMosa7_DoSetDialogTitle, 2, 2},
    {4312, ZkMosa7_DoSetInput, 1, 10},
    {4313, ZkMosa7_DoSetLabels, 2, 10},
    {4314, ZkMosa7_DoSetListInput, 2, 2},
    {4315, ZkMosa7_DoSetPopup, 2, 2},
    {4316, ZkMosa7_DoSetPosition, 1, 3},
    {4317, ZkMosa7_DoSetPreference, 2, 2},
    // The version function is registered twice, with its own strings 9000 and 9001.
    {0, ZkMosa7_DoVersion, 0, 0},
    {1, ZkMosa7_DoVersion, 1, 1},
};
