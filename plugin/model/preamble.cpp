#include "model/preamble.h"

#include "util/errors.h"
#include "util/hosttext.h"

fmx::int32 Zk7BeginCall(const fmx::DataVect& args, fmx::uint32 minArgs, fmx::LocaleAutoPtr& locale,
                        char* switches, fmx::uint32* index) {
  switches[0] = 0;
  if (args.Size() < minArgs || args.Size() == 0) return kErrParam;
  *locale = args.At(0).GetLocale();
  XP7_GetNextCStringFromVect(args, switches, kSwitchesBytes, index, fmx::Text::kEncoding_Native);
  return kErrNone;
}

void Zk7SetTextResult(const fmx::TextAutoPtr& txt, const fmx::LocaleAutoPtr& locale,
                      fmx::Data& result) {
  result.SetAsText(*txt, *locale);
}

void Zk7SetErrorResult(fmx::int32 err, const fmx::LocaleAutoPtr& locale, fmx::Data& result) {
  fmx::TextAutoPtr txt;
  XP7_OSErrLToTxt(err, txt);
  Zk7SetTextResult(txt, locale, result);
}
