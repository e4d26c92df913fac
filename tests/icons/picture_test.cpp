// The picture service: each kind of QuickDraw picture and JPEG that containers hold decodes to the
// pixels it was made from; what we cannot read decodes to nothing.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "picture_writer.h"
#include "toolkit/picture.h"
#include "toolkit/platform.h"

using namespace pictwriter;
namespace picture = toolkit::picture;

namespace {

constexpr std::uint32_t kRed = 0xFF0000, kGreen = 0x00FF00, kBlue = 0x0000FF, kWhite = 0xFFFFFF,
                        kBlack = 0x000000;

std::uint32_t at(const toolkit::Image& image, int x, int y) {
  return image.pixels.at(static_cast<std::size_t>(y * image.width + x));
}

// A 12 x 3 test card: a row of red with a green dot, a row of stripes, a row of blue; wide enough
// that packed rows are really packed, with runs and literals.
std::vector<std::vector<std::uint32_t>> testCard() {
  auto card = solid(12, 3, kRed);
  card[0][5] = kGreen;
  for (int x = 0; x < 12; ++x) card[1][static_cast<std::size_t>(x)] = x % 2 ? kWhite : kBlack;
  card[2].assign(12, kBlue);
  return card;
}

void expectCard(const toolkit::Image& image) {
  ASSERT_EQ(image.width, 12);
  ASSERT_EQ(image.height, 3);
  auto card = testCard();
  for (int y = 0; y < 3; ++y)
    for (int x = 0; x < 12; ++x)
      EXPECT_EQ(at(image, x, y),
                0xFF000000u | card[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)])
          << "pixel " << x << "," << y;
}

// Row y as letters: W white, K black, R red, G green, B blue, . transparent, ? anything else.
std::string letters(const toolkit::Image& image, int y) {
  std::string row;
  for (int x = 0; x < image.width; ++x) {
    const char* known = "WKRGB";
    const std::uint32_t colours[] = {kWhite, kBlack, kRed, kGreen, kBlue};
    char c = at(image, x, y) == 0 ? '.' : '?';
    for (int k = 0; k < 5; ++k)
      if (at(image, x, y) == (0xFF000000u | colours[k])) c = known[k];
    row += c;
  }
  return row;
}

}  // namespace

TEST(Pict, DirectPixelsInEveryPackType) {
  const Rect frame{0, 0, 3, 12};
  for (unsigned cmpCount : {3u, 4u}) {
    Writer w;
    w.beginV2(frame).direct32(frame, testCard(), 4, cmpCount, frame).endV2();
    expectCard(picture::decodePict(w.bytes));
  }
  // Pack type 0 is the default packing: component planes for 32-bit pixels.
  Writer byDefault;
  byDefault.beginV2(frame).direct32(frame, testCard(), 4, 3, frame).endV2();
  // Header (40 bytes), opcode, base address, rowBytes, bounds, pmVersion: then the pack type.
  const std::size_t packTypeLow = 40 + 2 + 4 + 2 + 8 + 2 + 1;
  ASSERT_EQ(byDefault.bytes[packTypeLow], 4);
  byDefault.bytes[packTypeLow] = 0;
  expectCard(picture::decodePict(byDefault.bytes));
  for (unsigned packType : {1u, 2u}) {
    Writer w;
    w.beginV2(frame).direct32(frame, testCard(), packType, 3, frame).endV2();
    SCOPED_TRACE(packType);
    expectCard(picture::decodePict(w.bytes));
  }
}

TEST(Pict, SixteenBitPixelsPackedByWords) {
  const Rect frame{0, 0, 3, 12};
  for (unsigned packType : {1u, 3u}) {
    Writer w;
    w.beginV2(frame).direct16(frame, testCard(), packType, frame).endV2();
    SCOPED_TRACE(packType);
    expectCard(picture::decodePict(w.bytes));  // full-scale colours survive 5 bits per component
  }
}

