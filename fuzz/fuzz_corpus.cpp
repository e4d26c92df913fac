// Writes the starting corpora of the picture fuzzers into DIR/pict_fuzzer, DIR/jpeg_fuzzer and
// DIR/png_fuzzer: valid pictures of each kind, and truncated, oversized and corrupt ones.
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "picture_writer.h"

using namespace pictwriter;
namespace fs = std::filesystem;

namespace {

void write(const fs::path& dir, const std::string& name, const Bytes& bytes) {
  std::ofstream out(dir / name, std::ios::binary);
  out.write(reinterpret_cast<const char*>(bytes.data()),
            static_cast<std::streamsize>(bytes.size()));
}

// The damaged variants of one valid picture.
void writeFamily(const fs::path& dir, const std::string& name, const Bytes& valid) {
  write(dir, name, valid);
  write(dir, name + "-truncated",
        Bytes(valid.begin(), valid.begin() + static_cast<long>(valid.size() / 2)));
  Bytes corrupt = valid;
  for (std::size_t i = 12; i < corrupt.size(); i += 37) corrupt[i] ^= 0x5A;
  write(dir, name + "-corrupt", corrupt);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: fuzz_corpus DIR\n";
    return 2;
  }
  const fs::path pictDir = fs::path(argv[1]) / "pict_fuzzer";
  const fs::path jpegDir = fs::path(argv[1]) / "jpeg_fuzzer";
  const fs::path pngDir = fs::path(argv[1]) / "png_fuzzer";
  fs::create_directories(pictDir);
  fs::create_directories(jpegDir);
  fs::create_directories(pngDir);

  auto pixels = solid(24, 6, 0x336699);
  for (std::size_t x = 0; x < 24; x += 3) pixels[2][x] = 0xFFFFFF;
  const Rect frame{0, 0, 6, 24};
  for (unsigned packType : {1u, 2u, 4u}) {
    Writer w;
    w.beginV2(frame).direct32(frame, pixels, packType, packType == 4 ? 4 : 3, frame).endV2();
    writeFamily(pictDir, "direct" + std::to_string(packType), w.bytes);
  }
  Bytes row(24, 2);
  row[5] = 1;
  Writer indexed;
  indexed.beginV2(frame).indexedPixMap(frame, 8, {0, 0xFF0000, 0x00FF00},
                                       std::vector<Bytes>(6, row), true, frame);
  writeFamily(pictDir, "indexed8", indexed.endV2().bytes);
  Writer bits;
  bits.beginV2(frame).indexedPixMap(frame, 1, {0xFFFFFF, 0},
                                    std::vector<Bytes>(6, Bytes{0xF0, 0x0F, 0xAA}), false, frame);
  writeFamily(pictDir, "indexed1", bits.endV2().bytes);
  Writer v1;
  v1.beginV1({0, 0, 2, 8})
      .u8(0x90)
      .u16(2)
      .rect({0, 0, 2, 16})
      .rect({0, 0, 2, 8})
      .rect({0, 0, 2, 8});
  v1.u16(0).u8(0x0F).u8(0xF0).u8(0x55).u8(0xAA).u8(0xFF);
  writeFamily(pictDir, "v1bitmap", v1.bytes);

  const Bytes jpeg = makeJpeg(pixels);
  Writer wrapped;
  writeFamily(pictDir, "quicktime-jpeg",
              wrapped.beginV2(frame).quickTimeJpeg(frame, jpeg).endV2().bytes);
  Writer oversized;
  oversized.beginV2({0, 0, 8000, 8000}).direct32({0, 0, 4000, 24}, pixels, 4, 3, frame).endV2();
  write(pictDir, "oversized", oversized.bytes);

  writeFamily(jpegDir, "colour", jpeg);
  writeFamily(jpegDir, "grey", makeJpeg(pixels, true));
  Bytes wide = jpeg;
  for (std::size_t i = 0; i + 8 < wide.size(); ++i)
    if (wide[i] == 0xFF && wide[i + 1] == 0xC0) {
      wide[i + 5] = wide[i + 7] = 0x7F;
      break;
    }
  write(jpegDir, "oversized", wide);
  writeFamily(jpegDir, "turned", withOrientation(jpeg, 6, true));

  auto translucent = quadrants(24, 6, {0xFFFF0000, 0x00000000, 0x800000FF, 0xFF00FF00});
  writeFamily(pngDir, "alpha", makePng(translucent));
  writeFamily(pngDir, "opaque", makePng(solid(24, 6, 0xFF336699)));
  return 0;
}
