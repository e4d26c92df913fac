#include "frame/handler_frame.h"

#include <new>

#include "util/errors.h"
#include "util/hosttext.h"

namespace {

fmx::int32 Zk7BeginCall(Zk7Call& call, fmx::uint32 minArgs, fmx::int32 encoding) {
  const fmx::uint32 given = call.args.Size();
  if (given < minArgs) return kErrParam;
  if (given == 0) return kErrNone;
  *call.locale = call.args.At(0).GetLocale();
  XP7_GetNextCStringFromVect(call.args, call.switches, kSwitchesBytes, &call.index, encoding);
  return kErrNone;
}

}  // namespace

fmx::errcode Zk7HandlerFrame(const fmx::DataVect& args, fmx::Data& result, fmx::uint32 minArgs,
                             Zk7Body body, fmx::int32 switchesEncoding) {
  try {
    Zk7Call call(args, result);
    fmx::int32 err = kErrNone;
    try {
      XP7_OSErrLToTxt(kErrNone, call.resultTxt);
      err = Zk7BeginCall(call, minArgs, switchesEncoding);
      body(call, err);
    } catch (const std::bad_alloc&) {
      err = kErrMemory;
    } catch (...) {
      err = kErrParam;
    }
    if (err != kErrNone) XP7_OSErrLToTxt(err, call.resultTxt);
    result.SetAsText(*call.resultTxt, *call.locale);
  } catch (...) {
    // Not even the result could be set; the host sees the value it passed in.
  }
  return 0;
}
