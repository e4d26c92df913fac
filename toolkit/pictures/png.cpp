// PNG decoding with libpng's simplified interface, which keeps libpng's error handling (and its
// long jumps) inside libpng: a damaged picture is a failed call, not an unwound C++ frame.
#include <png.h>

#include <new>
#include <vector>

#include "toolkit/picture.h"

namespace toolkit::picture {
namespace {

// Frees libpng's reading state on every path out.
struct ImageReader {
  png_image image{};
  ImageReader() { image.version = PNG_IMAGE_VERSION; }
  ~ImageReader() { png_image_free(&image); }
  ImageReader(const ImageReader&) = delete;
  ImageReader& operator=(const ImageReader&) = delete;
};

}  // namespace

Status decodePng(std::span<const std::uint8_t> bytes, Image& out) {
  out = Image{};
  if (bytes.size() > kMaxBytes) return Status::TooLarge;
  if (!looksLikePng(bytes)) return Status::Corrupt;
  ImageReader reader;
  png_image& image = reader.image;
  if (!png_image_begin_read_from_memory(&image, bytes.data(), bytes.size())) return Status::Corrupt;
  if (image.width == 0 || image.height == 0) return Status::Corrupt;
  if (image.width > kMaxSide || image.height > kMaxSide) return Status::TooLarge;
  const std::size_t pixels = std::size_t{image.width} * image.height;
  if (pixels > kMaxPixels) return Status::TooLarge;
  // Eight bits per channel, sRGB, straight alpha: what Image holds, in another byte order.
  image.format = PNG_FORMAT_RGBA;
  try {
    std::vector<png_byte> buffer(pixels * 4);
    if (!png_image_finish_read(&image, nullptr, buffer.data(), 0, nullptr)) return Status::Corrupt;
    Image decoded;
    decoded.width = static_cast<int>(image.width);
    decoded.height = static_cast<int>(image.height);
    decoded.pixels.resize(pixels);
    const png_byte* p = buffer.data();
    for (std::size_t i = 0; i < pixels; ++i, p += 4)
      decoded.pixels[i] =
          std::uint32_t{p[3]} << 24 | std::uint32_t{p[0]} << 16 | std::uint32_t{p[1]} << 8 | p[2];
    out = std::move(decoded);
  } catch (const std::bad_alloc&) {
    return Status::TooLarge;
  }
  return Status::Ok;
}

}  // namespace toolkit::picture
