// JPEG decoding with libjpeg-turbo's TurboJPEG interface; a photo's EXIF orientation is applied,
// so a picture taken with the camera turned shows the right way up.
#include <turbojpeg.h>

#include <cstring>
#include <memory>
#include <new>
#include <vector>

#include "toolkit/picture.h"
#include "toolkit/platform.h"

namespace toolkit::picture {
namespace {

struct HandleCloser {
  void operator()(void* handle) const { tjDestroy(handle); }
};
using Decompressor = std::unique_ptr<void, HandleCloser>;

std::uint32_t opaque(unsigned r, unsigned g, unsigned b) {
  return 0xFF000000u | (r << 16) | (g << 8) | b;
}

// Adobe writes CMYK JPEGs inverted (0 is full ink); that is what decoders meet in practice.
std::uint32_t fromInvertedCmyk(const unsigned char* p) {
  unsigned k = p[3];
  return opaque(p[0] * k / 255, p[1] * k / 255, p[2] * k / 255);
}

// The EXIF orientation (1 to 8) of the first "Exif" APP1 segment before the image data; 1 (as
// stored) when there is none or it cannot be read.
int exifOrientation(std::span<const std::uint8_t> bytes) {
  std::size_t pos = 2;  // after the start-of-image marker
  while (pos + 4 <= bytes.size() && bytes[pos] == 0xFF) {
    const std::uint8_t marker = bytes[pos + 1];
    if (marker == 0xFF) {  // fill byte
      ++pos;
      continue;
    }
    if (marker == 0xDA || marker == 0xD9) break;  // the image data starts: no more metadata
    const std::size_t length = std::size_t{bytes[pos + 2]} << 8 | bytes[pos + 3];
    if (length < 2 || length > bytes.size() - pos - 2) break;
    auto segment = bytes.subspan(pos + 4, length - 2);
    pos += 2 + length;
    if (marker != 0xE1 || segment.size() < 14 || std::memcmp(segment.data(), "Exif\0\0", 6) != 0)
      continue;
    auto tiff = segment.subspan(6);
    const bool little = tiff[0] == 'I' && tiff[1] == 'I';
    if (!little && !(tiff[0] == 'M' && tiff[1] == 'M')) return 1;
    auto u16 = [&](std::size_t at) -> unsigned {
      return little ? tiff[at] | tiff[at + 1] << 8 : tiff[at] << 8 | tiff[at + 1];
    };
    auto u32 = [&](std::size_t at) -> std::size_t {
      return little ? u16(at) | std::size_t{u16(at + 2)} << 16
                    : std::size_t{u16(at)} << 16 | u16(at + 2);
    };
    const std::size_t ifd = u32(4);
    if (ifd > tiff.size() - 2) return 1;
    const std::size_t entries = u16(ifd);
    for (std::size_t i = 0; i < entries && ifd + 2 + (i + 1) * 12 <= tiff.size(); ++i) {
      const std::size_t entry = ifd + 2 + i * 12;
      if (u16(entry) == 0x0112 && u16(entry + 2) == 3) {
        const unsigned value = u16(entry + 8);
        return value >= 1 && value <= 8 ? static_cast<int>(value) : 1;
      }
    }
    return 1;
  }
  return 1;
}

// Turns the stored pixels the way the orientation says: 2 to 4 mirror or turn half round in
// place, 5 to 8 swap width and height (6 turns a quarter clockwise, 8 anticlockwise).
Image oriented(Image stored, int orientation) {
  if (orientation <= 1) return stored;
  const std::size_t w = static_cast<std::size_t>(stored.width);
  const std::size_t h = static_cast<std::size_t>(stored.height);
  const bool swapped = orientation >= 5;
  Image shown;
  shown.width = swapped ? stored.height : stored.width;
  shown.height = swapped ? stored.width : stored.height;
  shown.pixels.resize(stored.pixels.size());
  const std::size_t sw = static_cast<std::size_t>(shown.width);
  for (std::size_t y = 0; y < static_cast<std::size_t>(shown.height); ++y)
    for (std::size_t x = 0; x < sw; ++x) {
      std::size_t sx = x, sy = y;  // where the shown pixel is in the stored picture
      switch (orientation) {
        case 2:
          sx = w - 1 - x;
          break;
        case 3:
          sx = w - 1 - x;
          sy = h - 1 - y;
          break;
        case 4:
          sy = h - 1 - y;
          break;
        case 5:
          sx = y;
          sy = x;
          break;
        case 6:
          sx = y;
          sy = h - 1 - x;
          break;
        case 7:
          sx = w - 1 - y;
          sy = h - 1 - x;
          break;
        default:
          sx = w - 1 - y;
          sy = x;
          break;  // 8
      }
      shown.pixels[y * sw + x] = stored.pixels[sy * w + sx];
    }
  return shown;
}

}  // namespace

Status decodeJpeg(std::span<const std::uint8_t> bytes, Image& out) {
  out = Image{};
  if (!platform::jpegDecoderPresent()) return Status::NoDecoder;
  if (bytes.size() > kMaxBytes) return Status::TooLarge;
  if (!looksLikeJpeg(bytes)) return Status::Corrupt;

  Decompressor tj(tjInitDecompress());
  if (!tj) return Status::Corrupt;
  int width = 0, height = 0, subsampling = 0, colorspace = 0;
  auto* data = const_cast<unsigned char*>(bytes.data());  // TurboJPEG 2 takes a non-const pointer
  auto size = static_cast<unsigned long>(bytes.size());
  if (tjDecompressHeader3(tj.get(), data, size, &width, &height, &subsampling, &colorspace) != 0)
    return Status::Corrupt;
  if (width <= 0 || height <= 0) return Status::Corrupt;
  if (width > kMaxSide || height > kMaxSide) return Status::TooLarge;
  auto pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  if (pixels > kMaxPixels) return Status::TooLarge;

  const bool cmyk = colorspace == TJCS_CMYK || colorspace == TJCS_YCCK;
  const int format = cmyk ? TJPF_CMYK : TJPF_RGB;
  const std::size_t channels = cmyk ? 4 : 3;
  try {
    std::vector<unsigned char> buffer(pixels * channels);
    // Progressive files with absurd scan counts are refused rather than decoded slowly.
    if (tjDecompress2(tj.get(), data, size, buffer.data(), width, 0, height, format,
                      TJFLAG_LIMITSCANS) != 0 &&
        tjGetErrorCode(tj.get()) != TJERR_WARNING)
      return Status::Corrupt;
    Image image;
    image.width = width;
    image.height = height;
    image.pixels.resize(pixels);
    const unsigned char* p = buffer.data();
    for (std::size_t i = 0; i < pixels; ++i, p += channels)
      image.pixels[i] = cmyk ? fromInvertedCmyk(p) : opaque(p[0], p[1], p[2]);
    buffer = {};
    out = oriented(std::move(image), exifOrientation(bytes));
  } catch (const std::bad_alloc&) {
    return Status::TooLarge;
  }
  return Status::Ok;
}

}  // namespace toolkit::picture
