// The picture service: turns container picture data (JPEG, PNG, QuickDraw PICT) into an Image that
// the toolkit can draw. The bytes come from documents and are treated as hostile: every length is
// checked before it is read, sizes are bounded, and a failure leaves the output empty.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "toolkit/image.h"

namespace toolkit::picture {

// Largest width or height we decode, and the largest pixel count of one picture: 16,777,216
// (4096 x 4096), 64 MiB as ARGB.
inline constexpr int kMaxSide = 8192;
inline constexpr std::size_t kMaxPixels = std::size_t{4096} * 4096;
// Largest picture data we look at: 64 MiB.
inline constexpr std::size_t kMaxBytes = std::size_t{64} << 20;

enum class Status {
  Ok,
  NoDecoder,  // the JPEG decoder is switched off (toolkit::platform::jpegDecoderPresent())
  TooLarge,   // dimensions or data beyond the bounds above
  Corrupt,    // not a picture we can read
};

// Decodes JPEG data into opaque ARGB pixels, turned as its EXIF orientation says. On any status
// but Ok, `out` is left empty.
Status decodeJpeg(std::span<const std::uint8_t> bytes, Image& out);

// Decodes PNG data (any colour type and depth) into ARGB pixels with their alpha, within the
// same bounds. On any status but Ok, `out` is left empty.
Status decodePng(std::span<const std::uint8_t> bytes, Image& out);

// Decodes a QuickDraw picture: version 1 bitmaps, version 2 pixel maps (1, 2, 4 and 8 bits with a
// colour table, 16 and 32 bits direct, packed or not) and pictures that wrap compressed JPEG
// data. The picture may start with the 512-byte file header. Anything else, and anything
// malformed, gives an empty image; pixels outside what the picture paints are transparent.
Image decodePict(std::span<const std::uint8_t> bytes);

// Whether the data starts with a JPEG start-of-image marker.
inline bool looksLikeJpeg(std::span<const std::uint8_t> bytes) {
  return bytes.size() >= 3 && bytes[0] == 0xFF && bytes[1] == 0xD8 && bytes[2] == 0xFF;
}

// Whether the data starts with the PNG signature.
inline bool looksLikePng(std::span<const std::uint8_t> bytes) {
  static constexpr std::uint8_t kSignature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  return bytes.size() >= 8 && std::equal(bytes.begin(), bytes.begin() + 8, kSignature);
}

}  // namespace toolkit::picture
