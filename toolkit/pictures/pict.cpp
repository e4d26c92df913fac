// QuickDraw picture (PICT) decoding: the pixel-drawing opcodes are drawn onto a canvas the size
// of the picture's frame; every other opcode is skipped by its documented length. Vector drawing
// and text are not rendered: the pictures that containers hold are images.
#include <algorithm>
#include <array>
#include <new>
#include <optional>
#include <vector>

#include "toolkit/picture.h"

namespace toolkit::picture {
namespace {

struct Malformed {};

class Reader {
 public:
  explicit Reader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  std::size_t position() const { return pos_; }
  std::size_t remaining() const { return bytes_.size() - pos_; }
  void need(std::size_t count) const {
    if (count > remaining()) throw Malformed{};
  }
  void skip(std::size_t count) {
    need(count);
    pos_ += count;
  }
  std::uint8_t u8() {
    need(1);
    return bytes_[pos_++];
  }
  std::uint16_t u16() {
    need(2);
    auto v = static_cast<std::uint16_t>(bytes_[pos_] << 8 | bytes_[pos_ + 1]);
    pos_ += 2;
    return v;
  }
  std::int16_t s16() { return static_cast<std::int16_t>(u16()); }
  std::uint32_t u32() {
    std::uint32_t high = u16();
    return high << 16 | u16();
  }
  std::span<const std::uint8_t> take(std::size_t count) {
    need(count);
    auto part = bytes_.subspan(pos_, count);
    pos_ += count;
    return part;
  }
  std::uint8_t peek(std::size_t offset) const {
    need(offset + 1);
    return bytes_[pos_ + offset];
  }
  void alignEven() {
    if (pos_ % 2 != 0) skip(1);
  }

