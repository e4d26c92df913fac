// The pictures of the icon_writers scenario, in the shapes common writers give them, and the check
// of that scenario's Qt shots: each dialog's icon shows its picture's four quadrants (red, green,
// blue, yellow from the top left) the right way up, a transparent quadrant showing the dialog.
//   icon_pictures write DIR    writes the pictures (kept in tests/data/icons/writers)
//   icon_pictures check DIR    checks the shots of the scenario's dialogs, in the order they opened
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
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
};
// clang-format off
constexpr Case kCases[] = {
    {"count2-220.pct", 220, 220}, {"count1-64.pct", 64, 64}, {"jpeg-then-pixmap.pct", 64, 64},
    {"rowbytes-16384.pct", 4096, 512}, {"alpha.png", 64, 64}, {"exif2.jpg", 64, 64},
    {"exif3.jpg", 64, 64}, {"exif4.jpg", 64, 64}, {"exif5.jpg", 64, 32}, {"exif6.jpg", 64, 32},
    {"exif7.jpg", 64, 32}, {"exif8.jpg", 64, 32}};
// clang-format on
constexpr std::size_t kTransparentTopRight = 4;

// A 32-bit packed picture of the quadrants; `before` writes what a writer puts first.
Bytes direct(int w, int h, unsigned countBytes, void (*before)(Writer&, Rect) = nullptr) {
  const Rect frame{0, 0, h, w};
  Writer out;
  out.countBytes = countBytes;
  out.beginV2(frame);
  if (before) before(out, frame);
  auto pixels = before ? solid(w, h, 0) : quadrants(w, h, kShown);
  return out.direct32(frame, pixels, 4, 3, frame).endV2().bytes;
}

Bytes make(std::size_t i) {
  Writer w;
  switch (i) {
    case 0: {  // 8-bit rows with two-byte counts past 200 pixels (ppmtopict, ImageMagick)
      w.countBytes = 2;
      const Rect frame{0, 0, 220, 220};
      std::vector<Bytes> rows;  // colour indices 0 to 3
      for (const auto& line : quadrants(220, 220, {0, 1, 2, 3}))
        rows.emplace_back(line.begin(), line.end());
      w.beginV2(frame).indexedPixMap(frame, 8, {kShown.begin(), kShown.end()}, rows, true, frame);
      return w.endV2().bytes;
    }
    case 1:  // 32-bit rows (rowBytes 256) with one-byte counts (ImageMagick)
      return direct(64, 64, 1);
    case 2:  // a JPEG, then a black pixel map over it (ImageMagick)
      return direct(64, 64, 0, [](Writer& out, Rect frame) {
        out.quickTimeJpeg(frame, makeJpeg(quadrants(64, 64, kShown)));
      });
    case 3:  // rowBytes 16384 needs the field's fifteenth bit
      return direct(4096, 512, 0);
    case 4:
      return makePng(
          quadrants(64, 64, {0xFF000000 | kRed, 0, 0xFF000000 | kBlue, 0xFF000000 | kYellow}));
    default: {  // photos stored turned as cameras store them, orientations 2 to 8 showing them
                // upright (mirrored, half round, flipped, across either diagonal, a quarter round)
      constexpr std::array<std::uint32_t, 4> kStored[] = {
          {kGreen, kRed, kYellow, kBlue}, {kYellow, kBlue, kGreen, kRed},
          {kBlue, kYellow, kRed, kGreen}, {kRed, kBlue, kGreen, kYellow},
          {kGreen, kYellow, kRed, kBlue}, {kYellow, kGreen, kBlue, kRed},
          {kBlue, kRed, kYellow, kGreen}};
      const unsigned orientation = static_cast<unsigned>(i) - 3;
      const Bytes jpeg = makeJpeg(quadrants(orientation < 5 ? 64 : 32, 64, kStored[i - 5]));
      return withOrientation(jpeg, orientation, orientation % 2 == 0);  // EXIF in either byte order
    }
  }
}

// The shot's pixels as 0xAARRGGBB, row by row, and its width.
std::vector<std::uint32_t> readShot(const fs::path& path, std::size_t& width) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_file(&image, path.c_str())) return {};
  image.format = PNG_FORMAT_BGRA;  // 0xAARRGGBB in this machine's byte order
  std::vector<std::uint32_t> pixels(std::size_t{image.width} * image.height);
  if (!png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr)) return {};
  width = image.width;
  return pixels;
}

bool near(std::uint32_t a, std::uint32_t b) {
  auto channel = [](std::uint32_t p, int shift) { return static_cast<int>((p >> shift) & 0xFF); };
  for (int shift : {16, 8, 0})
    if (std::abs(channel(a, shift) - channel(b, shift)) > 48) return false;
  return true;
}

int check(const fs::path& dir) {
  std::vector<fs::path> shots;
  for (const auto& entry : fs::directory_iterator(dir))
    if (entry.path().string().ends_with("-open.png")) shots.push_back(entry.path());
  std::sort(shots.begin(), shots.end());
  if (shots.size() != std::size(kCases)) {
    std::fprintf(stderr, "%zu dialogs opened, expected %zu\n", shots.size(), std::size(kCases));
    return 1;
  }
  int failures = 0;
  for (std::size_t i = 0; i < shots.size(); ++i) {
    std::size_t stride = 0;
    const auto shot = readShot(shots[i], stride);
    const Case& c = kCases[i];
    // The icon item is 32 x 32 at (20, 16); the picture keeps its shape, centred in it.
    const int w = c.width >= c.height ? 32 : 32 * c.width / c.height;
    const int h = c.width >= c.height ? 32 * c.height / c.width : 32;
    for (int q = 0; q < 4 && !shot.empty(); ++q) {
      const int x = 20 + (32 - w) / 2 + w * (1 + 2 * (q % 2)) / 4;
      const int y = 16 + (32 - h) / 2 + h * (1 + 2 * (q / 2)) / 4;
      const std::uint32_t seen =
          shot[static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x)];
      // A transparent quadrant shows the dialog's background, as the shot's corner does.
      const std::uint32_t expected =
          i == kTransparentTopRight && q == 1 ? shot[2 * stride + 2] : kShown[q];
      if (!near(seen, expected))
        std::fprintf(stderr, "%s (%s): pixel (%d, %d) is %06X, expected %06X\n", shots[i].c_str(),
                     c.file, x, y, seen & 0xFFFFFF, expected & 0xFFFFFF);
      failures += !near(seen, expected);
    }
    if (shot.empty()) std::fprintf(stderr, "%s: not a PNG\n", shots[i].c_str());
    failures += shot.empty();
  }
  return failures == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string mode = argc == 3 ? argv[1] : "";
  if (mode == "check") return check(argv[2]);
  if (mode != "write") {
    std::fprintf(stderr, "usage: icon_pictures write|check DIR\n");
    return 2;
  }
  fs::create_directories(argv[2]);
  for (std::size_t i = 0; i < std::size(kCases); ++i) {
    const Bytes bytes = make(i);
    std::ofstream(fs::path(argv[2]) / kCases[i].file, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
  }
  return 0;
}
