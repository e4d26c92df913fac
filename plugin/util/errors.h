// Error numbers as results: "0", or "$$" followed by the negative number.
#pragma once

#include "fmx/FMWrapper.h"

enum : fmx::int32 {
  kErrNone = 0,
  kErrParam = -50,    // missing or bad argument
  kErrTooMuch = -92,  // bad limits or too much data
  kErrMemory = -108,  // out of memory
  kErrNoPictureService = -2020,
  kErrRefused = -4243,  // a request the function refuses
  kErrNoDialogResource = -4246
};

void XP7_OSErrLToTxt(long err, fmx::TextAutoPtr& out);
void XP7_OSErrLToData(long err, fmx::Data& result);
