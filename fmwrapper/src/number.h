// Numbers as the host reads and writes them in text.
#pragma once

#include <gmp.h>

#include <string>
#include <string_view>

#include "fmx/FMXTypes.h"

namespace fmwrapper::detail {

// Reads the number a person sees in a text, as the host application does: every decimal digit
// is kept in order and the first "." is the decimal point; everything else is ignored, and the
// number is negative when a "-" comes before the first digit. So "abc12.5x3" reads 12.53,
// "-1-2" reads -12, and a text without digits reads 0.
void parseNumber(std::u16string_view text, mpq_t out);

// Rounds to `places` decimal places, halves away from zero.
void roundToPlaces(mpq_t v, fmx::int32 places);

// Decimal form: at most `places` decimal places (rounded), no trailing zeros, "-" for negative
// values, and a "0" before the point of a value below one ("0.5", "-0.25").
std::u16string formatNumber(const mpq_t v, fmx::int32 places);

}  // namespace fmwrapper::detail
