// How every setter and getter starts and ends: count the arguments, take the first one's locale
// and read it as the switches text; at the end store "0" or the error text as the result.
#pragma once

#include "fmx/FMWrapper.h"

constexpr fmx::uint32 kSwitchesBytes = 1000;

// 0, or -50 when fewer than minArgs arguments are given (then nothing is read and *index stays 0).
// Otherwise `locale` becomes argument 1's locale, `switches` its text, and *index stands at 1.
fmx::int32 Zk7BeginCall(const fmx::DataVect& args, fmx::uint32 minArgs, fmx::LocaleAutoPtr& locale,
                        char* switches, fmx::uint32* index);
// Stores `txt` as the text result, in the call's locale.
void Zk7SetTextResult(const fmx::TextAutoPtr& txt, const fmx::LocaleAutoPtr& locale,
                      fmx::Data& result);
// Stores "0" or "$$" and the error number.
void Zk7SetErrorResult(fmx::int32 err, const fmx::LocaleAutoPtr& locale, fmx::Data& result);