 private:
  std::span<const std::uint8_t> bytes_;
  std::size_t pos_ = 0;
};

struct Rect {
  int top = 0, left = 0, bottom = 0, right = 0;
  int width() const { return right - left; }
  int height() const { return bottom - top; }
  bool sane() const {
    return width() > 0 && height() > 0 && width() <= kMaxSide && height() <= kMaxSide;
  }
  bool operator==(const Rect&) const = default;
};

Rect readRect(Reader& r) {
  Rect rect;
  rect.top = r.s16();
  rect.left = r.s16();
  rect.bottom = r.s16();
  rect.right = r.s16();
  return rect;
}

std::uint32_t opaque(unsigned r, unsigned g, unsigned b) {
  return 0xFF000000u | (r << 16) | (g << 8) | b;
}

// The fields of a pixel map after its bounds.
struct PixMapInfo {
  std::uint16_t packType = 0;
  std::uint16_t pixelSize = 1;
  std::uint16_t cmpCount = 1;
};

PixMapInfo readPixMapFields(Reader& r) {
  PixMapInfo info;
  r.skip(2);  // pmVersion
  info.packType = r.u16();
  r.skip(4 + 4 + 4 + 2);  // packSize, hRes, vRes, pixelType
  info.pixelSize = r.u16();
  info.cmpCount = r.u16();
  r.skip(2 + 4 + 4 + 4);  // cmpSize, planeBytes, pmTable, pmReserved
  return info;
}

using ColorTable = std::array<std::uint32_t, 256>;

ColorTable readColorTable(Reader& r) {
  ColorTable table;
  table.fill(opaque(0, 0, 0));
  r.skip(4);  // ctSeed
  const bool deviceIndexed = (r.u16() & 0x8000) != 0;
  const std::size_t count = std::size_t{r.u16()} + 1;
  r.need(count * 8);
  for (std::size_t i = 0; i < count; ++i) {
    std::uint16_t value = r.u16();
    unsigned red = r.u16() >> 8, green = r.u16() >> 8, blue = r.u16() >> 8;
    std::size_t index = deviceIndexed ? i : value;
    if (index < table.size()) table[index] = opaque(red, green, blue);
  }
  return table;
}

// How a packed row fitted its row buffer.
enum class Fit {
  Exact,   // every byte used, the row filled with nothing left over
  Filled,  // the row filled; output beyond it is dropped, as QuickDraw drops it
  Short,   // the data ran out first
};

// Unpacks one PackBits row of `unitSize`-byte units (1, or 2 for 16-bit pixels) into `out`.
Fit unpackBits(std::span<const std::uint8_t> in, std::span<std::uint8_t> out,
               std::size_t unitSize) {
  std::size_t i = 0, o = 0;
  bool overflow = false;
  while (i < in.size()) {
    const std::uint8_t header = in[i++];
    if (header == 0x80) continue;
    const bool run = header > 0x80;
    const std::size_t length =
        (run ? 257 - std::size_t{header} : std::size_t{header} + 1) * unitSize;
    const std::size_t source = run ? unitSize : length;
    if (source > in.size() - i) break;
    const std::size_t kept = std::min(length, out.size() - o);
    overflow = overflow || kept < length;
    auto to = out.begin() + static_cast<std::ptrdiff_t>(o);
    auto from = in.begin() + static_cast<std::ptrdiff_t>(i);
    if (!run)
      std::copy_n(from, kept, to);
    else if (unitSize == 1)
      std::fill_n(to, kept, *from);
    else
      for (std::size_t k = 0; k < kept; ++k)
        to[static_cast<std::ptrdiff_t>(k)] = from[static_cast<std::ptrdiff_t>(k % unitSize)];
    i += source;
    o += kept;
  }
  if (o < out.size()) return Fit::Short;
  return i == in.size() && !overflow ? Fit::Exact : Fit::Filled;
}

// Reads the rows of pixel data of `image` (sized, not yet allocated), each into `row` (rowLength
// bytes), and hands each to `emit`. Packed rows carry a byte count first, by the book one byte
// when rowBytes is 250 or less, else two. Writers disagree (some switch to two bytes past 200
// pixels, some keep one byte for wider rows), so a count whose row does not fit exactly is read
// again with the other size, and the size that fits is kept for the rows that follow. The data
// must be long enough to hold every row before the image's memory is taken, which bounds what a
// hostile picture can make us allocate.
template <typename Emit>
void readRows(Reader& r, Image& image, std::size_t rowBytes, std::size_t rowLength, bool packed,
              std::size_t unitSize, Emit&& emit) {
  const auto rows = static_cast<std::size_t>(image.height);
  const std::size_t perUnitRun = 128 * unitSize;
  const std::size_t minimumPerRow =
      packed ? 1 + (rowLength + perUnitRun - 1) / perUnitRun * (1 + unitSize) : rowLength;
  r.need(rows * minimumPerRow);
  image.pixels.resize(rows * static_cast<std::size_t>(image.width));
  std::vector<std::uint8_t> row(rowLength);
  if (!packed) {
    for (std::size_t y = 0; y < rows; ++y) {
      auto in = r.take(rowLength);
      std::copy(in.begin(), in.end(), row.begin());
      emit(y, row);
    }
    return;
  }
  std::size_t countSize = rowBytes > 250 ? 2 : 1;
  // One row read with a count of `size` bytes, or nothing when it does not fit exactly.
  auto exactRow = [&](std::size_t size) -> std::optional<Reader> {
    Reader attempt = r;
    if (attempt.remaining() < size) return std::nullopt;
    const std::size_t count = size == 2 ? attempt.u16() : attempt.u8();
    if (count > attempt.remaining() || unpackBits(attempt.take(count), row, unitSize) != Fit::Exact)
      return std::nullopt;
    return attempt;
  };
  for (std::size_t y = 0; y < rows; ++y) {
    if (auto fitted = exactRow(countSize)) {
      r = *fitted;
    } else if (auto other = exactRow(3 - countSize)) {
      r = *other;
      countSize = 3 - countSize;
    } else {
      const std::size_t count = countSize == 2 ? r.u16() : r.u8();
      if (unpackBits(r.take(count), row, unitSize) == Fit::Short) throw Malformed{};
    }
    emit(y, row);
  }
}

class Canvas {
 public:
  explicit Canvas(Rect frame) : frame_(frame) {}

  bool drawn() const { return !image_.pixels.empty(); }
  Rect frame() const { return frame_; }
  Image release() { return std::move(image_); }