TEST(Pict, IndexedPixelsThroughColourTables) {
  const Rect frame{0, 0, 2, 16};
  const std::vector<std::uint32_t> table{kWhite, kRed, kGreen, kBlue};
  auto rows = [&](unsigned pixelSize, std::vector<Bytes> data, bool packed,
                  std::vector<std::uint32_t> colours) {
    Writer w;
    w.beginV2(frame).indexedPixMap(frame, pixelSize, colours, data, packed, frame).endV2();
    const toolkit::Image image = picture::decodePict(w.bytes);
    return letters(image, 0) + "|" + letters(image, 1);
  };
  // 4 bits: 8 bytes a row, packed; 2 bits: 4 bytes, never packed; 8 bits, packed: a run of red
  // and a literal tail; 1 bit, unpacked: bit 1 is the table's second colour.
  EXPECT_EQ(rows(4, {{0x01, 0x23, 0, 0, 0, 0, 0, 0x32}, Bytes(8, 0x11)}, true, table),
            "WRGBWWWWWWWWWWBG|RRRRRRRRRRRRRRRR");
  EXPECT_EQ(rows(2, {{0x1B, 0, 0, 0xE4}, Bytes(4, 0xFF)}, true, table),
            "WRGBWWWWWWWWBGRW|BBBBBBBBBBBBBBBB");
  Bytes tail(16, 1);
  tail[14] = 2;
  tail[15] = 0;
  EXPECT_EQ(rows(8, {tail, Bytes(16, 3)}, true, table), "RRRRRRRRRRRRRRGW|BBBBBBBBBBBBBBBB");
  EXPECT_EQ(rows(1, {{0x80, 0x01}, {0xFF, 0x00}}, false, {kWhite, kBlue}),
            "BWWWWWWWWWWWWWWB|BBBBBBBBWWWWWWWW");
}

TEST(Pict, NarrowRowsAreNeverPacked) {
  const Rect frame{0, 0, 2, 1};
  Writer w;
  w.beginV2(frame).direct32(frame, {{kGreen}, {kBlue}}, 4, 3, frame).endV2();
  // rowBytes 4 < 8: the data is written unpacked whatever the pack type says.
  toolkit::Image image = picture::decodePict(w.bytes);
  EXPECT_EQ(letters(image, 0) + letters(image, 1), "GB");
}

TEST(Pict, VersionOneBitmapIsBlackOnWhite) {
  const Rect frame{0, 0, 1, 8};
  Writer w;
  w.beginV1(frame).u8(0x90).u16(2).rect({0, 0, 1, 16}).rect(frame).rect(frame).u16(0);
  w.u8(0xA5).u8(0xFF).u8(0xFF);
  EXPECT_EQ(letters(picture::decodePict(w.bytes), 0), "KWKWWKWK");
}

TEST(Pict, OtherOpcodesAreSkippedAndFileHeaderAccepted) {
  const Rect frame{0, 0, 3, 12};
  Writer w;
  w.bytes.assign(512, 0);  // a PICT file's header, as when a picture file is read whole
  w.beginV2(frame);
  w.u16(0x0001).u16(10).rect(frame);                        // clip region
  w.u16(0x001A).u16(0xFFFF).u16(0).u16(0);                  // foreground colour
  w.u16(0x00A1).u16(100).u16(3).u8(1).u8(2).u8(3).align();  // long comment, odd length
  w.u16(0x0031).rect(frame);                                // paint a rectangle (not drawn)
  w.u16(0x0028).u16(1).u16(1).u8(2).u8('h').u8('i');        // text
  w.direct32(frame, testCard(), 4, 3, frame).endV2();
  expectCard(picture::decodePict(w.bytes));
}

TEST(Pict, SourceIsScaledIntoDestinationAndTheRestIsTransparent) {
  const Rect frame{0, 0, 4, 4};
  Writer w;
  w.beginV2(frame).direct32({0, 0, 1, 2}, {{kRed, kBlue}}, 1, 3, {0, 0, 2, 4}).endV2();
  toolkit::Image image = picture::decodePict(w.bytes);
  ASSERT_EQ(image.height, 4);
  EXPECT_EQ(letters(image, 0) + letters(image, 1) + letters(image, 3), "RRBBRRBB....");
}

