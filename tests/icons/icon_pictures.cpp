// The pictures of the icon_writers scenario, in the shapes common writers give them, and the check
// of that scenario's Qt shots: each dialog's icon shows its picture's four quadrants (red, green,
// blue, yellow from the top left) the right way up, a transparent quadrant showing the dialog.
//   icon_pictures write DIR    writes the pictures (they are kept in tests/data/icons/writers)
//   icon_pictures check DIR    checks the shots of the scenario's dialogs, in the order they opened
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "picture_writer.h"

using namespace pictwriter;
namespace fs = std::filesystem;

namespace {

constexpr std::uint32_t kRed = 0xFF0000, kGreen = 0x00FF00, kBlue = 0x0000FF, kYellow = 0xFFFF00;
constexpr std::array<std::uint32_t, 4> kShown{kRed, kGreen, kBlue, kYellow};

struct Case {
  const char* file;
  int width, height;  // as shown
  Bytes (*make)();
  bool clearTopRight = false;
};

std::vector<Bytes> indexedQuadrants(int side) {
  std::vector<Bytes> rows;
  for (int y = 0; y < side; ++y) {
    Bytes row;
    for (int x = 0; x < side; ++x)
      row.push_back(static_cast<std::uint8_t>((y >= side / 2) * 2 + (x >= side / 2)));
    rows.push_back(row);
  }
  return rows;
}

// A JPEG stored turned, as a camera stores it, with the orientation that shows it upright.
Bytes turned(int w, int h, std::array<std::uint32_t, 4> stored, unsigned orientation, bool little) {
  return withOrientation(makeJpeg(quadrants(w, h, stored)), orientation, little);
}

const Case kCases[] = {
    // 8-bit packed rows 220 pixels wide with two-byte counts (ppmtopict, ImageMagick's palettes).
    {"count2-220.pct", 220, 220,
     [] {
       Writer w;
       w.countBytes = 2;
       const Rect frame{0, 0, 220, 220};
       std::vector<std::uint32_t> table(kShown.begin(), kShown.end());
       return w.beginV2(frame)
           .indexedPixMap(frame, 8, table, indexedQuadrants(220), true, frame)
           .endV2()
           .bytes;
     }},
    // 32-bit pixels 64 wide (rowBytes 256) with one-byte counts (ImageMagick).
    {"count1-64.pct", 64, 64,
     [] {
       Writer w;
       w.countBytes = 1;
       const Rect frame{0, 0, 64, 64};
       return w.beginV2(frame)
           .direct32(frame, quadrants(64, 64, kShown), 4, 3, frame)
           .endV2()
           .bytes;
     }},
    // A JPEG followed by a black pixel map over the same area (ImageMagick).
    {"jpeg-then-pixmap.pct", 64, 64,
     [] {
       Writer w;
       const Rect frame{0, 0, 64, 64};
       w.beginV2(frame).quickTimeJpeg(frame, makeJpeg(quadrants(64, 64, kShown)));
       return w.direct32(frame, solid(64, 64, 0), 4, 3, frame).endV2().bytes;
     }},
    // 4096 pixels of 32 bits: rowBytes 16384 needs the field's fifteenth bit.
    {"rowbytes-16384.pct", 4096, 512,
     [] {
       Writer w;
       const Rect frame{0, 0, 512, 4096};
       return w.beginV2(frame)
           .direct32(frame, quadrants(4096, 512, kShown), 4, 3, frame)
           .endV2()
           .bytes;
     }},
    {"exif3.jpg", 64, 64,
     [] {
       return turned(64, 64, {kYellow, kBlue, kGreen, kRed}, 3, false);
     }},
    {"exif6.jpg", 64, 32,
     [] {
       return turned(32, 64, {kGreen, kYellow, kRed, kBlue}, 6, true);
     }},
    {"exif8.jpg", 64, 32,
     [] {
       return turned(32, 64, {kBlue, kRed, kYellow, kGreen}, 8, false);
     }},
    {"alpha.png", 64, 64,
     [] {
       return makePng(
           quadrants(64, 64, {0xFF000000 | kRed, 0, 0xFF000000 | kBlue, 0xFF000000 | kYellow}));
     },
     true},
};

struct Shot {
  png_image image{};
  std::vector<std::uint8_t> rgb;
  explicit Shot(const fs::path& path) {
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, path.c_str())) return;
    image.format = PNG_FORMAT_RGB;
    rgb.resize(PNG_IMAGE_SIZE(image));
    if (!png_image_finish_read(&image, nullptr, rgb.data(), 0, nullptr)) rgb.clear();
  }
  std::uint32_t at(int x, int y) const {
    const std::size_t i =
        (static_cast<std::size_t>(y) * image.width + static_cast<std::size_t>(x)) * 3;
    return std::uint32_t{rgb[i]} << 16 | std::uint32_t{rgb[i + 1]} << 8 | rgb[i + 2];
  }
};

bool near(std::uint32_t a, std::uint32_t b) {
  for (int shift : {16, 8, 0})
    if (std::abs(static_cast<int>((a >> shift) & 0xFF) - static_cast<int>((b >> shift) & 0xFF)) >
        48)
      return false;
  return true;
}

int check(const fs::path& dir) {
  std::vector<fs::path> shots;
  for (const auto& entry : fs::directory_iterator(dir))
    if (entry.path().string().ends_with("-open.png")) shots.push_back(entry.path());
  std::sort(shots.begin(), shots.end());
  if (shots.size() != std::size(kCases)) {
    std::cerr << dir << ": " << shots.size() << " dialogs opened, expected " << std::size(kCases)
              << "\n";
    return 1;
  }
  int failures = 0;
  for (std::size_t i = 0; i < shots.size(); ++i) {
    const Case& c = kCases[i];
    const Shot shot(shots[i]);
    if (shot.rgb.empty()) {
      std::cerr << shots[i] << ": not a PNG\n";
      ++failures;
      continue;
    }
    // The icon item is 32 x 32 at (20, 16); the picture keeps its shape, centred in it.
    const int w = c.width >= c.height ? 32 : 32 * c.width / c.height;
    const int h = c.width >= c.height ? 32 * c.height / c.width : 32;
    const int left = 20 + (32 - w) / 2, top = 16 + (32 - h) / 2;
    const std::uint32_t background = shot.at(2, 2);
    for (int q = 0; q < 4; ++q) {
      const int x = left + w * (1 + 2 * (q % 2)) / 4, y = top + h * (1 + 2 * (q / 2)) / 4;
      const std::uint32_t expected =
          q == 1 && c.clearTopRight ? background : kShown[static_cast<std::size_t>(q)];
      if (!near(shot.at(x, y), expected)) {
        std::fprintf(stderr, "%s (%s): pixel (%d, %d) is %06X, expected %06X\n", shots[i].c_str(),
                     c.file, x, y, shot.at(x, y), expected);
        ++failures;
      }
    }
  }
  return failures == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string mode = argc == 3 ? argv[1] : "";
  if (mode == "check") return check(argv[2]);
  if (mode != "write") {
    std::cerr << "usage: icon_pictures write|check DIR\n";
    return 2;
  }
  fs::create_directories(argv[2]);
  for (const Case& c : kCases) {
    const Bytes bytes = c.make();
    std::ofstream(fs::path(argv[2]) / c.file, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
  }
  return 0;
}
