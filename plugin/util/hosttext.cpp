#include "util/hosttext.h"

#include <cstdio>

namespace {

constexpr fmx::int32 kMacRoman = fmx::Text::kEncoding_ASCII_Mac;

}  // namespace

void XP7_GetNextTxtFromVect(const fmx::DataVect& args, fmx::TextAutoPtr& out, fmx::uint32* index) {
  if (*index < args.Size()) {
    const fmx::Text& arg = args.AtAsText(*index);
    out->SetText(arg, 0, arg.GetSize());
  } else {
    out->DeleteText(0, fmx::kSize_End);
  }
  ++*index;
}

void XP7_GetNextCStringFromVect(const fmx::DataVect& args, char* buf, fmx::uint32 bufSize,
                                fmx::uint32* index, fmx::int32 enc) {
  if (buf && bufSize > 0) buf[0] = '\0';
  if (*index < args.Size() && buf && bufSize > 1) {
    // Read in place: a loop may come through here for every step, and a copy costs allocations.
    args.AtAsText(*index).GetBytes(buf, bufSize, 0, fmx::kSize_End,
                                   enc == fmx::Text::kEncoding_Native ? kMacRoman : enc);
  }
  ++*index;
}

fmx::int32 XP7_GetNextlongFromVect(const fmx::DataVect& args, fmx::uint32* index) {
  fmx::int32 value = 0;
  if (*index < args.Size()) {
    fmx::FixPtAutoPtr number(0, 16);
    number->AssignFixPt(args.AtAsNumber(*index));
    value = number->AsLong();
  }
  ++*index;
  return value;
}

void XP7_TxtToCStr(const fmx::TextAutoPtr& txt, fmx::uint32 position, fmx::uint32 size,
                   fmx::uint32 bufSize, char* buf, fmx::int32 enc) {
  if (!buf || bufSize == 0) return;
  // The host writes at most bufSize - 1 bytes and always terminates, so the whole buffer is
  // offered: bufSize - 1 characters are kept and the rest is cut.
  buf[0] = '\0';
  txt->GetBytes(buf, bufSize, position, size, enc);
}

void XP7_TxtToUniStr(const fmx::TextAutoPtr& txt, UniChar* buf, fmx::uint32 bufSize) {
  if (!buf || bufSize == 0) return;
  fmx::uint32 n = txt->GetSize();
  if (n >= bufSize) n = bufSize - 1;
  if (n > 0) txt->GetUnicode(buf, 0, n);
  buf[n] = 0;
}

std::u16string XP7_TxtToU16String(const fmx::Text& txt) {
  std::u16string out(txt.GetSize(), u'\0');
  if (!out.empty())
    txt.GetUnicode(reinterpret_cast<UniChar*>(out.data()), 0, static_cast<fmx::uint32>(out.size()));
  return out;
}

void XP7_longToTxt(long value, fmx::TextAutoPtr& out) {
  char digits[24];
  std::snprintf(digits, sizeof digits, "%ld", value);
  out->Assign(digits, kMacRoman);
}

void XP7_CStrToTxt(const char* s, fmx::TextAutoPtr& out, fmx::int32 enc) {
  out->Assign(s ? s : "", enc);
}

void XP7_AppendCStrToTxt(const char* s, fmx::TextAutoPtr& out, fmx::int32 enc) {
  fmx::TextAutoPtr scratch;
  scratch->Assign(s ? s : "", enc);
  out->AppendText(*scratch, 0, fmx::kSize_End);
}

void XP7_AppendUniStrToTxt(const UniChar* s, fmx::TextAutoPtr& out) {
  if (!s) return;
  fmx::TextAutoPtr scratch;
  scratch->AssignUnicode(s);
  out->AppendText(*scratch, 0, fmx::kSize_End);
}

void XP7_TxtToTxt(const fmx::TextAutoPtr& src, fmx::TextAutoPtr& dst) {
  if (src.get() == dst.get()) return;
  dst->DeleteText(0, fmx::kSize_End);
  dst->AppendText(*src, 0, fmx::kSize_End);
}

fmx::int32 XP7_Position(const fmx::TextAutoPtr& txt, const fmx::TextAutoPtr& pattern,
                        fmx::uint32 start, fmx::uint32 occurrence, unsigned char caseSensitive) {
  const fmx::uint32 l = txt->GetSize();
  const fmx::uint32 p = pattern->GetSize();
  if (l == 0 || p == 0 || l < p || start > l - p) return -1;
  fmx::uint32 position = start;
  fmx::uint32 hits = 0;
  for (;;) {
    fmx::uint32 hit =
        caseSensitive ? txt->Find(*pattern, position) : txt->FindIgnoringCase(*pattern, position);
    if (hit == fmx::kNotFound || hit > l - p) return -1;
    if (++hits >= occurrence) return static_cast<fmx::int32>(hit);
    position = hit + p;  // hits never overlap
    if (position > l - p) return -1;
  }
}

void XP7_UniStrToUniStrCopy(const UniChar* src, UniChar* dst, fmx::uint32 maxLen) {
  if (!dst) return;
  fmx::uint32 n = 0;
  while (src && n < maxLen && src[n] != 0) {
    dst[n] = src[n];
    ++n;
  }
  dst[n] = 0;
}

fmx::uint32 XP7_CStrToUniStrSimple(const char* src, UniChar* dst, fmx::uint32 maxLen) {
  if (!dst) return 0;
  fmx::uint32 n = 0;
  for (; src && n < maxLen && src[n] != '\0'; ++n) {
    auto byte = static_cast<unsigned char>(src[n]);
    dst[n] = byte <= 127 ? byte : u'*';
  }
  dst[n] = 0;
  return 2 * n;
}

fmx::int32 XP7_PositionUniUInt32(const UniChar* text, fmx::uint32 textLen, const UniChar* pattern,
                                 fmx::uint32 patternLen, fmx::uint32 start,
                                 fmx::uint32 occurrence) {
  if (!text || !pattern || patternLen == 0 || textLen < patternLen || start > textLen - patternLen)
    return -1;
  fmx::uint32 hits = 0;
  for (fmx::uint32 pos = start; pos <= textLen - patternLen; ++pos) {
    if (XP_MemcmpUniU(text + pos, pattern, patternLen) == 0 && ++hits >= occurrence) {
      return static_cast<fmx::int32>(pos);
    }
  }
  return -1;
}

int XP_MemcmpUniU(const UniChar* a, const UniChar* b, fmx::uint32 count) {
  if (!a || !b) return 0;
  for (fmx::uint32 i = 0; i < count; ++i) {
    if (a[i] != b[i]) return a[i] < b[i] ? -1 : 1;
  }
  return 0;
}
