// Conversions through ICU converters. Native text is Mac Roman both ways: the host library this
// one stands in for was a Mac application's, and the plug-in's C strings are Mac Roman.
#include "encoding.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

#include <array>
#include <memory>
#include <new>
#include <string_view>
#include <type_traits>
#include <vector>

#include "impl.h"

namespace fmwrapper::detail {
namespace {

const char* converterName(fmx::int32 encoding) {
  switch (encoding) {
    case fmx::Text::kEncoding_Native:
    case fmx::Text::kEncoding_ASCII_Mac:
      return "macintosh";
    case fmx::Text::kEncoding_UTF8:
      return "UTF-8";
    case fmx::Text::kEncoding_ASCII_DOS:
      return "ibm-437";
    case fmx::Text::kEncoding_ASCII_Windows:
      return "windows-1252";
    case fmx::Text::kEncoding_ISO_8859_1:
      return "ISO-8859-1";
    case fmx::Text::kEncoding_ShiftJIS_Mac:
      return "Shift_JIS";
    case fmx::Text::kEncoding_ShiftJIS_Win:
      return "windows-31j";
    default:
      return nullptr;
  }
}

// Undecodable bytes read as "?", the same mark that encoding leaves for unmappable characters.
void toUnicodeQuestionMark(const void*, UConverterToUnicodeArgs* args, const char*, int32_t,
                           UConverterCallbackReason reason, UErrorCode* err) {
  if (reason > UCNV_IRREGULAR) return;
  *err = U_ZERO_ERROR;
  const UChar mark = u'?';
  ucnv_cbToUWriteUChars(args, &mark, 1, 0, err);
}

struct ConverterClose {
  void operator()(UConverter* c) const { ucnv_close(c); }
};

// One converter per encoding, opened on first use and kept for the life of the process.
UConverter* converter(fmx::int32 encoding) {
  static std::array<std::unique_ptr<UConverter, ConverterClose>, 8> cache;
  const char* name = converterName(encoding);
  if (!name) throw BadRequest{};
  auto& slot = cache[static_cast<std::size_t>(encoding)];
  if (!slot) {
    UErrorCode err = U_ZERO_ERROR;
    std::unique_ptr<UConverter, ConverterClose> c(ucnv_open(name, &err));
    if (U_FAILURE(err)) throw std::bad_alloc();
    ucnv_setSubstChars(c.get(), "?", 1, &err);
    ucnv_setToUCallBack(c.get(), toUnicodeQuestionMark, nullptr, nullptr, nullptr, &err);
    if (U_FAILURE(err)) throw std::bad_alloc();
    slot = std::move(c);
  }
  ucnv_reset(slot.get());
  return slot.get();
}

// In these encodings ASCII is the same bytes, so ASCII text needs no converter.
bool asciiIsIdentity(fmx::int32 encoding) {
  return encoding == fmx::Text::kEncoding_Native || encoding == fmx::Text::kEncoding_ASCII_Mac ||
         encoding == fmx::Text::kEncoding_UTF8;
}

template <typename Unit>
bool isAscii(std::basic_string_view<Unit> s) {
  for (Unit u : s) {
    if (static_cast<std::make_unsigned_t<Unit>>(u) > 0x7F) return false;
  }
  return true;
}

}  // namespace

std::u16string decode(std::string_view bytes, fmx::int32 encoding) {
  if (asciiIsIdentity(encoding) && isAscii(bytes))
    return std::u16string(bytes.begin(), bytes.end());
  UConverter* c = converter(encoding);
  if (bytes.empty()) return {};
  std::u16string out(bytes.size() * 2 + 2, u'\0');
  UErrorCode err = U_ZERO_ERROR;
  int32_t n = ucnv_toUChars(c, out.data(), static_cast<int32_t>(out.size()), bytes.data(),
                            static_cast<int32_t>(bytes.size()), &err);
  if (U_FAILURE(err)) throw std::bad_alloc();
  out.resize(static_cast<std::size_t>(n));
  return out;
}

std::string encode(std::u16string_view units, fmx::int32 encoding, std::size_t maxBytes) {
  // Only the characters that fit matter: ASCII ones are a byte each.
  if (const std::u16string_view head = units.substr(0, maxBytes);
      asciiIsIdentity(encoding) && isAscii(head)) {
    return std::string(head.begin(), head.end());
  }
  UConverter* c = converter(encoding);
  if (maxBytes == 0 || units.empty()) return {};
  // Every character gives at least one byte and takes at most two units, so this many units are
  // always enough to fill maxBytes.
  if (units.size() > 2 * maxBytes + 4) units = units.substr(0, 2 * maxBytes + 4);
  const std::size_t cap = units.size() * static_cast<std::size_t>(ucnv_getMaxCharSize(c)) + 8;
  std::string out(cap, '\0');
  std::vector<int32_t> offsets(cap);
  char* target = out.data();
  const UChar* source = units.data();
  int32_t* off = offsets.data();
  UErrorCode err = U_ZERO_ERROR;
  ucnv_fromUnicode(c, &target, out.data() + out.size(), &source, units.data() + units.size(), off,
                   true, &err);
  if (U_FAILURE(err)) throw std::bad_alloc();
  std::size_t n = static_cast<std::size_t>(target - out.data());
  if (n > maxBytes) {
    // Cut before the character whose bytes would cross the limit.
    n = maxBytes;
    while (n > 0 && offsets[n] == offsets[n - 1]) --n;
  }
  out.resize(n);
  return out;
}

}  // namespace fmwrapper::detail
