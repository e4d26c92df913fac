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

// Where a shown pixel (x, y) is in the stored picture: (x0 + xx x + xy y, y0 + yx x + yy y).
struct Orientation {
  long long x0, xx, xy, y0, yx, yy;
  bool swapsSides() const { return xx == 0; }
};

// The map of an EXIF orientation for a stored w x h picture: 2 to 4 mirror or turn half round,
// 5 to 8 swap width and height (6 turns a quarter clockwise, 8 anticlockwise).
Orientation orientationOf(int value, long long w, long long h) {
  static constexpr Orientation kMaps[] = {
      {0, 1, 0, 0, 0, 1}, {0, -1, 0, 0, 0, 1}, {0, -1, 0, 0, 0, -1}, {0, 1, 0, 0, 0, -1},
      {0, 0, 1, 0, 1, 0}, {0, 0, 1, 0, -1, 0}, {0, 0, -1, 0, -1, 0}, {0, 0, -1, 0, 1, 0}};
  Orientation m = kMaps[value - 1];
  if (m.xx < 0 || m.xy < 0) m.x0 = w - 1;
  if (m.yx < 0 || m.yy < 0) m.y0 = h - 1;
  return m;
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
    // The pixels go straight to where the orientation shows them.
    const Orientation m = orientationOf(exifOrientation(bytes), width, height);
    Image image;
    image.width = m.swapsSides() ? height : width;
    image.height = m.swapsSides() ? width : height;
    image.pixels.resize(pixels);
    std::uint32_t* target = image.pixels.data();
    for (long long y = 0; y < image.height; ++y)
      for (long long x = 0; x < image.width; ++x) {
        const long long sx = m.x0 + m.xx * x + m.xy * y, sy = m.y0 + m.yx * x + m.yy * y;
        const unsigned char* p =
            buffer.data() + static_cast<std::size_t>(sy * width + sx) * channels;
        *target++ = cmyk ? fromInvertedCmyk(p) : opaque(p[0], p[1], p[2]);
      }
    out = std::move(image);
  } catch (const std::bad_alloc&) {
    return Status::TooLarge;
  }
  return Status::Ok;
}

}  // namespace toolkit::picture
