// UTF-8 and UTF-16 for host programs and tests; malformed input becomes U+FFFD.
#include <unicode/ustring.h>

#include <new>

#include "fmwrapper/host_api.h"

namespace fmwrapper {

std::u16string utf8ToUtf16(std::string_view s) {
  if (s.empty()) return {};
  std::u16string out(s.size() + 1, u'\0');
  int32_t n = 0;
  UErrorCode err = U_ZERO_ERROR;
  u_strFromUTF8WithSub(out.data(), static_cast<int32_t>(out.size()), &n, s.data(),
                       static_cast<int32_t>(s.size()), 0xFFFD, nullptr, &err);
  if (U_FAILURE(err)) throw std::bad_alloc();
  out.resize(static_cast<std::size_t>(n));
  return out;
}

std::string utf16ToUtf8(std::u16string_view s) {
  if (s.empty()) return {};
  std::string out(s.size() * 3 + 1, '\0');
  int32_t n = 0;
  UErrorCode err = U_ZERO_ERROR;
  u_strToUTF8WithSub(out.data(), static_cast<int32_t>(out.size()), &n, s.data(),
                     static_cast<int32_t>(s.size()), 0xFFFD, nullptr, &err);
  if (U_FAILURE(err)) throw std::bad_alloc();
  out.resize(static_cast<std::size_t>(n));
  return out;
}

}  // namespace fmwrapper
