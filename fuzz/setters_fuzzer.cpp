// Any argument vector for every setter and getter: the answer is "0", the value asked for, or "$$"
// and a negative number, and the dialog state stays well formed. Arguments are the input's pieces
// between zero bytes: the first is the switches text in Mac OS Roman, the others texts, or numbers
// when they start with '#'.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "frame/handlers.h"
#include "model/state.h"

namespace {

void check(bool ok) {
  if (!ok) std::abort();
}

bool terminated(const UniChar* row) {
  for (int i = 0; i < kMosaRowUnits; ++i)
    if (row[i] == 0) return true;
  return false;
}

std::u16string answer(fmx::errcode (*handler)(short, const fmx::ExprEnv&, const fmx::DataVect&,
                                              fmx::Data&),
                      const fmx::DataVect& args) {
  fmx::ExprEnvUniquePtr env;
  fmx::DataUniquePtr result;
  check(handler(4300, *env, args, *result) == 0);
  const fmx::Text& text = result->GetAsText();
  std::u16string units(text.GetSize(), u'\0');
  if (!units.empty())
    text.GetUnicode(reinterpret_cast<fmx::uint16*>(units.data()), 0, text.GetSize());
  return units;
}

bool okOrError(const std::u16string& s) {
  if (s == u"0") return true;
  if (s.size() < 4 || s.compare(0, 3, u"$$-") != 0) return false;
  for (std::size_t i = 3; i < s.size(); ++i)
    if (s[i] < u'0' || s[i] > u'9') return false;
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fmx::DataVectUniquePtr args;
  fmx::LocaleUniquePtr locale;
  const std::string input(reinterpret_cast<const char*>(data), size);
  std::size_t from = 0;
  for (int n = 0; from <= input.size() && n < 12; ++n) {
    const std::size_t end = std::min(input.find('\0', from), input.size());
    const std::string piece = input.substr(from, end - from);
    fmx::DataUniquePtr value;
    if (n > 0 && !piece.empty() && piece[0] == '#') {
      fmx::FixPtUniquePtr number(std::atoi(piece.c_str() + 1));
      value->SetAsNumber(*number);
    } else {
      fmx::TextUniquePtr text;
      text->AssignWithLength(piece.data(), static_cast<fmx::uint32>(piece.size()),
                             n == 0 ? fmx::Text::kEncoding_ASCII_Mac : fmx::Text::kEncoding_UTF8);
      value->SetAsText(*text, *locale);
    }
    args->PushBack(*value);
    from = end + 1;
  }

  for (auto* setter :
       {ZkMosa7_DoSetLabels, ZkMosa7_DoSetInput, ZkMosa7_DoSetPopup, ZkMosa7_DoSetDialogTitle,
        ZkMosa7_DoSetPosition, ZkMosa7_DoSetPreference, ZkMosa7_DoSetListInput}) {
    check(okOrError(answer(setter, *args)));
    for (int n = 0; n < kMosaEntries; ++n) {
      check(terminated(gLabelTextsUNI[n]) && terminated(gInputTextUNI[n]));
      check(gItemSelected[n] == 1 || gItemSelected[n] == kMosaNoSelection);
    }
    check(terminated(gDefaultDialogTitleUNI) && terminated(gInitialSelectStr));
    check(gCustomWindPosition <= kPositionAlways && gAnimateWindPosition <= 1);
    check(gProgressDefunctTicks != 0);
  }
  const std::u16string input1 = answer(ZkMosa7_DoGetInput, *args);
  check(input1.size() <= 255 || gHistoryTxt_Stored);
  answer(ZkMosa7_DoGetPopup, *args);
  answer(ZkMosa7_DoGetButton, *args);
  return 0;
}
