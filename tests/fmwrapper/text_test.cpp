// Text through the fmx:: wrappers: encodings, truncation, ranges, search.
#include <gtest/gtest.h>

#include <string>

#include "fmwrapper/host_api.h"
#include "fmx/FMWrapper.h"

namespace {

using fmwrapper::utf16ToUtf8;
using fmwrapper::utf8ToUtf16;

fmx::TextUniquePtr utf8(const std::string& s) {
  fmx::TextUniquePtr t;
  t->Assign(s.c_str(), fmx::Text::kEncoding_UTF8);
  return t;
}

std::u16string units(const fmx::Text& t) {
  std::u16string out(t.GetSize(), u'\0');
  t.GetUnicode(reinterpret_cast<fmx::uint16*>(out.data()), 0, t.GetSize());
  return out;
}

std::string bytes(const fmx::Text& t, fmx::int32 encoding, fmx::uint32 bufferSize = 256,
                  fmx::uint32 position = 0, fmx::uint32 size = fmx::kSize_End) {
  std::string buf(bufferSize, '\x7f');
  t.GetBytes(buf.data(), bufferSize, position, size, encoding);
  return std::string(buf.c_str());
}

TEST(Text, EncodingsRoundTripAndReplaceWhatTheyCannotHold) {
  auto t = utf8("Caf\xC3\xA9 \xE2\x82\xAC \xE6\x97\xA5");  // "Café € 日"
  EXPECT_EQ(t->GetSize(), 8u);
  EXPECT_EQ(bytes(*t, fmx::Text::kEncoding_UTF8), "Caf\xC3\xA9 \xE2\x82\xAC \xE6\x97\xA5");
  // Mac Roman holds é (0x8E) and € (0xDB) but not 日.
  EXPECT_EQ(bytes(*t, fmx::Text::kEncoding_ASCII_Mac), "Caf\x8E \xDB ?");
  EXPECT_EQ(bytes(*t, fmx::Text::kEncoding_Native), "Caf\x8E \xDB ?");
  EXPECT_EQ(bytes(*t, fmx::Text::kEncoding_ASCII_Windows), "Caf\xE9 \x80 ?");
  EXPECT_EQ(bytes(*t, fmx::Text::kEncoding_ISO_8859_1), "Caf\xE9 ? ?");
  EXPECT_EQ(bytes(*t, fmx::Text::kEncoding_ASCII_DOS), "Caf\x82 ? ?");
  EXPECT_EQ(bytes(*t, fmx::Text::kEncoding_ShiftJIS_Win), "Caf? ? \x93\xFA");

  // Back again: each encoding's bytes read as the same characters.
  fmx::TextUniquePtr back;
  back->Assign("Caf\x8E \xDB", fmx::Text::kEncoding_Native);
  EXPECT_EQ(utf16ToUtf8(units(*back)), "Caf\xC3\xA9 \xE2\x82\xAC");
  back->Assign("\x93\xFA\x96\x7B", fmx::Text::kEncoding_ShiftJIS_Mac);
  EXPECT_EQ(utf16ToUtf8(units(*back)), "\xE6\x97\xA5\xE6\x9C\xAC");  // 日本
  back->Assign("\x82", fmx::Text::kEncoding_ASCII_DOS);
  EXPECT_EQ(utf16ToUtf8(units(*back)), "\xC3\xA9");
  // A malformed UTF-8 byte reads as "?".
  back->Assign("a\xFFz", fmx::Text::kEncoding_UTF8);
  EXPECT_EQ(utf16ToUtf8(units(*back)), "a?z");
}

TEST(Text, GetBytesTruncatesOnWholeCharacters) {
  auto t = utf8("ab\xC3\xA9\xE6\x97\xA5");                   // "abé日"
  EXPECT_EQ(bytes(*t, fmx::Text::kEncoding_UTF8, 4), "ab");  // é needs 2 bytes, only 1 left
  EXPECT_EQ(bytes(*t, fmx::Text::kEncoding_UTF8, 5), "ab\xC3\xA9");
  EXPECT_EQ(bytes(*t, fmx::Text::kEncoding_UTF8, 7), "ab\xC3\xA9");
  EXPECT_EQ(bytes(*t, fmx::Text::kEncoding_UTF8, 8), "ab\xC3\xA9\xE6\x97\xA5");
  EXPECT_EQ(bytes(*t, fmx::Text::kEncoding_ASCII_Mac, 4), "ab\x8E");
  EXPECT_EQ(bytes(*t, fmx::Text::kEncoding_UTF8, 1), "");
  // A surrogate pair is one character.
  auto emoji = utf8("x\xF0\x9F\x98\x80y");
  EXPECT_EQ(emoji->GetSize(), 4u);
  EXPECT_EQ(bytes(*emoji, fmx::Text::kEncoding_UTF8, 5), "x");
  EXPECT_EQ(bytes(*emoji, fmx::Text::kEncoding_ASCII_Mac), "x?y");
  // Ranges in UTF-16 units, clamped at the end.
  EXPECT_EQ(bytes(*t, fmx::Text::kEncoding_UTF8, 256, 1, 2), "b\xC3\xA9");
  EXPECT_EQ(bytes(*t, fmx::Text::kEncoding_UTF8, 256, 3, 99), "\xE6\x97\xA5");
  EXPECT_EQ(bytes(*t, fmx::Text::kEncoding_UTF8, 256, 99, 1), "");
  // A zero-sized buffer is left alone.
  char untouched = 'q';
  t->GetBytes(&untouched, 0, 0, fmx::kSize_End, fmx::Text::kEncoding_UTF8);
  EXPECT_EQ(untouched, 'q');
}

TEST(Text, EditingClampsRanges) {
  auto t = utf8("Hello");
  auto w = utf8(" world");
  t->AppendText(*w, 0, fmx::kSize_End);
  t->InsertText(*utf8("!"), 999);
  EXPECT_EQ(utf16ToUtf8(units(*t)), "Hello world!");
  t->DeleteText(5, 6);
  EXPECT_EQ(utf16ToUtf8(units(*t)), "Hello!");
  t->DeleteText(100, 3);
  t->DeleteText(4);
  EXPECT_EQ(utf16ToUtf8(units(*t)), "Hell");
  t->SetText(*w, 1, 3);
  EXPECT_EQ(utf16ToUtf8(units(*t)), "wor");
  t->AppendText(*t, 1, 1);  // appending to itself
  EXPECT_EQ(utf16ToUtf8(units(*t)), "woro");
  t->SetText(*w, 50);
  EXPECT_EQ(t->GetSize(), 0u);
  t->Assign(
      "stra\xC3\x9F"
      "e",
      fmx::Text::kEncoding_UTF8);
  t->Uppercase();
  EXPECT_EQ(utf16ToUtf8(units(*t)), "STRASSE");
  t->Lowercase();
  EXPECT_EQ(utf16ToUtf8(units(*t)), "strasse");
  EXPECT_TRUE(*utf8("abc") == *utf8("abc"));
  EXPECT_TRUE(*utf8("abc") < *utf8("abd"));
  EXPECT_TRUE(*utf8("abc") != *utf8("ABC"));
}

TEST(Text, FindWithAndWithoutCase) {
  auto t = utf8(
      "Die Stra\xC3\x9F"
      "e und die STRASSE");
  EXPECT_EQ(t->Find(*utf8("die"), 0), 15u);
  EXPECT_EQ(t->FindIgnoringCase(*utf8("die"), 0), 0u);
  EXPECT_EQ(t->FindIgnoringCase(*utf8("die"), 1), 15u);
  // "ß" folds to "ss": both spellings find each other.
  EXPECT_EQ(t->FindIgnoringCase(*utf8("strasse"), 0), 4u);
  EXPECT_EQ(t->FindIgnoringCase(*utf8("STRA\xC3\x9F"
                                      "E"),
                                5),
            19u);
  EXPECT_EQ(t->Find(*utf8("strasse"), 0), fmx::kNotFound);
  // A match must cover whole characters: one "s" of the folded "ß" is not found alone.
  auto sharp = utf8("\xC3\x9F");
  EXPECT_EQ(sharp->FindIgnoringCase(*utf8("s"), 0), fmx::kNotFound);
  EXPECT_EQ(sharp->FindIgnoringCase(*utf8("SS"), 0), 0u);
  // Greek: final sigma, small sigma and capital sigma fold alike.
  auto greek = utf8("\xCE\xA3\xCE\x99\xCE\xA3\xCE\xA5\xCE\xA6\xCE\x9F\xCE\xA3");  // ΣΙΣΥΦΟΣ
  EXPECT_EQ(greek->FindIgnoringCase(*utf8("\xCF\x86\xCE\xBF\xCF\x82"), 0), 4u);   // φος
  EXPECT_EQ(greek->FindIgnoringCase(*utf8("\xCF\x83\xCE\xB9"), 0), 0u);           // σι
  // Backwards: the last match starting at or before the position.
  EXPECT_EQ(t->FindPrev(*utf8("die"), 100), 15u);
  EXPECT_EQ(t->FindPrevIgnoringCase(*utf8("DIE"), 14), 0u);
  EXPECT_EQ(t->FindPrevIgnoringCase(*utf8("strasse"), 100), 19u);
  EXPECT_EQ(t->FindPrevIgnoringCase(*utf8("strasse"), 18), 4u);
  // Empty patterns and positions past the end find nothing.
  EXPECT_EQ(t->Find(*utf8(""), 0), fmx::kNotFound);
  EXPECT_EQ(t->FindIgnoringCase(*utf8("e"), 1000), fmx::kNotFound);
}

TEST(Text, FindIgnoringCaseAcrossChunks) {
  // The match lies far beyond the first stretch of text that is folded.
  std::u16string big(100000, u'x');
  big += u"Stra\u00DFe";
  fmx::TextUniquePtr t;
  t->AssignUnicodeWithLength(reinterpret_cast<const fmx::uint16*>(big.data()),
                             static_cast<fmx::uint32>(big.size()));
  EXPECT_EQ(t->FindIgnoringCase(*utf8("XSTRASSE"), 0), 99999u);
  EXPECT_EQ(t->FindIgnoringCase(*utf8("XSTRASSEX"), 0), fmx::kNotFound);
}

}  // namespace