  // Copies `source` (whose pixels lie in `bounds`), taking `from` and scaling it into `to`.
  void draw(Image&& source, Rect bounds, Rect from, Rect to) {
    if (from.width() <= 0 || from.height() <= 0 || to.width() <= 0 || to.height() <= 0) return;
    // The usual picture: one image that fills the frame exactly becomes the canvas itself.
    if (!drawn() && from == bounds && to == frame_ && bounds.width() == frame_.width() &&
        bounds.height() == frame_.height() && source.width == bounds.width() &&
        source.height == bounds.height()) {
      image_ = std::move(source);
      return;
    }
    allocate();
    const int x0 = std::max(to.left, frame_.left), x1 = std::min(to.right, frame_.right);
    const int y0 = std::max(to.top, frame_.top), y1 = std::min(to.bottom, frame_.bottom);
    if (x0 >= x1 || y0 >= y1) return;
    // A picture may repeat tiny images over a large frame; bound the total work.
    const auto area = static_cast<std::size_t>(x1 - x0) * static_cast<std::size_t>(y1 - y0);
    if (area > budget_) throw Malformed{};
    budget_ -= area;
    for (int y = y0; y < y1; ++y) {
      const long long sy =
          from.top + static_cast<long long>(y - to.top) * from.height() / to.height() - bounds.top;
      if (sy < 0 || sy >= source.height) continue;
      std::uint32_t* target = &image_.pixels[static_cast<std::size_t>(y - frame_.top) *
                                             static_cast<std::size_t>(frame_.width())];
      for (int x = x0; x < x1; ++x) {
        const long long sx = from.left +
                             static_cast<long long>(x - to.left) * from.width() / to.width() -
                             bounds.left;
        if (sx < 0 || sx >= source.width) continue;
        target[x - frame_.left] =
            source.pixels[static_cast<std::size_t>(sy) * static_cast<std::size_t>(source.width) +
                          static_cast<std::size_t>(sx)];
      }
    }
  }

 private:
  void allocate() {
    if (drawn()) return;
    image_.width = frame_.width();
    image_.height = frame_.height();
    image_.pixels.assign(
        static_cast<std::size_t>(image_.width) * static_cast<std::size_t>(image_.height), 0);
  }

