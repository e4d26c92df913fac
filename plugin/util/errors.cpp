#include "util/errors.h"

#include <cstdio>

void XP7_OSErrLToTxt(long err, fmx::TextAutoPtr& out) {
  if (err == 0) {
    out->Assign("0", fmx::Text::kEncoding_ASCII_Mac);  // every call that succeeds comes here
    return;
  }
  char text[32];
  std::snprintf(text, sizeof text, "$$%ld", err);
  out->Assign(text, fmx::Text::kEncoding_ASCII_Mac);
}

void XP7_OSErrLToData(long err, fmx::Data& result) {
  fmx::TextAutoPtr text;
  XP7_OSErrLToTxt(err, text);
  fmx::LocaleAutoPtr locale(fmx::Locale::kType_None);
  result.SetAsText(*text, *locale, fmx::Data::kDTText);
}
