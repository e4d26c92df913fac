// Random input through every text entry point: nothing crashes, nothing escapes as anything but
// the documented exceptions, and what comes out is well formed.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "fmwrapper/host_api.h"
#include "fmx/FMWrapper.h"

namespace {

fmx::uint32 anyPosition(std::mt19937& rng, fmx::uint32 size) {
  switch (rng() % 4) {
    case 0:
      return fmx::kSize_End;
    case 1:
      return size + rng() % 5;
    default:
      return size ? rng() % size : 0;
  }
}

TEST(Robustness, RandomBytesAndRangesInEveryEncoding) {
  std::mt19937 rng(20261123);
  fmx::TextUniquePtr t, other;
  std::string bytes;
  std::string out(64, '\0');
  for (int round = 0; round < 3000; ++round) {
    bytes.resize(rng() % 40);
    for (char& b : bytes) b = static_cast<char>(rng());
    const auto encoding = static_cast<fmx::int32>(rng() % 8);
    t->AssignWithLength(bytes.data(), static_cast<fmx::uint32>(bytes.size()), encoding);
    const fmx::uint32 size = t->GetSize();
    ASSERT_LE(size, 2 * bytes.size());

    // Write back in any encoding into any buffer: always terminated, never past bufferSize - 1.
    const auto bufferSize = static_cast<fmx::uint32>(rng() % out.size());
    std::fill(out.begin(), out.end(), '\x55');
    t->GetBytes(out.data(), bufferSize, anyPosition(rng, size), anyPosition(rng, size),
                static_cast<fmx::int32>(rng() % 8));
    if (bufferSize > 0) {
      const std::size_t written = std::char_traits<char>::length(out.c_str());
      ASSERT_LT(written, bufferSize);
    }
    ASSERT_EQ(out[bufferSize], '\x55');

    // UTF-8 output of whatever was decoded reads back as the same text.
    std::string utf8(4 * size + 1, '\0');
    t->GetBytes(utf8.data(), static_cast<fmx::uint32>(utf8.size()), 0, fmx::kSize_End,
                fmx::Text::kEncoding_UTF8);
    other->Assign(utf8.c_str(), fmx::Text::kEncoding_UTF8);
    if (bytes.find('\0') == std::string::npos) {
      ASSERT_TRUE(*other == *t) << "encoding " << encoding;
    }

    // Editing and searching with any positions.
    other->SetText(*t, anyPosition(rng, size), anyPosition(rng, size));
    t->InsertText(*other, anyPosition(rng, size));
    t->DeleteText(anyPosition(rng, t->GetSize()), anyPosition(rng, t->GetSize()));
    const fmx::uint32 hit = t->FindIgnoringCase(*other, anyPosition(rng, t->GetSize()));
    ASSERT_TRUE(hit == fmx::kNotFound || hit < t->GetSize());
    const fmx::uint32 back = t->FindPrevIgnoringCase(*other, anyPosition(rng, t->GetSize()));
    ASSERT_TRUE(back == fmx::kNotFound || back < t->GetSize());
    if (round % 7 == 0) t->Uppercase();
  }
}

TEST(Robustness, UnknownEncodingsAreRefused) {
  fmx::TextUniquePtr t;
  t->Assign("kept", fmx::Text::kEncoding_UTF8);
  EXPECT_THROW(t->Assign("x", 8), std::exception);
  EXPECT_THROW(t->Assign("x", -1), std::exception);
  EXPECT_EQ(t->GetSize(), 4u);
  char buf[8] = "zzzzzzz";
  EXPECT_THROW(t->GetBytes(buf, sizeof buf, 0, fmx::kSize_End, 99), std::exception);
  // Null pointers read as empty.
  t->Assign(nullptr, fmx::Text::kEncoding_UTF8);
  EXPECT_EQ(t->GetSize(), 0u);
  t->AssignUnicode(nullptr);
  EXPECT_EQ(t->GetSize(), 0u);
}

}  // namespace
