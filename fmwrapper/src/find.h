// Searching in UTF-16 text, exactly or with full Unicode case folding.
#pragma once

#include <string>
#include <string_view>

#include "fmx/FMXTypes.h"

namespace fmwrapper::detail {

// First match starting at or after `position`, or kNotFound. An empty pattern is never found.
fmx::uint32 findForward(std::u16string_view text, std::u16string_view pattern, fmx::uint32 position,
                        bool ignoreCase);
// Last match starting at or before `position`, or kNotFound.
fmx::uint32 findBackward(std::u16string_view text, std::u16string_view pattern,
                         fmx::uint32 position, bool ignoreCase);

// Full case folding ("ß" and "SS" both fold to "ss"); for comparisons and tests.
std::u16string foldCase(std::u16string_view s);

}  // namespace fmwrapper::detail
