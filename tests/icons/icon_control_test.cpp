// Mosa_IconControl through the host library: which container stream becomes the custom icon, what
// is refused, and that every path leaves no picture or host object behind.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "fmwrapper/host_api.h"
#include "frame/handlers.h"
#include "icons/icons.h"
#include "picture_writer.h"
#include "plugin_fixture.h"
#include "toolkit/platform.h"

using namespace pictwriter;

namespace {

using Streams = std::vector<std::pair<std::string, Bytes>>;

void pushText(fmx::DataVect& args, const char* utf8) {
  fmx::TextUniquePtr text;
  text->Assign(utf8, fmx::Text::kEncoding_UTF8);
  fmx::LocaleUniquePtr locale;
  fmx::DataUniquePtr data;
  data->SetAsText(*text, *locale);
  args.PushBack(*data);
}

void pushContainer(fmx::DataVect& args, const Streams& streams) {
  fmx::BinaryDataUniquePtr binary;
  for (const auto& [type, bytes] : streams) {
    fmx::QuadCharUniquePtr quad(type[0], type[1], type[2], type[3]);
    Bytes copy = bytes;
    binary->Add(*quad, static_cast<fmx::uint32>(copy.size()), copy.data());
  }
  fmx::DataUniquePtr data;
  data->SetBinaryData(*binary);
  args.PushBack(*data);
}

std::string textOf(const fmx::Data& data) {
  char buffer[64] = {};
  data.GetAsText().GetBytes(buffer, sizeof buffer - 1, 0, fmx::kSize_End,
                            fmx::Text::kEncoding_UTF8);
  return buffer;
}

std::string iconControl(const fmx::DataVect& args) {
  fmx::ExprEnvUniquePtr env;
  fmx::DataUniquePtr result;
  EXPECT_EQ(ZkMosa7_DoIconControl(4307, *env, args, *result), 0);
  return textOf(*result);
}

std::string setIcon(const Streams& streams, const char* switches = "-SetCustomIcon") {
  fmx::DataVectUniquePtr args;
  pushText(*args, switches);
  pushContainer(*args, streams);
  return iconControl(*args);
}

std::string setIconText(const char* text, const char* switches = "-SetCustomIcon") {
  fmx::DataVectUniquePtr args;
  pushText(*args, switches);
  pushText(*args, text);
  return iconControl(*args);
}

Bytes smallPict(int width, int height, std::uint32_t rgb) {
  const Rect frame{0, 0, height, width};
  Writer w;
  w.beginV2(frame).direct32(frame, solid(width, height, rgb), 4, 3, frame).endV2();
  return w.bytes;
}

const Bytes kJpeg = makeJpeg(solid(8, 4, 0x00FF00));

class IconControl : public ::testing::Test {
 protected:
  void SetUp() override { liveBefore_ = fmwrapper::liveObjects(); }
  void TearDown() override {
    Zk7DeleteAllCustomIconData();  // as the plug-in's shut-down does
    EXPECT_EQ(gCustomIconPict, nullptr);
    EXPECT_EQ(fmwrapper::liveObjects(), liveBefore_);
    toolkit::platform::setServiceDisabled(toolkit::platform::Service::JpegDecoder, false);
  }
  std::int64_t liveBefore_ = 0;
};

}  // namespace

TEST_F(IconControl, JpegBecomesTheIconAndForgetDropsIt) {
  EXPECT_EQ(setIcon({{"FNAM", {'a'}}, {"JPEG", kJpeg}, {"SIZE", {0, 4, 0, 8}}}), "0");
  ASSERT_NE(Zk7CustomIconImage(), nullptr);
  EXPECT_EQ(Zk7CustomIconImage()->width, 8);
  EXPECT_EQ(Zk7CustomIconImage()->height, 4);
  EXPECT_EQ(gIsRealPicture, 1);

  // Replacing it releases the old picture (ASan reports the leak otherwise).
  EXPECT_EQ(setIcon({{"JPEG", makeJpeg(solid(2, 2, 0xFF0000))}}, "-setcustomicon"), "0");
  ASSERT_NE(Zk7CustomIconImage(), nullptr);
  EXPECT_EQ(Zk7CustomIconImage()->width, 2);

  EXPECT_EQ(setIconText("", "-ForgetCustomIcon"), "0");
  EXPECT_EQ(gCustomIconPict, nullptr);
  EXPECT_EQ(Zk7CustomIconImage(), nullptr);
}

TEST_F(IconControl, PictIsPreferredAndKeptAsGiven) {
  const Bytes pict = smallPict(3, 5, 0x0000FF);
  EXPECT_EQ(setIcon({{"JPEG", kJpeg}, {"PICT", pict}, {"SIZE", {0, 5, 0, 3}}}), "0");
  ASSERT_NE(gCustomIconPict, nullptr);
  EXPECT_EQ(gCustomIconPict->pictBytes, pict);
  EXPECT_EQ(gIsRealPicture, 0);
  ASSERT_NE(Zk7CustomIconImage(), nullptr);
  EXPECT_EQ(Zk7CustomIconImage()->width, 3);
  EXPECT_EQ(Zk7CustomIconImage()->pixels[0], 0xFF0000FFu);

  // A picture we cannot draw is still stored, without an error, and shows no icon.
  const Bytes unreadable{0, 0, 0, 0, 0, 0, 0, 4, 0, 4, 0, 0x11, 0x02, 0xFF, 0x00, 0xFF};
  EXPECT_EQ(setIcon({{"PICT", unreadable}}), "0");
  ASSERT_NE(gCustomIconPict, nullptr);
  EXPECT_EQ(gCustomIconPict->pictBytes, unreadable);
  EXPECT_EQ(Zk7CustomIconImage(), nullptr);
}