  Rect frame_;
  Image image_;
  std::size_t budget_ = 4 * kMaxPixels;
};

// An image of the bounds' size; readRows allocates its pixels once the data is known to fit.
Image sizedImage(Rect bounds) {
  if (!bounds.sane()) throw Malformed{};
  Image image;
  image.width = bounds.width();
  image.height = bounds.height();
  const auto pixels =
      static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height);
  if (pixels > kMaxPixels) throw Malformed{};
  return image;
}

// Indexed pixels (1, 2, 4 or 8 bits) through a colour table; a plain bitmap is black on white.
Image readIndexedPixels(Reader& r, Rect bounds, std::size_t rowBytes, unsigned pixelSize,
                        const ColorTable& colors, bool packed) {
  if (pixelSize != 1 && pixelSize != 2 && pixelSize != 4 && pixelSize != 8) throw Malformed{};
  Image image = sizedImage(bounds);
  const auto width = static_cast<std::size_t>(image.width);
  if (rowBytes * 8 < width * pixelSize) throw Malformed{};
  const unsigned mask = (1u << pixelSize) - 1;
  readRows(r, image, rowBytes, rowBytes, packed && rowBytes >= 8, 1,
           [&](std::size_t y, std::span<const std::uint8_t> row) {
             for (std::size_t x = 0; x < width; ++x) {
               const std::size_t bit = x * pixelSize;
               const unsigned shift = 8 - pixelSize - static_cast<unsigned>(bit % 8);
               image.pixels[y * width + x] = colors[(row[bit / 8] >> shift) & mask];
             }
           });
  return image;
}

ColorTable bitmapColors() {
  ColorTable table;
  table.fill(opaque(0, 0, 0));
  table[0] = opaque(255, 255, 255);
  return table;
}

// Direct pixels: 16 bits (x1r5g5b5) or 32 bits (xrgb), in the pack types QuickDraw writes.
Image readDirectPixels(Reader& r, Rect bounds, std::size_t rowBytes, const PixMapInfo& info) {
  Image image = sizedImage(bounds);
  const auto width = static_cast<std::size_t>(image.width);
  // Pack type 0 is the default packing of the pixel size; narrow rows are never packed.
  std::uint16_t packType = info.packType;
  if (packType == 0) packType = info.pixelSize == 32 ? 4 : 3;
  if (rowBytes < 8) packType = 1;
  auto store = [&](std::size_t y, std::size_t x, std::uint32_t pixel) {
    image.pixels[y * width + x] = pixel;
  };

  if (info.pixelSize == 16) {
    if (rowBytes < width * 2) throw Malformed{};
    if (packType != 1 && packType != 3) throw Malformed{};
    readRows(r, image, rowBytes, rowBytes, packType == 3, 2,
             [&](std::size_t y, std::span<const std::uint8_t> row) {
               for (std::size_t x = 0; x < width; ++x) {
                 const unsigned v = static_cast<unsigned>(row[2 * x] << 8 | row[2 * x + 1]);
                 auto five = [](unsigned c) { return (c << 3) | (c >> 2); };
                 store(y, x, opaque(five((v >> 10) & 31), five((v >> 5) & 31), five(v & 31)));
               }
             });
    return image;
  }
  if (info.pixelSize != 32) throw Malformed{};
  switch (packType) {
    case 1:
      if (rowBytes < width * 4) throw Malformed{};
      readRows(r, image, rowBytes, rowBytes, false, 1,
               [&](std::size_t y, std::span<const std::uint8_t> row) {
                 for (std::size_t x = 0; x < width; ++x)
                   store(y, x, opaque(row[4 * x + 1], row[4 * x + 2], row[4 * x + 3]));
               });
      return image;
    case 2:
      readRows(r, image, rowBytes, width * 3, false, 1,
               [&](std::size_t y, std::span<const std::uint8_t> row) {
                 for (std::size_t x = 0; x < width; ++x)
                   store(y, x, opaque(row[3 * x], row[3 * x + 1], row[3 * x + 2]));
               });
      return image;
    case 4: {
      // Each row holds one plane per component: (alpha,) red, green, blue.
      const std::size_t planes = info.cmpCount == 4 ? 4 : 3;
      const std::size_t first = planes - 3;
      readRows(r, image, rowBytes, width * planes, true, 1,
               [&](std::size_t y, std::span<const std::uint8_t> row) {
                 for (std::size_t x = 0; x < width; ++x)
                   store(y, x,
                         opaque(row[first * width + x], row[(first + 1) * width + x],
                                row[(first + 2) * width + x]));
               });
      return image;
    }
    default:
      throw Malformed{};
  }
}

void skipRegion(Reader& r) {
  const std::uint16_t size = r.u16();
  if (size < 2) throw Malformed{};
  r.skip(size - 2u);
}

class PictDecoder {
 public:
  PictDecoder(std::span<const std::uint8_t> bytes, Rect frame, bool version2)
      : reader_(bytes), canvas_(frame), version2_(version2) {}

  // Runs the opcodes from `start` to the end-of-picture opcode (or the end of the data).
  Image run(std::size_t start) {
    try {
      reader_.skip(start);
      while (reader_.remaining() > 0) {
        std::uint16_t opcode;
        if (version2_) {
          reader_.alignEven();
          opcode = reader_.u16();
        } else {
          opcode = reader_.u8();
        }
        if (opcode == 0x00FF) break;
        handle(opcode);
      }
    } catch (const Malformed&) {
      // What was drawn before the damage is kept, as QuickDraw would have drawn it.
    } catch (const std::bad_alloc&) {
      return {};
    }
    return canvas_.release();
  }

