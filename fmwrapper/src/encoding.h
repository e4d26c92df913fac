// 8-bit text in the host's encodings, to and from UTF-16.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "fmx/FMXTypes.h"

namespace fmwrapper::detail {

// Decodes bytes; byte sequences the encoding does not define become "?".
// Throws BadRequest for an encoding number the host does not know.
std::u16string decode(std::string_view bytes, fmx::int32 encoding);

// Encodes whole characters only, at most `maxBytes` bytes; characters the encoding cannot hold
// become "?". Throws BadRequest for an unknown encoding.
std::string encode(std::u16string_view units, fmx::int32 encoding, std::size_t maxBytes);

}  // namespace fmwrapper::detail
