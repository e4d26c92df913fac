// Reading Apple's .strings syntax: "key" = "value"; with /* */ and // comments and backslash
// escapes (\n, \t, \r, \", \\, \Uxxxx). Text stays UTF-8.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The pairs in file order. Parsing stops quietly at the first malformed entry.
std::vector<std::pair<std::string, std::string>> XP_ParseStringsFile(std::string_view content);

// The string `key` of table `tableName` in the bundle of the call in progress; empty when missing.
std::u16string XP_LocalizedString(const std::string& tableName, const std::string& key,
                                  bool* found);
