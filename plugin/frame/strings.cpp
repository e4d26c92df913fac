// Localized strings: "<bundle>/Resources/<lang>.lproj/<table>.strings", Apple's .strings syntax in
// UTF-8, read once per bundle, language and table and kept for the life of the process.
#include <dlfcn.h>
#include <unicode/ustring.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <tuple>

#include "frame/frame.h"
#include "frame/strings_file.h"

namespace {

using Table = std::map<std::string, std::u16string>;

std::map<std::tuple<std::string, std::string, std::string>, Table>& loadedTables() {
  static std::map<std::tuple<std::string, std::string, std::string>, Table> tables;
  return tables;
}

std::string languageFrom(const char* value) {
  if (!value) return {};
  std::string lang(value);
  lang = lang.substr(0, lang.find_first_of("_.@"));
  if (lang == "C" || lang == "POSIX") return {};
  return lang;
}

std::u16string fromUtf8(const std::string& s) {
  if (s.empty()) return {};
  std::u16string out(s.size(), u'\0');
  int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strFromUTF8WithSub(reinterpret_cast<UChar*>(out.data()), static_cast<int32_t>(out.size()),
                       &length, s.data(), static_cast<int32_t>(s.size()), 0xFFFD, nullptr, &status);
  if (U_FAILURE(status)) return {};
  out.resize(static_cast<std::size_t>(length));
  return out;
}

const Table& table(const std::string& name) {
  const std::string folder = XP_BundleFolder();
  const std::string lang = XP_BundleLanguage();
  auto key = std::make_tuple(folder, lang, name);
  auto& tables = loadedTables();
  auto found = tables.find(key);
  if (found != tables.end()) return found->second;
  Table entries;
  std::ifstream in(
      std::filesystem::path(folder) / "Resources" / (lang + ".lproj") / (name + ".strings"),
      std::ios::binary);
  if (in) {
    std::string content((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    for (auto& [k, v] : XP_ParseStringsFile(content)) entries.insert_or_assign(k, fromUtf8(v));
  }
  return tables.emplace(key, std::move(entries)).first->second;
}

std::string& lastBundleFolder() {
  static std::string folder;
  return folder;
}

}  // namespace

void XP_RememberBundleFolder() {
  if (gFMX_ExternCallPtr && gFMX_ExternCallPtr->instanceID) {
    lastBundleFolder() = reinterpret_cast<const char*>(gFMX_ExternCallPtr->instanceID);
  }
}

std::string XP_BundleFolder() {
  if (gFMX_ExternCallPtr && gFMX_ExternCallPtr->instanceID) {
    return reinterpret_cast<const char*>(gFMX_ExternCallPtr->instanceID);
  }
  if (!lastBundleFolder().empty()) return lastBundleFolder();
  // No bundle reference: the folder of the module that holds this code.
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&XP_BundleFolder), &info) && info.dli_fname) {
    return std::filesystem::path(info.dli_fname).parent_path().string();
  }
  return ".";
}

std::string XP_BundleLanguage() {
  std::string lang = languageFrom(std::getenv("MOSA_LANGUAGE"));
  if (lang.empty()) lang = languageFrom(std::getenv("LANG"));
  if (lang.empty()) return "en";
  std::error_code ec;
  if (!std::filesystem::is_directory(
          std::filesystem::path(XP_BundleFolder()) / "Resources" / (lang + ".lproj"), ec)) {
    return "en";
  }
  return lang;
}

void XP_ForgetLoadedStrings() {
  loadedTables().clear();
}

std::u16string XP_LocalizedString(const std::string& tableName, const std::string& key,
                                  bool* found) {
  const Table& entries = table(tableName);
  auto it = entries.find(key);
  if (found) *found = it != entries.end();
  return it != entries.end() ? it->second : std::u16string();
}

fmx::uint32 ZkSub_OSXLoadString(const char* tableName, const char* keyFormat, int id,
                                UniChar* buffer, fmx::uint32 bufferSize) {
  if (!buffer || bufferSize < 2 || !tableName || !keyFormat) return 0;
  char key[64];
  std::snprintf(key, sizeof key, keyFormat, id);
  bool found = false;
  std::u16string value = XP_LocalizedString(tableName, key, &found);
  if (!found || value.size() >= bufferSize - 1) return 0;
  value.copy(reinterpret_cast<char16_t*>(buffer), value.size());
  buffer[value.size()] = 0;
  return static_cast<fmx::uint32>(value.size());
}

void XP7_Do_GetStringUni(const char* tableName, const char* keyFormat, int id,
                         fmx::uint32 /*languageId*/, fmx::uint32 bufferSize, UniChar* buffer) {
  if (id == 131) id = 1;
  ZkSub_OSXLoadString(tableName, keyFormat, id, buffer, bufferSize);
}

void XP7_Do_GetString(const char* tableName, const char* keyFormat, int id, fmx::TextAutoPtr& text,
                      bool nameOnly) {
  if (id == 131) id = 1;
  UniChar buffer[1024];
  buffer[0] = 0;
  ZkSub_OSXLoadString(tableName, keyFormat, id, buffer, 1024);
  text->AssignUnicode(buffer);
  if (!nameOnly) return;
  fmx::TextAutoPtr paren;
  paren->Assign("(", fmx::Text::kEncoding_ASCII_Mac);
  fmx::uint32 at = text->Find(*paren, 0);
  if (at != fmx::kNotFound) text->DeleteText(at, fmx::kSize_End);
}
