// Any bytes as a switches text and as a strings file: the byte-string helpers stay inside their
// buffers and agree with each other, the switch parser fills a well-formed record for every dialog
// kind, and the strings reader takes anything.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "frame/strings_file.h"
#include "model/switches.h"
#include "util/cstring.h"

namespace {

void check(bool ok) {
  if (!ok) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  // The first byte splits the input into a tag and a text, as zero-terminated C strings.
  const std::size_t tagLength = data[0] % 9;
  if (size < 1 + tagLength) return 0;
  std::string tag(reinterpret_cast<const char*>(data + 1), tagLength);
  std::string text(reinterpret_cast<const char*>(data + 1 + tagLength), size - 1 - tagLength);
  for (std::string* s : {&tag, &text})
    for (char& c : *s)
      if (c == '\0') c = '0';
  if (text.size() > 999) text.resize(999);  // the switches buffer holds 999 bytes

  std::int32_t number = -1;
  if (XP_GetTaggedLong(text.c_str(), tag.c_str(), &number))
    check(number >= 0);
  else
    check(number == 0);
  const std::int32_t textLen = XP_Strlen(text.c_str());
  const std::int32_t tagLen = XP_Strlen(tag.c_str());
  check(XP_HasSwitch(text.c_str(), tag.c_str()) ==
        (tag.empty() || XP_Position(text.c_str(), textLen, tag.c_str(), tagLen, 0, 1, 0) >= 0));
  char out[16];
  const std::int32_t at = XP_GetTaggedStr(text.c_str(), textLen, tag.c_str(), tagLen, '.',
                                          data[0] % 20, data[0] % 3, 0, out, sizeof out);
  check(XP_Strlen(out) < 16);
  check(at < textLen + 1);

  for (std::int16_t kind :
       {kDlgKindBigInput, kDlgKindStandard, kDlgKindFlash, kDlgKindList, kDlgKindInput}) {
    ParSwitches7Tag rec{};
    Zk7ParseSwitches(text.c_str(), kind, &rec);
    check(rec.defaultButton >= 1 && rec.defaultButton <= 4);
    bool terminated = false;
    for (UniChar u : rec.dialogTitle) terminated = terminated || u == 0;
    check(terminated);
  }

  check(XP_ParseStringsFile(std::string(reinterpret_cast<const char*>(data), size)).size() <= size);
  return 0;
}
