// Container data as the host application stores files and pictures: a main stream whose type
// follows the file name's extension, an "FNAM" stream with the name, and for pictures whose size
// can be read a 4-byte "SIZE" stream.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/value.h"

namespace host {

// "JPEG" for .jpg/.jpeg, "PNGf" for .png, "GIFf" for .gif, "PICT" for .pct/.pict, else "FILE".
std::string streamTypeForName(std::string_view fileName);
// Width and height of a JPEG, PNG, GIF or PICT picture, when its header can be read.
std::optional<std::pair<int, int>> pictureSize(std::string_view type, std::string_view bytes);
// The container value for a file's bytes. FNAM holds the name in UTF-8; SIZE holds the height
// and then the width, each as a 16-bit big-endian number.
Value makeContainer(std::string_view fileName, std::string bytes);

std::optional<std::string> base64Decode(std::u16string_view text);
std::string base64Encode(std::string_view bytes);

}  // namespace host
