#include "util/cstring.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

// Only A to Z fold: accented Mac Roman letters never match their other case.
unsigned char fold(unsigned char c) {
  return (c >= 'A' && c <= 'Z') ? static_cast<unsigned char>(c + 32) : c;
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// First position of `name` in `text` ignoring case, or -1.
std::int32_t findIgnoringCase(const char* text, const char* name) {
  if (!text || !name) return -1;
  std::int32_t t = XP_Strlen(text);
  std::int32_t s = XP_Strlen(name);
  if (t < s) return -1;
  for (std::int32_t i = 0; i <= t - s; ++i) {
    if (XP_Memcmp(text + i, name, s, 0) == 0) return i;
  }
  return -1;
}

}  // namespace

std::int32_t XP_Strlen(const char* s) {
  return s ? static_cast<std::int32_t>(std::strlen(s)) : 0;
}

int XP_Memcmp(const char* a, const char* b, std::int32_t count, unsigned char caseSensitive) {
  return XP_MemcmpU(reinterpret_cast<const unsigned char*>(a),
                    reinterpret_cast<const unsigned char*>(b), count, caseSensitive);
}

int XP_MemcmpU(const unsigned char* a, const unsigned char* b, std::int32_t count,
               unsigned char caseSensitive) {
  if (count <= 0 || !a || !b) return 0;
  for (std::int32_t i = 0; i < count; ++i) {
    unsigned char x = caseSensitive ? a[i] : fold(a[i]);
    unsigned char y = caseSensitive ? b[i] : fold(b[i]);
    if (x != y) return x < y ? -1 : 1;
  }
  return 0;
}

std::int32_t XP_Position(const char* text, std::int32_t textLen, const char* pattern,
                         std::int32_t patternLen, std::int32_t start, std::int32_t occurrence,
                         unsigned char caseSensitive) {
  if (!text || !pattern || patternLen <= 0 || textLen < patternLen) return -1;
  if (start < 0) start = 0;
  std::int32_t hits = 0;
  for (std::int32_t pos = start; pos <= textLen - patternLen; ++pos) {
    if (XP_Memcmp(text + pos, pattern, patternLen, caseSensitive) == 0 && ++hits >= occurrence)
      return pos;
  }
  return -1;
}

bool XP_HasSwitch(const char* switches, const char* switchName) {
  return findIgnoringCase(switches, switchName) >= 0;
}

bool XP_GetTaggedLong(const char* switches, const char* tag, std::int32_t* out) {
  if (out) *out = 0;
  std::int32_t at = findIgnoringCase(switches, tag);
  if (at < 0 || !out) return false;
  const char* value = switches + at + XP_Strlen(tag);
  // The value runs to the next "-" (so it can never be negative), at most 1999 characters.
  std::int32_t len = 0;
  while (value[len] != '\0' && value[len] != '-' && len < 1999) ++len;
  std::int32_t i = 0;
  while (i < len && !isDigit(value[i])) ++i;
  if (i == len) return false;
  long number = 0;
  for (; i < len && isDigit(value[i]); ++i) {
    number = number * 10 + (value[i] - '0');
    if (number > 0x7FFFFFFFL) number = 0x7FFFFFFFL;  // strtol saturates as well
  }
  *out = static_cast<std::int32_t>(number);
  return true;
}

std::int32_t XP_GetTaggedStr(const char* text, std::int32_t textLen, const char* tag,
                             std::int32_t tagLen, char stopChar, std::int32_t start,
                             std::int32_t occurrence, unsigned char caseSensitive, char* out,
                             std::int32_t outSize) {
  if (out && outSize > 0) out[0] = '\0';
  std::int32_t at = XP_Position(text, textLen, tag, tagLen, start, occurrence, caseSensitive);
  if (at < 0) return -1;
  if (!out || outSize < 2) return at;
  std::int32_t from = at + tagLen;
  std::int32_t n = 0;
  while (from + n < textLen && text[from + n] != stopChar && n < outSize - 1) {
    out[n] = text[from + n];
    ++n;
  }
  out[n] = '\0';
  return at;
}

long XP_CStringToNum(const char* s, long* out) {
  long value = 0;
  if (s) {
    errno = 0;
    value = std::strtol(s, nullptr, 10);
  }
  if (out) *out = value;
  return value;
}

void XP_NumToCString(long value, char* dst) {
  if (dst) std::snprintf(dst, 24, "%ld", value);
}
