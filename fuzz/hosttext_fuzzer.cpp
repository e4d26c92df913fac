// Host text from arbitrary bytes in any encoding: conversions back into bounded buffers, and
// searches for pieces of the text itself, with and without case.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "fmx/FMWrapper.h"

namespace {

void check(bool ok) {
  if (!ok) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 3) return 0;
  const fmx::int32 encoding = data[0] % 8;
  const fmx::int32 outEncoding = data[1] % 8;
  const fmx::uint32 bufferSize = data[2];
  const char* bytes = reinterpret_cast<const char*>(data + 3);
  const auto length = static_cast<fmx::uint32>(size - 3);
  try {
    fmx::TextUniquePtr text;
    text->AssignWithLength(bytes, length, encoding);
    const fmx::uint32 units = text->GetSize();

    // Bounded output: terminated within the buffer, never past it.
    std::string buffer(bufferSize + 1, '\x55');
    text->GetBytes(buffer.data(), bufferSize, 0, fmx::kSize_End, outEncoding);
    check(buffer[bufferSize] == '\x55');
    if (bufferSize > 0) check(std::strlen(buffer.c_str()) < bufferSize);

    // A piece of the text on character boundaries is found at or before where it was taken.
    std::u16string all(units, u'\0');
    if (units) text->GetUnicode(reinterpret_cast<fmx::uint16*>(all.data()), 0, units);
    if (units) {
      fmx::uint32 from = (data[1] * 7u) % units;
      fmx::uint32 to = from + 1 + (data[2] % 9u);
      if (to > units) to = units;
      auto onBoundary = [&](fmx::uint32 i) {
        return i == 0 || i >= units || !(all[i] >= 0xDC00 && all[i] <= 0xDFFF);
      };
      if (onBoundary(from) && onBoundary(to)) {
        fmx::TextUniquePtr piece;
        piece->SetText(*text, from, to - from);
        check(text->Find(*piece, 0) <= from);
        check(text->FindIgnoringCase(*piece, 0) <= from);
        check(text->FindPrevIgnoringCase(*piece, units) >= from);
        check(text->FindPrev(*piece, from) == from);
      }
    }
    text->Uppercase();
    text->Lowercase();
  } catch (const std::exception&) {
    std::abort();  // valid requests never fail
  }
  return 0;
}
