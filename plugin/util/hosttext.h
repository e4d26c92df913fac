// Thin layer between host values and the dialog code's C strings and UTF-16 buffers.
// Argument readers always advance the index by one, also past the end of the vector, so a handler
// reads its arguments strictly in order and a missing trailing argument reads as empty or 0.
#pragma once

#include <string>

#include "fmx/FMWrapper.h"

using UniChar = fmx::uint16;

// Argument readers.
void XP7_GetNextTxtFromVect(const fmx::DataVect& args, fmx::TextAutoPtr& out, fmx::uint32* index);
void XP7_GetNextCStringFromVect(const fmx::DataVect& args, char* buf, fmx::uint32 bufSize,
                                fmx::uint32* index, fmx::int32 enc);
fmx::int32 XP7_GetNextlongFromVect(const fmx::DataVect& args, fmx::uint32* index);

// Host text to other forms.
void XP7_TxtToCStr(const fmx::TextAutoPtr& txt, fmx::uint32 position, fmx::uint32 size,
                   fmx::uint32 bufSize, char* buf, fmx::int32 enc);
void XP7_TxtToUniStr(const fmx::TextAutoPtr& txt, UniChar* buf, fmx::uint32 bufSize);
// The toolkit takes std::u16string where the original platform took a CFStringRef.
std::u16string XP7_TxtToU16String(const fmx::Text& txt);
void XP7_longToTxt(long value, fmx::TextAutoPtr& out);

// Other forms to host text.
void XP7_CStrToTxt(const char* s, fmx::TextAutoPtr& out, fmx::int32 enc);
void XP7_AppendCStrToTxt(const char* s, fmx::TextAutoPtr& out, fmx::int32 enc);
void XP7_AppendUniStrToTxt(const UniChar* s, fmx::TextAutoPtr& out);
void XP7_TxtToTxt(const fmx::TextAutoPtr& src, fmx::TextAutoPtr& dst);

// Searching (non-overlapping hits; -1 when not found).
fmx::int32 XP7_Position(const fmx::TextAutoPtr& txt, const fmx::TextAutoPtr& pattern,
                        fmx::uint32 start, fmx::uint32 occurrence, unsigned char caseSensitive);

// UTF-16 buffer helpers (no host calls).
void XP7_UniStrToUniStrCopy(const UniChar* src, UniChar* dst, fmx::uint32 maxLen);
fmx::uint32 XP7_CStrToUniStrSimple(const char* src, UniChar* dst, fmx::uint32 maxLen);
// UTF-16 n-th occurrence search (overlapping, like XP_Position) and comparison.
fmx::int32 XP7_PositionUniUInt32(const UniChar* text, fmx::uint32 textLen, const UniChar* pattern,
                                 fmx::uint32 patternLen, fmx::uint32 start, fmx::uint32 occurrence);
int XP_MemcmpUniU(const UniChar* a, const UniChar* b, fmx::uint32 count);