 private:
  void handle(std::uint16_t op) {
    Reader& r = reader_;
    if (op == 0x0011) {
      r.skip(version2_ ? 2 : 1);
    } else if (op == 0x0C00) {
      readHeader();
    } else if (op == 0x0090 || op == 0x0091 || op == 0x0098 || op == 0x0099) {
      drawBits(op);
    } else if (op == 0x009A || op == 0x009B) {
      drawDirectBits(op);
    } else if (op == 0x8200) {
      drawQuickTime();
    } else if (op == 0x0001 || (op >= 0x0070 && op <= 0x0077) || (op >= 0x0080 && op <= 0x0087)) {
      skipRegion(r);  // clip region, polygons and regions all start with their size
    } else if (op >= 0x0012 && op <= 0x0014) {
      skipPixPattern();
    } else if (op == 0x0028) {
      r.skip(4);
      r.skip(r.u8());
    } else if (op == 0x0029 || op == 0x002A) {
      r.skip(1);
      r.skip(r.u8());
    } else if (op == 0x002B) {
      r.skip(2);
      r.skip(r.u8());
    } else if (op == 0x00A1) {
      r.skip(2);
      r.skip(r.u16());
    } else if ((op >= 0x0024 && op <= 0x0027) || (op >= 0x002C && op <= 0x002F) ||
               (op >= 0x0092 && op <= 0x0097) || (op >= 0x009C && op <= 0x009F) ||
               (op >= 0x00A2 && op <= 0x00AF)) {
      r.skip(r.u16());
    } else if ((op >= 0x00D0 && op <= 0x00FE) || op >= 0x8100) {
      r.skip(r.u32());
    } else if (op >= 0x0100 && op <= 0x7FFF) {
      r.skip(static_cast<std::size_t>(op >> 8) * 2);
    } else {
      r.skip(fixedLength(op));
    }
  }

  // Lengths of the opcodes below 0x100 whose data has a fixed size.
  static std::size_t fixedLength(std::uint16_t op) {
    switch (op) {
      case 0x0004:
        return 1;
      case 0x0003:
      case 0x0005:
      case 0x0008:
      case 0x000D:
      case 0x0015:
      case 0x0016:
      case 0x0023:
      case 0x00A0:
        return 2;
      case 0x0006:
      case 0x0007:
      case 0x000B:
      case 0x000C:
      case 0x000E:
      case 0x000F:
      case 0x0021:
        return 4;
      case 0x001A:
      case 0x001B:
      case 0x001D:
      case 0x001F:
      case 0x0022:
        return 6;
      case 0x0002:
      case 0x0009:
      case 0x000A:
      case 0x0010:
      case 0x0020:
        return 8;
      default:
        break;
    }
    if (op >= 0x0030 && op <= 0x0037) return 8;   // rectangles
    if (op >= 0x0040 && op <= 0x0047) return 8;   // rounded rectangles
    if (op >= 0x0050 && op <= 0x0057) return 8;   // ovals
    if (op >= 0x0060 && op <= 0x0067) return 12;  // arcs
    if (op >= 0x0068 && op <= 0x006F) return 4;   // same arcs
    return 0;  // no data: the "same shape" opcodes, reserved ranges, nop
  }

  // An extended version 2 header gives the picture's native resolution: its source rectangle is
  // the coordinate space of the drawing that follows.
  void readHeader() {
    Reader& r = reader_;
    const std::int16_t version = r.s16();
    if (version != -2) {
      r.skip(22);
      return;
    }
    r.skip(2 + 4 + 4);
    const Rect native = readRect(r);
    r.skip(4);
    if (native.sane() && !canvas_.drawn() &&
        static_cast<std::size_t>(native.width()) * static_cast<std::size_t>(native.height()) <=
            kMaxPixels)
      canvas_ = Canvas(native);
  }

  void drawBits(std::uint16_t op) {
    Reader& r = reader_;
    const std::uint16_t rowBytesField = r.u16();
    const bool pixMap = version2_ && (rowBytesField & 0x8000) != 0;
    const std::size_t rowBytes = rowBytesField & 0x7FFF;
    const Rect bounds = readRect(r);
    PixMapInfo info;
    ColorTable colors = bitmapColors();
    if (pixMap) {
      info = readPixMapFields(r);
      colors = readColorTable(r);
    }
    const Rect from = readRect(r), to = readRect(r);
    r.skip(2);  // transfer mode: drawn as a copy
    if (op == 0x0091 || op == 0x0099) skipRegion(r);
    const bool packed = op == 0x0098 || op == 0x0099;
    Image pixels = readIndexedPixels(r, bounds, rowBytes, info.pixelSize, colors, packed);
    if (!underCompressed(to)) canvas_.draw(std::move(pixels), bounds, from, to);
  }

