// Case-insensitive search folds both texts with full Unicode case folding and matches the folded
// forms, so "STRASSE" finds "straße". A match must begin and end on whole characters of the
// original text: "s" alone does not match inside the fold of "ß".
//
// Folding of the Basic Multilingual Plane is cached per code unit, so a search costs a table
// look-up per character; the text is folded in chunks as the search goes, so a match near the
// start position is found without folding the rest.
#include "find.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

namespace fmwrapper::detail {
namespace {

constexpr std::size_t kNpos = std::u16string_view::npos;

struct FoldEntry {
  std::uint8_t len = 0;  // 0: not computed yet
  std::array<char16_t, 3> units{};
};

// Appends the full case folding of code point `c` to `out`.
void foldCodePoint(UChar32 c, std::u16string& out) {
  UChar src[2];
  int32_t srcLen = 0;
  U16_APPEND_UNSAFE(src, srcLen, c);
  UChar dst[8];
  UErrorCode err = U_ZERO_ERROR;
  int32_t n = u_strFoldCase(dst, 8, src, srcLen, U_FOLD_CASE_DEFAULT, &err);
  if (U_FAILURE(err) || n <= 0 || n > 8) {
    out.append(src, src + srcLen);
    return;
  }
  out.append(dst, dst + n);
}

const FoldEntry& bmpFold(char16_t c) {
  static std::vector<FoldEntry> table(0x10000);
  FoldEntry& e = table[c];
  if (e.len == 0) {
    std::u16string f;
    if (U16_IS_SURROGATE(c)) {
      f.push_back(c);
    } else {
      foldCodePoint(c, f);
    }
    if (f.size() > 3) f.resize(3);  // never happens: no BMP character folds to more than 3 units
    e.len = static_cast<std::uint8_t>(f.size());
    std::copy(f.begin(), f.end(), e.units.begin());
  }
  return e;
}

// The folded form of part of a text, with the original position of every folded unit.
struct Folded {
  std::u16string units;
  std::vector<fmx::uint32> origin;

  // Folds whole characters of `text` starting at `from`, up to about `count` units; returns the
  // position after the last character folded.
  std::size_t append(std::u16string_view text, std::size_t from, std::size_t count) {
    const std::size_t end = std::min(text.size(), from + count);
    units.reserve(units.size() + (end - from));
    origin.reserve(units.capacity());
    std::size_t i = from;
    while (i < end) {
      const char16_t u = text[i];
      const auto at = static_cast<fmx::uint32>(i);
      if (U16_IS_LEAD(u) && i + 1 < text.size() && U16_IS_TRAIL(text[i + 1])) {
        const std::size_t before = units.size();
        foldCodePoint(U16_GET_SUPPLEMENTARY(u, text[i + 1]), units);
        origin.insert(origin.end(), units.size() - before, at);
        i += 2;
      } else {
        const FoldEntry& e = bmpFold(u);
        for (std::uint8_t k = 0; k < e.len; ++k) {
          units.push_back(e.units[k]);
          origin.push_back(at);
        }
        i += 1;
      }
    }
    return i;
  }

  void clear() {
    units.clear();
    origin.clear();
  }

  bool startsChar(std::size_t i) const { return i == 0 || origin[i] != origin[i - 1]; }
  bool endsChar(std::size_t e) const { return e == units.size() || origin[e] != origin[e - 1]; }
};

// The folded text of the last search, kept so that its memory is reused by the next one.
thread_local Folded tScratch;

}  // namespace

std::u16string foldCase(std::u16string_view s) {
  Folded f;
  f.append(s, 0, s.size());
  return std::move(f.units);
}

fmx::uint32 findForward(std::u16string_view text, std::u16string_view pattern, fmx::uint32 position,
                        bool ignoreCase) {
  if (pattern.empty() || position >= text.size()) return fmx::kNotFound;
  if (!ignoreCase) {
    const std::size_t hit = text.find(pattern, position);
    return hit == kNpos ? fmx::kNotFound : static_cast<fmx::uint32>(hit);
  }
  const std::u16string needle = foldCase(pattern);
  Folded& hay = tScratch;
  hay.clear();
  std::size_t next = position;
  std::size_t searchFrom = 0;
  std::size_t chunk = std::max<std::size_t>(4096, needle.size() * 4);
  while (true) {
    next = hay.append(text, next, chunk);
    chunk *= 2;
    const std::u16string_view folded(hay.units);
    for (std::size_t i = folded.find(needle, searchFrom); i != kNpos;
         i = folded.find(needle, i + 1)) {
      if (hay.startsChar(i) && hay.endsChar(i + needle.size())) return hay.origin[i];
    }
    if (next >= text.size()) return fmx::kNotFound;
    // A later match may begin in the last needle.size() - 1 folded units.
    if (folded.size() >= needle.size()) {
      searchFrom = std::max(searchFrom, folded.size() - needle.size() + 1);
    }
  }
}

fmx::uint32 findBackward(std::u16string_view text, std::u16string_view pattern,
                         fmx::uint32 position, bool ignoreCase) {
  if (pattern.empty() || text.empty()) return fmx::kNotFound;
  if (!ignoreCase) {
    const std::size_t hit = text.rfind(pattern, position);
    return hit == kNpos ? fmx::kNotFound : static_cast<fmx::uint32>(hit);
  }
  const std::u16string needle = foldCase(pattern);
  // A match that starts at or before `position` ends within needle.size() characters of it,
  // since every character folds to at least one unit.
  Folded& hay = tScratch;
  hay.clear();
  hay.append(text, 0, std::size_t{position} + needle.size() + 1);
  const std::u16string_view folded(hay.units);
  if (folded.size() < needle.size()) return fmx::kNotFound;
  // The last folded unit that comes from a character at or before `position`.
  const auto last = std::upper_bound(hay.origin.begin(), hay.origin.end(), position);
  std::size_t from = static_cast<std::size_t>(last - hay.origin.begin());
  if (from == 0) return fmx::kNotFound;
  from -= 1;
  for (std::size_t i = folded.rfind(needle, from); i != kNpos;
       i = i == 0 ? kNpos : folded.rfind(needle, i - 1)) {
    if (hay.startsChar(i) && hay.endsChar(i + needle.size())) return hay.origin[i];
  }
  return fmx::kNotFound;
}

}  // namespace fmwrapper::detail
