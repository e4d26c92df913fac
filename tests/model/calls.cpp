#include "calls.h"

#include <gtest/gtest.h>

#include "fmwrapper/host_api.h"
#include "icons/icons.h"

namespace modeltest {

namespace {

// Marks a text argument whose bytes are Mac OS Roman rather than UTF-8.
constexpr char kMacRomanMark[] = "\x01MR:";

}  // namespace

Arg MacRoman(const std::string& bytes) {
  return std::string(kMacRomanMark) + bytes;
}

std::string Call(Handler handler, const std::vector<Arg>& args) {
  fmx::DataVectAutoPtr vect;
  fmx::LocaleAutoPtr locale;
  for (const Arg& arg : args) {
    fmx::DataAutoPtr data;
    if (const auto* s = std::get_if<std::string>(&arg)) {
      fmx::TextAutoPtr txt;
      if (s->rfind(kMacRomanMark, 0) == 0) {
        const std::string bytes = s->substr(sizeof kMacRomanMark - 1);
        txt->AssignWithLength(bytes.data(), static_cast<fmx::uint32>(bytes.size()),
                              fmx::Text::kEncoding_ASCII_Mac);
      } else {
        txt->AssignWithLength(s->data(), static_cast<fmx::uint32>(s->size()),
                              fmx::Text::kEncoding_UTF8);
      }
      data->SetAsText(*txt, *locale);
    } else {
      fmx::FixPtAutoPtr number(std::get<std::int32_t>(arg));
      data->SetAsNumber(*number);
    }
    vect->PushBack(*data);
  }
  fmx::ExprEnvUniquePtr env;
  fmx::DataAutoPtr result;
  EXPECT_EQ(handler(4300, *env, *vect, *result), 0);
  return TextOf(result->GetAsText());
}

std::string TextOf(const fmx::Text& txt) {
  std::u16string units(txt.GetSize(), u'\0');
  if (!units.empty())
    txt.GetUnicode(reinterpret_cast<fmx::uint16*>(units.data()), 0,
                   static_cast<fmx::uint32>(units.size()));
  return Utf8(units);
}

std::u16string Row(const UniChar* row) {
  std::u16string s;
  for (int i = 0; i < kMosaRowUnits && row[i] != 0; ++i) s.push_back(static_cast<char16_t>(row[i]));
  return s;
}

std::u16string U16(const std::string& utf8) {
  return fmwrapper::utf8ToUtf16(utf8);
}
std::string Utf8(const std::u16string& s) {
  return fmwrapper::utf16ToUtf8(s);
}

void ResetModelState() {
  for (int n = 0; n < kMosaEntries; ++n) {
    gLabelTextsUNI[n][0] = 0;
    gInputTextUNI[n][0] = 0;
    gItemSelected[n] = 1;
    gPopupTxt(n)->DeleteText(0, fmx::kSize_End);
  }
  gDefaultDialogTitleUNI[0] = 0;
  gCustomWindPosition = kPositionDefault;
  gAnimateWindPosition = 0;
  gLeft = 0;
  gTop = 0;
  gInitialSelectStr[0] = 0;
  gProgressDefunctTicks = kDefaultDefunctTicks;
  gLastButtonNumberClicked = 0;
  gLastButtonTextClickedTxt()->DeleteText(0, fmx::kSize_End);
  gHistoryTxt()->DeleteText(0, fmx::kSize_End);
  gHistoryTxt_Stored = 0;
  gIconServicesAvailable = 1;
}

}  // namespace modeltest