  void drawDirectBits(std::uint16_t op) {
    Reader& r = reader_;
    r.skip(4);  // base address
    const std::size_t rowBytes = r.u16() & 0x7FFF;
    const Rect bounds = readRect(r);
    const PixMapInfo info = readPixMapFields(r);
    const Rect from = readRect(r), to = readRect(r);
    r.skip(2);
    if (op == 0x009B) skipRegion(r);
    Image pixels = readDirectPixels(r, bounds, rowBytes, info);
    if (!underCompressed(to)) canvas_.draw(std::move(pixels), bounds, from, to);
  }

  // A colour pattern carries its own pixel map, which is read and dropped.
  void skipPixPattern() {
    Reader& r = reader_;
    const std::uint16_t type = r.u16();
    r.skip(8);
    if (type == 2) {
      r.skip(6);
    } else if (type == 1) {
      const std::size_t rowBytes = r.u16() & 0x7FFF;
      const Rect bounds = readRect(r);
      const PixMapInfo info = readPixMapFields(r);
      const ColorTable colors = readColorTable(r);
      readIndexedPixels(r, bounds, rowBytes, info.pixelSize, colors, true);
    }
  }

  // Compressed QuickTime data: when it is JPEG, the picture is that image, drawn over the frame.
  void drawQuickTime() {
    Reader& outer = reader_;
    const std::uint32_t length = outer.u32();
    Reader r(outer.take(length));
    r.skip(2 + 36);  // version, matrix
    const std::uint32_t matteSize = r.u32();
    r.skip(8 + 2 + 8 + 4);  // matte rectangle, mode, source rectangle, accuracy
    const std::uint32_t maskSize = r.u32();
    r.skip(matteSize);
    r.skip(maskSize);
    const std::size_t descriptionStart = r.position();
    const std::uint32_t descriptionSize = r.u32();
    const std::uint32_t codec = r.u32();
    r.skip(36);
    const std::uint32_t dataSize = r.u32();
    if (descriptionSize < 48) throw Malformed{};
    r.skip(descriptionSize - (r.position() - descriptionStart));
    if (codec != 0x6A706567) return;  // 'jpeg'; other codecs are not drawn
    std::size_t jpegLength = r.remaining();
    if (dataSize > 0 && dataSize < jpegLength) jpegLength = dataSize;
    Image jpeg;
    if (decodeJpeg(r.take(jpegLength), jpeg) != Status::Ok) return;
    const Rect whole{0, 0, jpeg.height, jpeg.width};
    canvas_.draw(std::move(jpeg), whole, whole, canvas_.frame());
    compressed_ = canvas_.frame();
  }

  // Some writers follow a compressed picture with a pixel map of the same area for readers
  // without the codec (often plain black); the compressed picture is the one to show.
  bool underCompressed(Rect to) const {
    return compressed_ && to.left >= compressed_->left && to.top >= compressed_->top &&
           to.right <= compressed_->right && to.bottom <= compressed_->bottom;
  }

  Reader reader_;
  Canvas canvas_;
  bool version2_;
  std::optional<Rect> compressed_;
};

}  // namespace

Image decodePict(std::span<const std::uint8_t> bytes) {
  if (bytes.size() > kMaxBytes) return {};
  // The picture itself, or a PICT file whose 512-byte header comes first.
  for (std::size_t start : {std::size_t{0}, std::size_t{512}}) {
    if (bytes.size() < start + 12) break;
    auto picture = bytes.subspan(start);
    Reader r(picture);
    try {
      r.skip(2);  // picture size: unreliable, the data's own length counts
      const Rect frame = readRect(r);
      bool version2;
      if (r.peek(0) == 0x11 && r.peek(1) == 0x01) {
        version2 = false;
      } else if (r.remaining() >= 4 && r.peek(0) == 0x00 && r.peek(1) == 0x11 &&
                 r.peek(2) == 0x02 && r.peek(3) == 0xFF) {
        version2 = true;
      } else {
        continue;
      }
      if (!frame.sane()) return {};
      if (static_cast<std::size_t>(frame.width()) * static_cast<std::size_t>(frame.height()) >
          kMaxPixels)
        return {};
      PictDecoder decoder(picture, frame, version2);
      return decoder.run(r.position());
    } catch (const Malformed&) {
      continue;
    }
  }
  return {};
}

}  // namespace toolkit::picture
