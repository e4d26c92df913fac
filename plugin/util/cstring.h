// Byte-string helpers for the 8-bit switches text: loose, case-insensitive (A to Z only) matching.
// Only what the plug-in calls is here; a helper joins when a dialog first needs it.
#pragma once

#include <cstdint>

std::int32_t XP_Strlen(const char* s);
int XP_Memcmp(const char* a, const char* b, std::int32_t count, unsigned char caseSensitive);
int XP_MemcmpU(const unsigned char* a, const unsigned char* b, std::int32_t count,
               unsigned char caseSensitive);
// n-th occurrence at or after start, hits may overlap; -1 when none.
std::int32_t XP_Position(const char* text, std::int32_t textLen, const char* pattern,
                         std::int32_t patternLen, std::int32_t start, std::int32_t occurrence,
                         unsigned char caseSensitive);
bool XP_HasSwitch(const char* switches, const char* switchName);
bool XP_GetTaggedLong(const char* switches, const char* tag, std::int32_t* out);
std::int32_t XP_GetTaggedStr(const char* text, std::int32_t textLen, const char* tag,
                             std::int32_t tagLen, char stopChar, std::int32_t start,
                             std::int32_t occurrence, unsigned char caseSensitive, char* out,
                             std::int32_t outSize);
long XP_CStringToNum(const char* s, long* out);
void XP_NumToCString(long value, char* dst);
