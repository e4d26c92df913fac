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

TEST_F(IconControl, PictIsPreferredAndKeptAsGiven) {
  const Bytes pict = smallPict(3, 5, 0x0000FF);
  EXPECT_EQ(setIcon({{"JPEG", kJpeg}, {"PICT", pict}, {"SIZE", {0, 5, 0, 3}}}), "0");
  ASSERT_NE(gCustomIconPict, nullptr);
  EXPECT_EQ(gCustomIconPict->pictBytes, pict);
  EXPECT_EQ(gIsRealPicture, 0);
  ASSERT_NE(Zk7CustomIconImage(), nullptr);
  EXPECT_EQ(Zk7CustomIconImage()->width, 3);
  EXPECT_EQ(Zk7CustomIconImage()->pixels[0], 0xFF0000FFu);
}

TEST_F(IconControl, RefusalsAndEmptyValuesLeaveNoIcon) {
  const Bytes gif{'G', 'I', 'F', '8', '9', 'a'};
  auto expectCleared = [&](const std::string& answer, const std::string& expected) {
    EXPECT_EQ(answer, expected);
    EXPECT_EQ(gCustomIconPict, nullptr);
  };
  auto storeOne = [&] { ASSERT_EQ(setIcon({{"JPEG", kJpeg}}), "0"); };

  storeOne();
  expectCleared(setIcon({{"GIFf", gif}, {"PNGf", {}}, {"JPEG", kJpeg}}), "$$-4243");
  storeOne();
  // PNG comes before JPEG: a damaged one is not passed over for the JPEG.
  expectCleared(setIcon({{"PNGf", {0x89, 'P', 'N', 'G'}}, {"JPEG", kJpeg}}), "$$-108");
  storeOne();
  expectCleared(setIcon({}), "$$-50");  // a container without streams
  storeOne();
  expectCleared(setIcon({{"JPEG", {0xFF, 0xD8, 0xFF, 0xE0, 1, 2, 3}}}), "$$-108");
  storeOne();
  expectCleared(setIcon({{"JPEG", {}}}), "0");
}

TEST_F(IconControl, BadCallsKeepTheStoredIcon) {
  ASSERT_EQ(setIcon({{"JPEG", kJpeg}}), "0");
  EXPECT_EQ(setIcon({{"JPEG", kJpeg}}, "-CustomIcon"), "$$-50");
  fmx::DataVectUniquePtr one;
  pushText(*one, "-SetCustomIcon");
  EXPECT_EQ(iconControl(*one), "$$-50");
  EXPECT_NE(Zk7CustomIconImage(), nullptr);
}

TEST_F(IconControl, MissingPictureServiceIsReported) {
  toolkit::platform::setServiceDisabled(toolkit::platform::Service::JpegDecoder, true);
  EXPECT_EQ(setIcon({{"JPEG", kJpeg}}), "$$-2020");
  EXPECT_EQ(setIcon({{"PNGf", {0x89, 'P', 'N', 'G'}}}), "$$-2020");
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
