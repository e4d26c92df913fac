// JPEG decoding with libjpeg-turbo's TurboJPEG interface.
#include <turbojpeg.h>

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
    out = std::move(image);
  } catch (const std::bad_alloc&) {
    return Status::TooLarge;
  }
  return Status::Ok;
}

}  // namespace toolkit::picture