TEST_F(IconControl, RefusalsAndEmptyValuesLeaveNoIcon) {
  const Bytes gif{'G', 'I', 'F', '8', '9', 'a'};
  auto expectCleared = [&](const std::string& answer, const std::string& expected) {
    EXPECT_EQ(answer, expected);
    EXPECT_EQ(gCustomIconPict, nullptr);
  };
  auto storeOne = [&] { ASSERT_EQ(setIcon({{"JPEG", kJpeg}}), "0"); };

  storeOne();
  expectCleared(setIcon({{"GIFf", gif}}), "$$-4243");
  storeOne();
  expectCleared(setIcon({{"GIFf", gif}, {"JPEG", kJpeg}}), "$$-4243");
  storeOne();
  expectCleared(setIcon({{"PNGf", {0x89, 'P', 'N', 'G'}}}), "0");
  storeOne();
  expectCleared(setIconText(""), "0");
  storeOne();
  expectCleared(setIconText("not a picture"), "$$-50");
  storeOne();
  expectCleared(setIcon({}), "$$-50");  // a container without streams
  storeOne();
  expectCleared(setIcon({{"JPEG", {0xFF, 0xD8, 0xFF, 0xE0, 1, 2, 3}}}), "$$-108");
  storeOne();
  expectCleared(setIcon({{"JPEG", {}}}), "0");

  fmx::DataVectUniquePtr number;
  pushText(*number, "-SetCustomIcon");
  fmx::FixPtUniquePtr seven(7);
  fmx::DataUniquePtr data;
  data->SetAsNumber(*seven);
  number->PushBack(*data);
  storeOne();
  expectCleared(iconControl(*number), "$$-50");
}

TEST_F(IconControl, BadCallsKeepTheStoredIcon) {
  ASSERT_EQ(setIcon({{"JPEG", kJpeg}}), "0");
  EXPECT_EQ(setIcon({{"JPEG", kJpeg}}, "-CustomIcon"), "$$-50");
  fmx::DataVectUniquePtr one;
  pushText(*one, "-SetCustomIcon");
  EXPECT_EQ(iconControl(*one), "$$-50");
  EXPECT_NE(Zk7CustomIconImage(), nullptr);

  // Only the first 999 bytes of the switches are read, as in every other function.
  const std::string pad(985, ' ');
  EXPECT_EQ(setIcon({{"JPEG", kJpeg}}, (pad + "-SetCustomIcon").c_str()), "0");
  EXPECT_EQ(setIcon({{"JPEG", kJpeg}}, (pad + " -SetCustomIcon").c_str()), "$$-50");
  EXPECT_NE(Zk7CustomIconImage(), nullptr);
}

TEST_F(IconControl, MissingPictureServiceIsReported) {
  toolkit::platform::setServiceDisabled(toolkit::platform::Service::JpegDecoder, true);
  EXPECT_EQ(setIcon({{"JPEG", kJpeg}}), "$$-2020");
  EXPECT_EQ(gCustomIconPict, nullptr);
  // PICT data needs no converter.
  EXPECT_EQ(setIcon({{"PICT", smallPict(2, 2, 0)}}), "0");
  EXPECT_NE(Zk7CustomIconImage(), nullptr);
}

TEST_F(IconControl, HostFailuresNeverEscape) {
  // Fail each host call of a full set in turn: the handler answers with an error text or "0",
  // never throws, and leaves nothing allocated.
  for (std::uint64_t k = 1; k < 40; ++k) {
    fmx::DataVectUniquePtr args;
    pushText(*args, "-SetCustomIcon");
    pushContainer(*args, {{"PICT", smallPict(2, 2, 0)}, {"SIZE", {0, 2, 0, 2}}, {"JPEG", kJpeg}});
    fmx::ExprEnvUniquePtr env;
    fmx::DataUniquePtr result;
    fmwrapper::injectFault(k, k % 2 ? 1 : 2);
    EXPECT_EQ(ZkMosa7_DoIconControl(4307, *env, *args, *result), 0);
    fmwrapper::injectFault(0, 0);
    Zk7DeleteAllCustomIconData();
  }
}

TEST_F(IconControl, ShutDownReleasesThePicture) {
  ASSERT_EQ(mosa_test::init(60), 51);
  ASSERT_EQ(setIcon({{"JPEG", kJpeg}}), "0");
  ASSERT_NE(gCustomIconPict, nullptr);
  mosa_test::shutdown();
  EXPECT_EQ(gCustomIconPict, nullptr);
}