TEST(Pict, WhatCannotBeReadGivesNoImage) {
  const Rect frame{0, 0, 3, 12};
  Writer good;
  good.beginV2(frame).direct32(frame, testCard(), 4, 3, frame).endV2();

  EXPECT_TRUE(picture::decodePict(Bytes{}).empty());
  EXPECT_TRUE(picture::decodePict(Bytes(good.bytes.begin(), good.bytes.begin() + 60)).empty());
  Writer noPixels;
  noPixels.beginV2(frame).u16(0x0031).rect(frame).endV2();
  EXPECT_TRUE(picture::decodePict(noPixels.bytes).empty());
  Writer odd;  // 24-bit direct pixels do not exist in QuickDraw
  odd.beginV2(frame).u16(0x009A).u32(0xFF).u16(0x8000 | 36).rect(frame).pixMapFields(0, 24, 3, 8);
  odd.rect(frame).rect(frame).u16(0).append(Bytes(200, 0)).endV2();
  EXPECT_TRUE(picture::decodePict(odd.bytes).empty());
  Writer huge;  // a frame far beyond the bounds
  huge.beginV2({0, 0, 30000, 30000}).direct32(frame, testCard(), 4, 3, frame).endV2();
  EXPECT_TRUE(picture::decodePict(huge.bytes).empty());
  Writer lying;  // bounds claim many more rows than the data holds
  lying.beginV2(frame).direct32({0, 0, 3000, 12}, testCard(), 4, 3, frame).endV2();
  EXPECT_TRUE(picture::decodePict(lying.bytes).empty());
}

// Colour JPEGs are drawn by the icon scenarios; grey ones come out grey.
TEST(Jpeg, DecodesGrey) {
  toolkit::Image image;
  ASSERT_EQ(picture::decodeJpeg(makeJpeg(solid(4, 4, 0x808080), true), image), picture::Status::Ok);
  std::uint32_t g = at(image, 1, 1);
  EXPECT_EQ((g >> 16) & 0xFF, g & 0xFF);
  EXPECT_NEAR(static_cast<int>(g & 0xFF), 0x80, 3);
}

TEST(Jpeg, RefusesWhatItShouldNotDecode) {
  toolkit::Image image;
  Bytes jpeg = makeJpeg(solid(8, 8, kGreen));
  EXPECT_EQ(picture::decodeJpeg(Bytes{1, 2, 3}, image), picture::Status::Corrupt);
  EXPECT_EQ(picture::decodeJpeg(Bytes(jpeg.begin(), jpeg.begin() + 20), image),
            picture::Status::Corrupt);
  EXPECT_TRUE(image.empty());

  // The frame header claims 20000 x 8: refused before any pixel memory is taken.
  Bytes wide = jpeg;
  for (std::size_t i = 0; i + 8 < wide.size(); ++i)
    if (wide[i] == 0xFF && wide[i + 1] == 0xC0) {
      wide[i + 7] = 20000 >> 8;
      wide[i + 8] = 20000 & 0xFF;
      break;
    }
  EXPECT_EQ(picture::decodeJpeg(wide, image), picture::Status::TooLarge);

  toolkit::platform::setServiceDisabled(toolkit::platform::Service::JpegDecoder, true);
  EXPECT_EQ(picture::decodeJpeg(jpeg, image), picture::Status::NoDecoder);
  toolkit::platform::setServiceDisabled(toolkit::platform::Service::JpegDecoder, false);
  EXPECT_EQ(picture::decodeJpeg(jpeg, image), picture::Status::Ok);
}

TEST(Jpeg, AdobeCmykIsConverted) {
  // Adobe stores CMYK inverted (255: no ink): no cyan, full magenta, no yellow, no black.
  std::vector<unsigned char> cmyk;
  for (int i = 0; i < 16; ++i) cmyk.insert(cmyk.end(), {255, 0, 255, 255});
  tjhandle tj = tjInitCompress();
  unsigned char* out = nullptr;
  unsigned long size = 0;
  ASSERT_EQ(tjCompress2(tj, cmyk.data(), 4, 0, 4, TJPF_CMYK, &out, &size, TJSAMP_444, 95, 0), 0);
  Bytes jpeg(out, out + size);
  tjFree(out);
  tjDestroy(tj);
  toolkit::Image image;
  ASSERT_EQ(picture::decodeJpeg(jpeg, image), picture::Status::Ok);
  const std::uint32_t p = at(image, 2, 2);
  EXPECT_GT((p >> 16) & 0xFF, 245u);
  EXPECT_LT((p >> 8) & 0xFF, 10u);
  EXPECT_GT(p & 0xFF, 245u);
}
