// Decoding a custom icon's picture data: a JPEG (upright and turned by its EXIF orientation), a PNG
// with alpha and QuickDraw pictures of the kinds containers hold, each 256 x 256.
#include <benchmark/benchmark.h>

#include "picture_writer.h"
#include "toolkit/picture.h"

using namespace pictwriter;

namespace {

constexpr int kSide = 256;

std::vector<std::vector<std::uint32_t>> gradient() {
  auto pixels = solid(kSide, kSide, 0);
  for (int y = 0; y < kSide; ++y)
    for (int x = 0; x < kSide; ++x)
      pixels[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] =
          static_cast<std::uint32_t>(x << 16 | y << 8 | ((x / 16 + y / 16) % 2) * 255);
  return pixels;
}

void BM_Jpeg(benchmark::State& state) {
  const Bytes jpeg = makeJpeg(gradient());
  for (auto _ : state) {
    toolkit::Image image;
    benchmark::DoNotOptimize(toolkit::picture::decodeJpeg(jpeg, image));
  }
}
BENCHMARK(BM_Jpeg);

void BM_JpegTurned(benchmark::State& state) {
  const Bytes jpeg =
      withOrientation(makeJpeg(gradient()), static_cast<unsigned>(state.range(0)), true);
  for (auto _ : state) {
    toolkit::Image image;
    benchmark::DoNotOptimize(toolkit::picture::decodeJpeg(jpeg, image));
  }
}
BENCHMARK(BM_JpegTurned)->Arg(1)->Arg(3)->Arg(6);

void BM_Png(benchmark::State& state) {
  auto pixels = gradient();
  for (auto& row : pixels)
    for (auto& p : row) p |= (p & 0xFF) << 24;
  const Bytes png = makePng(pixels);
  for (auto _ : state) {
    toolkit::Image image;
    benchmark::DoNotOptimize(toolkit::picture::decodePng(png, image));
  }
}
BENCHMARK(BM_Png);

void BM_PictDirect(benchmark::State& state) {
  const Rect frame{0, 0, kSide, kSide};
  Writer w;
  w.beginV2(frame)
      .direct32(frame, gradient(), static_cast<unsigned>(state.range(0)), 3, frame)
      .endV2();
  for (auto _ : state) benchmark::DoNotOptimize(toolkit::picture::decodePict(w.bytes));
}
BENCHMARK(BM_PictDirect)->Arg(1)->Arg(4);

void BM_PictIndexed8(benchmark::State& state) {
  const Rect frame{0, 0, kSide, kSide};
  std::vector<std::uint32_t> table;
  for (unsigned i = 0; i < 256; ++i) table.push_back(i * 0x010101);
  std::vector<Bytes> rows;
  for (int y = 0; y < kSide; ++y) {
    Bytes row(kSide);
    for (int x = 0; x < kSide; ++x)
      row[static_cast<std::size_t>(x)] = static_cast<std::uint8_t>(x / 8 + y);
    rows.push_back(row);
  }
  Writer w;
  w.beginV2(frame).indexedPixMap(frame, 8, table, rows, true, frame).endV2();
  for (auto _ : state) benchmark::DoNotOptimize(toolkit::picture::decodePict(w.bytes));
}
BENCHMARK(BM_PictIndexed8);

}  // namespace

BENCHMARK_MAIN();
