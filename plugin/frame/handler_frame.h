// How every function handler starts and ends. The frame takes the result's locale from argument 1,
// reads argument 1 as the switches text, runs the handler's body and stores the result: the body's
// text, or "0" or "$$" and the error number. Nothing thrown inside leaves the frame: out of memory
// becomes -108, any other failure -50. The frame always answers 0 to the host.
//
// A handler is its body:
//
//   MOSA_HANDLER(ZkMosa7_DoSomething) {
//     return Zk7HandlerFrame(args, result, 2, [](Zk7Call& call, fmx::int32& err) {
//       if (err == kErrNone) ...          // the body's own error variable: skip the rest at the
//       if (err == kErrNone) ...          // first failure
//       XP7_longToTxt(answer, call.resultTxt);
//     });
//   }
#pragma once

#include "fmx/FMWrapper.h"

constexpr fmx::uint32 kSwitchesBytes = 1000;

// What a body works with.
struct Zk7Call {
  Zk7Call(const fmx::DataVect& a, fmx::Data& r) : args(a), result(r) { switches[0] = '\0'; }
  const fmx::DataVect& args;
  fmx::Data& result;
  fmx::LocaleAutoPtr locale;  // argument 1's locale: the result is set in it
  // Argument 1 as a C string; empty when it was not read. Only its terminator is set up front: a
  // loop may make a million calls.
  char switches[kSwitchesBytes];
  fmx::uint32 index = 0;       // the running argument index: 1 after the switches
  fmx::TextAutoPtr resultTxt;  // the answer on success; starts as "0"
};

// The body runs even when the argument count is short (then err is -50 and nothing has been read),
// so that a handler which stores anyway can say so; every other body starts with the err test.
using Zk7Body = void (*)(Zk7Call& call, fmx::int32& err);

// minArgs: fewer arguments make err -50 before the body runs; 0 also admits no argument at all.
// switchesEncoding: how argument 1 becomes the switches text.
fmx::errcode Zk7HandlerFrame(const fmx::DataVect& args, fmx::Data& result, fmx::uint32 minArgs,
                             Zk7Body body,
                             fmx::int32 switchesEncoding = fmx::Text::kEncoding_Native);
