// Damaged pictures: valid PICT and JPEG data mutated in many ways, with a fixed seed so that a
// failure repeats. The decoders must neither crash nor trip the sanitizers, and what they return
// must be self-consistent.
#include <gtest/gtest.h>

#include <cstdint>

#include "picture_writer.h"
#include "toolkit/picture.h"

using namespace pictwriter;
namespace picture = toolkit::picture;

namespace {

class Mutator {
 public:
  explicit Mutator(std::uint64_t seed) : state_(seed) {}

  std::uint32_t next() {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 7;
    state_ ^= state_ << 17;
    return static_cast<std::uint32_t>(state_ >> 11);
  }
  std::size_t below(std::size_t n) { return n ? next() % n : 0; }

  Bytes mutate(Bytes b) {
    const std::size_t rounds = 1 + below(4);
    for (std::size_t i = 0; i < rounds && !b.empty(); ++i) {
      const std::size_t at = below(b.size());
      switch (below(6)) {
        case 0:
          b[at] = static_cast<std::uint8_t>(next());
          break;
        case 1:
          b[at] ^= static_cast<std::uint8_t>(1u << below(8));
          break;
        case 2:
          b.resize(at);
          break;
        case 3: {  // a 16-bit field set to an extreme
          static constexpr std::uint16_t extremes[] = {0,      1,      0x7FFF, 0x8000,
                                                       0xFFFF, 0x3FFF, 250,    251};
          const std::uint16_t v = extremes[below(std::size(extremes))];
          b[at] = static_cast<std::uint8_t>(v >> 8);
          if (at + 1 < b.size()) b[at + 1] = static_cast<std::uint8_t>(v);
          break;
        }
        case 4:
          b.insert(b.begin() + static_cast<long>(at), static_cast<std::uint8_t>(next()));
          break;
        default:
          b.erase(b.begin() + static_cast<long>(at));
          break;
      }
    }
    return b;
  }

 private:
  std::uint64_t state_;
};

void expectConsistent(const toolkit::Image& image) {
  if (image.empty()) return;
  EXPECT_LE(image.width, picture::kMaxSide);
  EXPECT_LE(image.height, picture::kMaxSide);
  EXPECT_EQ(image.pixels.size(),
            static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height));
}

std::vector<Bytes> pictSeeds() {
  const Rect frame{0, 0, 6, 20};
  auto pixels = solid(20, 6, 0x336699);
  for (std::size_t x = 0; x < 20; x += 3) pixels[2][x] = 0xFFFFFF;
  std::vector<Bytes> seeds;
  for (unsigned packType : {1u, 2u, 4u}) {
    Writer w;
    w.beginV2(frame).direct32(frame, pixels, packType, packType == 4 ? 4 : 3, frame).endV2();
    seeds.push_back(w.bytes);
  }
  Bytes row(20, 2);
  row[3] = 1;
  Writer indexed;
  indexed.beginV2(frame)
      .indexedPixMap(frame, 8, {0, 0xFF0000, 0x00FF00}, std::vector<Bytes>(6, row), true, frame)
      .endV2();
  seeds.push_back(indexed.bytes);
  Writer bits;
  bits.beginV1({0, 0, 2, 8})
      .u8(0x98)
      .u16(2)
      .rect({0, 0, 2, 16})
      .rect({0, 0, 2, 8})
      .rect({0, 0, 2, 8})
      .u16(0);
  bits.u8(0x0F).u8(0xF0).u8(0x55).u8(0xAA).u8(0xFF);
  seeds.push_back(bits.bytes);
  return seeds;
}

}  // namespace

TEST(PictureFuzz, MutatedPicturesNeverCrash) {
  Mutator m(0x5eed1234abcdULL);
  const auto seeds = pictSeeds();
  for (const Bytes& seed : seeds) {
    ASSERT_FALSE(picture::decodePict(seed).empty());
  }
  for (int i = 0; i < 4000; ++i) {
    Bytes input = m.mutate(seeds[static_cast<std::size_t>(i) % seeds.size()]);
    expectConsistent(picture::decodePict(input));
  }
}

TEST(PictureFuzz, MutatedJpegsNeverCrash) {
  Mutator m(0x1a2b3c4d5e6fULL);
  auto pixels = solid(16, 16, 0xC08040);
  for (std::size_t y = 0; y < 16; ++y) pixels[y][y] = 0x000000;
  const std::vector<Bytes> seeds{makeJpeg(pixels), makeJpeg(pixels, true)};
  for (int i = 0; i < 1500; ++i) {
    toolkit::Image image;
    auto status = picture::decodeJpeg(m.mutate(seeds[static_cast<std::size_t>(i) % 2]), image);
    if (status != picture::Status::Ok) {
      EXPECT_TRUE(image.empty());
    }
    expectConsistent(image);
  }
}
