// Builders for the small pictures the icon tests feed in: QuickDraw pictures written opcode by
// opcode, JPEGs made with libjpeg-turbo and PNGs made with libpng.
#pragma once

#include <png.h>
#include <turbojpeg.h>

#include <array>
#include <cstdint>
#include <initializer_list>
#include <stdexcept>
#include <vector>

namespace pictwriter {

using Bytes = std::vector<std::uint8_t>;

struct Rect {
  int top, left, bottom, right;
};

// Packs one row with PackBits in units of `unit` bytes: runs of three or more equal units become
// runs, the rest literals.
inline Bytes packBits(const Bytes& row, std::size_t unit = 1) {
  Bytes out;
  const std::size_t units = row.size() / unit;
  auto same = [&](std::size_t a, std::size_t b) {
    for (std::size_t k = 0; k < unit; ++k)
      if (row[a * unit + k] != row[b * unit + k]) return false;
    return true;
  };
  std::size_t i = 0;
  while (i < units) {
    std::size_t run = 1;
    while (i + run < units && run < 128 && same(i, i + run)) ++run;
    if (run >= 3) {
      out.push_back(static_cast<std::uint8_t>(257 - run));
      out.insert(out.end(), row.begin() + static_cast<long>(i * unit),
                 row.begin() + static_cast<long>((i + 1) * unit));
      i += run;
      continue;
    }
    std::size_t start = i, count = 0;
    while (i < units && count < 128) {
      std::size_t ahead = 1;
      while (i + ahead < units && ahead < 3 && same(i, i + ahead)) ++ahead;
      if (ahead >= 3) break;
      ++i;
      ++count;
    }
    out.push_back(static_cast<std::uint8_t>(count - 1));
    out.insert(out.end(), row.begin() + static_cast<long>(start * unit),
               row.begin() + static_cast<long>(i * unit));
  }
  return out;
}

class Writer {
 public:
  Bytes bytes;
  // The size of a packed row's byte count: 0 by the book (two bytes when rowBytes is over 250),
  // else 1 or 2 as some writers use regardless.
  unsigned countBytes = 0;

  Writer& u8(unsigned v) {
    bytes.push_back(static_cast<std::uint8_t>(v));
    return *this;
  }
  Writer& u16(unsigned v) { return u8(v >> 8).u8(v); }
  Writer& u32(std::uint32_t v) { return u16(v >> 16).u16(v & 0xFFFF); }
  Writer& rect(Rect r) {
    return u16(static_cast<unsigned>(r.top) & 0xFFFF)
        .u16(static_cast<unsigned>(r.left) & 0xFFFF)
        .u16(static_cast<unsigned>(r.bottom) & 0xFFFF)
        .u16(static_cast<unsigned>(r.right) & 0xFFFF);
  }
  Writer& append(const Bytes& data) {
    bytes.insert(bytes.end(), data.begin(), data.end());
    return *this;
  }
  Writer& align() {
    if (bytes.size() % 2) u8(0);
    return *this;
  }

  // Version 2 picture start: size, frame, version opcode and an extended header at 72 dpi.
  Writer& beginV2(Rect frame) {
    u16(0).rect(frame).u16(0x0011).u16(0x02FF).u16(0x0C00);
    u16(0xFFFE).u16(0).u32(0x00480000).u32(0x00480000).rect(frame).u32(0);
    return *this;
  }
  Writer& beginV1(Rect frame) { return u16(0).rect(frame).u8(0x11).u8(0x01); }
  Writer& endV2() { return align().u16(0x00FF); }

  Writer& pixMapFields(unsigned packType, unsigned pixelSize, unsigned cmpCount, unsigned cmpSize) {
    u16(0).u16(packType).u32(0).u32(0x00480000).u32(0x00480000);
    u16(pixelSize == 16 || pixelSize == 32 ? 16 : 0).u16(pixelSize).u16(cmpCount).u16(cmpSize);
    return u32(0).u32(0).u32(0);
  }
  Writer& colorTable(const std::vector<std::uint32_t>& rgb) {
    u32(0).u16(0).u16(static_cast<unsigned>(rgb.size() - 1));
    for (std::size_t i = 0; i < rgb.size(); ++i) {
      unsigned r = (rgb[i] >> 16) & 0xFF, g = (rgb[i] >> 8) & 0xFF, b = rgb[i] & 0xFF;
      u16(static_cast<unsigned>(i)).u16(r * 0x101).u16(g * 0x101).u16(b * 0x101);
    }
    return *this;
  }
  // Rows of pixel data, packed (with byte counts) or not.
  Writer& rows(const std::vector<Bytes>& data, std::size_t rowBytes, bool packed,
               std::size_t unit = 1) {
    for (const Bytes& row : data) {
      if (!packed) {
        append(row);
        continue;
      }
      Bytes p = packBits(row, unit);
      if (countBytes == 2 || (countBytes == 0 && rowBytes > 250))
        u16(static_cast<unsigned>(p.size()));
      else
        u8(static_cast<unsigned>(p.size()));
      append(p);
    }
    return *this;
  }