namespace {

TEST(Text, SingleByteEncodingsRoundTripEveryByte) {
  struct Case {
    fmx::int32 encoding;
    std::string undefined;  // bytes the encoding leaves undefined
  };
  const Case cases[] = {{fmx::Text::kEncoding_Native, ""},
                        {fmx::Text::kEncoding_ASCII_Mac, ""},
                        {fmx::Text::kEncoding_ASCII_DOS, ""},
                        {fmx::Text::kEncoding_ISO_8859_1, ""},
                        {fmx::Text::kEncoding_ASCII_Windows, "\x81\x8D\x8F\x90\x9D"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.encoding);
    std::string all;
    for (int b = 1; b < 256; ++b) {
      if (c.undefined.find(static_cast<char>(b)) == std::string::npos) {
        all.push_back(static_cast<char>(b));
      }
    }
    fmx::TextUniquePtr t;
    t->Assign(all.c_str(), c.encoding);
    EXPECT_EQ(t->GetSize(), all.size());
    std::string back(all.size() + 1, '\0');
    t->GetBytes(back.data(), static_cast<fmx::uint32>(back.size()), 0, fmx::kSize_End, c.encoding);
    EXPECT_EQ(std::string(back.c_str()), all);
  }
}

TEST(Text, UnknownEncodingsAreRefusedAndNullReadsAsEmpty) {
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