  // PackBitsRect (or BitsRect when not packed) of an indexed pixel map.
  Writer& indexedPixMap(Rect bounds, unsigned pixelSize, const std::vector<std::uint32_t>& table,
                        const std::vector<Bytes>& data, bool packed, Rect dst) {
    std::size_t rowBytes = data.at(0).size();
    align()
        .u16(packed ? 0x0098 : 0x0090)
        .u16(0x8000 | static_cast<unsigned>(rowBytes))
        .rect(bounds);
    pixMapFields(0, pixelSize, 1, pixelSize).colorTable(table);
    rect(bounds).rect(dst).u16(0);
    return rows(data, rowBytes, packed && rowBytes >= 8);
  }

  // DirectBitsRect of 32-bit pixels (0xRRGGBB each) in the given pack type (1, 2 or 4).
  Writer& direct32(Rect bounds, const std::vector<std::vector<std::uint32_t>>& pixels,
                   unsigned packType, unsigned cmpCount, Rect dst) {
    const std::size_t width = pixels.at(0).size();
    const std::size_t rowBytes = width * 4;
    align().u16(0x009A).u32(0xFF).u16(0x8000 | static_cast<unsigned>(rowBytes)).rect(bounds);
    pixMapFields(packType, 32, cmpCount, 8).rect(bounds).rect(dst).u16(0x0040);
    // Rows narrower than 8 bytes are never packed: they are written as plain pixels.
    const bool planar = packType == 4 && rowBytes >= 8;
    std::vector<Bytes> data;
    for (const auto& line : pixels) {
      Bytes row;
      if (planar) {
        row.resize(width * cmpCount);
        std::size_t first = cmpCount - 3;
        for (std::size_t x = 0; x < width; ++x) {
          if (cmpCount == 4) row[x] = 0x00;
          row[first * width + x] = static_cast<std::uint8_t>(line[x] >> 16);
          row[(first + 1) * width + x] = static_cast<std::uint8_t>(line[x] >> 8);
          row[(first + 2) * width + x] = static_cast<std::uint8_t>(line[x]);
        }
      } else {
        for (std::uint32_t p : line) {
          if (packType != 2) row.push_back(0);
          row.push_back(static_cast<std::uint8_t>(p >> 16));
          row.push_back(static_cast<std::uint8_t>(p >> 8));
          row.push_back(static_cast<std::uint8_t>(p));
        }
      }
      data.push_back(row);
    }
    return rows(data, rowBytes, planar);
  }
  // Compressed QuickTime data (opcode 0x8200) holding a JPEG drawn over `frame`.
  Writer& quickTimeJpeg(Rect frame, const Bytes& jpeg) {
    Writer qt;
    qt.u16(0);
    for (int i = 0; i < 9; ++i) qt.u32(i % 4 == 0 ? 0x00010000 : 0);  // identity matrix
    qt.u32(0).rect({0, 0, 0, 0}).u16(0).rect(frame).u32(0).u32(0);
    // Image description: 86 bytes, codec 'jpeg'.
    qt.u32(86).u32(0x6A706567).u32(0).u16(0).u16(0).u16(0).u16(0).u32(0).u32(0).u32(0);
    qt.u16(static_cast<unsigned>(frame.right - frame.left))
        .u16(static_cast<unsigned>(frame.bottom - frame.top));
    qt.u32(0x00480000).u32(0x00480000).u32(static_cast<std::uint32_t>(jpeg.size())).u16(1);
    for (int i = 0; i < 32; ++i) qt.u8(0);
    qt.u16(24).u16(0xFFFF).append(jpeg);
    return align().u16(0x8200).u32(static_cast<std::uint32_t>(qt.bytes.size())).append(qt.bytes);
  }
  // DirectBitsRect of 16-bit pixels (x1r5g5b5 from 0xRRGGBB), unpacked or packed by words.
  Writer& direct16(Rect bounds, const std::vector<std::vector<std::uint32_t>>& pixels,
                   unsigned packType, Rect dst) {
    const std::size_t rowBytes = pixels.at(0).size() * 2;
    align().u16(0x009A).u32(0xFF).u16(0x8000 | static_cast<unsigned>(rowBytes)).rect(bounds);
    pixMapFields(packType, 16, 3, 5).rect(bounds).rect(dst).u16(0x0040);
    std::vector<Bytes> data;
    for (const auto& line : pixels) {
      Bytes row;
      for (std::uint32_t p : line) {
        unsigned v = ((p >> 19) & 31) << 10 | ((p >> 11) & 31) << 5 | ((p >> 3) & 31);
        row.push_back(static_cast<std::uint8_t>(v >> 8));
        row.push_back(static_cast<std::uint8_t>(v));
      }
      data.push_back(row);
    }
    return rows(data, rowBytes, packType == 3 && rowBytes >= 8, 2);
  }
};

// A JPEG of the given 0xRRGGBB pixels, made with libjpeg-turbo at high quality without chroma
// subsampling, so colours come back within a few units.
inline Bytes makeJpeg(const std::vector<std::vector<std::uint32_t>>& pixels, bool gray = false) {
  const int height = static_cast<int>(pixels.size());
  const int width = static_cast<int>(pixels.at(0).size());
  Bytes rgb;
  for (const auto& line : pixels)
    for (std::uint32_t p : line) {
      rgb.push_back(static_cast<std::uint8_t>(p >> 16));
      rgb.push_back(static_cast<std::uint8_t>(p >> 8));
      rgb.push_back(static_cast<std::uint8_t>(p));
    }
  tjhandle tj = tjInitCompress();
  unsigned char* out = nullptr;
  unsigned long size = 0;
  int rc = tjCompress2(tj, rgb.data(), width, 0, height, TJPF_RGB, &out, &size,
                       gray ? TJSAMP_GRAY : TJSAMP_444, 95, 0);
  Bytes jpeg;
  if (rc == 0) jpeg.assign(out, out + size);
  tjFree(out);
  tjDestroy(tj);
  if (rc != 0) throw std::runtime_error("tjCompress2 failed");
  return jpeg;
}

// The JPEG with an EXIF segment carrying `orientation`, in either byte order, after its start.
inline Bytes withOrientation(const Bytes& jpeg, unsigned orientation, bool littleEndian) {
  Writer out;
  out.u8(0xFF).u8(0xD8).u8(0xFF).u8(0xE1).u16(2 + 6 + 26).append({'E', 'x', 'i', 'f', 0, 0});
  if (littleEndian)  // header, one entry: tag 0x0112, type 3 (short), count 1, the value
    out.append({'I', 'I', 42, 0, 8, 0, 0, 0, 1, 0, 0x12, 0x01, 3, 0, 1, 0, 0, 0})
        .u8(orientation)
        .u8(0);
  else
    out.append({'M', 'M', 0, 42, 0, 0, 0, 8, 0, 1, 0x01, 0x12, 0, 3, 0, 0, 0, 1}).u16(orientation);
  out.u16(0).u32(0).bytes.insert(out.bytes.end(), jpeg.begin() + 2, jpeg.end());
  return out.bytes;
}

// A PNG of the given 0xAARRGGBB pixels, with its alpha.
inline Bytes makePng(const std::vector<std::vector<std::uint32_t>>& pixels) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(pixels.at(0).size());
  image.height = static_cast<png_uint_32>(pixels.size());
  image.format = PNG_FORMAT_RGBA;
  Bytes rgba;
  for (const auto& line : pixels)
    for (std::uint32_t p : line)
      for (int shift : {16, 8, 0, 24}) rgba.push_back(static_cast<std::uint8_t>(p >> shift));
  Bytes png(rgba.size() * 2 + 1024);  // more than deflate can ever need
  png_alloc_size_t size = png.size();
  if (!png_image_write_to_memory(&image, png.data(), &size, 0, rgba.data(), 0, nullptr))
    throw std::runtime_error("png_image_write_to_memory failed");
  png.resize(size);
  return png;
}

// A w x h grid of four quadrants: top left, top right, bottom left, bottom right.
inline std::vector<std::vector<std::uint32_t>> quadrants(int w, int h,
                                                         std::array<std::uint32_t, 4> colours) {
  std::vector<std::vector<std::uint32_t>> grid(static_cast<std::size_t>(h));
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x)
      grid[static_cast<std::size_t>(y)].push_back(
          colours[static_cast<std::size_t>((y >= h / 2) * 2 + (x >= w / 2))]);
  return grid;
}

// A solid-colour w x h pixel grid.
inline std::vector<std::vector<std::uint32_t>> solid(int w, int h, std::uint32_t rgb) {
  return std::vector<std::vector<std::uint32_t>>(
      static_cast<std::size_t>(h), std::vector<std::uint32_t>(static_cast<std::size_t>(w), rgb));
}

}  // namespace pictwriter
