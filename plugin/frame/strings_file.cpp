#include "frame/strings_file.h"

#include <cctype>
#include <optional>

#include <unicode/utf8.h>

namespace {

class Reader {
 public:
  explicit Reader(std::string_view text) : s_(text) {
    if (s_.substr(0, 3) == "\xEF\xBB\xBF") pos_ = 3;
  }

  // Skips blanks and comments; false at the end of the text.
  bool skipSpace() {
    while (pos_ < s_.size()) {
      char c = s_[pos_];
      if (std::isspace(static_cast<unsigned char>(c))) {
        ++pos_;
      } else if (s_.substr(pos_, 2) == "/*") {
        auto end = s_.find("*/", pos_ + 2);
        pos_ = end == std::string_view::npos ? s_.size() : end + 2;
      } else if (s_.substr(pos_, 2) == "//") {
        auto end = s_.find('\n', pos_);
        pos_ = end == std::string_view::npos ? s_.size() : end + 1;
      } else {
        return true;
      }
    }
    return false;
  }

  bool accept(char c) {
    if (!skipSpace() || s_[pos_] != c) return false;
    ++pos_;
    return true;
  }

  std::optional<std::string> word() {
    if (!skipSpace()) return std::nullopt;
    if (s_[pos_] == '"') return quoted();
    std::string out;
    while (pos_ < s_.size() &&
           (std::isalnum(static_cast<unsigned char>(s_[pos_])) ||
            std::string_view("_.$:/-").find(s_[pos_]) != std::string_view::npos)) {
      out += s_[pos_++];
    }
    if (out.empty()) return std::nullopt;
    return out;
  }

 private:
  std::optional<std::string> quoted() {
    ++pos_;
    std::string out;
    while (pos_ < s_.size()) {
      char c = s_[pos_++];
      if (c == '"') return out;
      if (c != '\\') {
        out += c;
        continue;
      }
      if (pos_ >= s_.size()) break;
      char e = s_[pos_++];
      switch (e) {
        case 'n':
          out += '\n';
          break;
        case 't':
          out += '\t';
          break;
        case 'r':
          out += '\r';
          break;
        case 'U':
        case 'u': {
          auto unit = hex4();
          if (!unit) return std::nullopt;
          char32_t cp = *unit;
          if (cp >= 0xD800 && cp < 0xDC00 && s_.substr(pos_, 2) == "\\U") {
            pos_ += 2;
            auto low = hex4();
            if (!low || *low < 0xDC00 || *low > 0xDFFF) return std::nullopt;
            cp = 0x10000 + ((cp - 0xD800) << 10) + (*low - 0xDC00);
          }
          appendUtf8(out, cp);
          break;
        }
        default:
          out += e;
          break;
      }
    }
    return std::nullopt;  // unterminated
  }

  std::optional<char32_t> hex4() {
    if (pos_ + 4 > s_.size()) return std::nullopt;
    char32_t v = 0;
    for (int i = 0; i < 4; ++i) {
      char c = s_[pos_++];
      v <<= 4;
      if (c >= '0' && c <= '9')
        v |= static_cast<char32_t>(c - '0');
      else if (c >= 'a' && c <= 'f')
        v |= static_cast<char32_t>(c - 'a' + 10);
      else if (c >= 'A' && c <= 'F')
        v |= static_cast<char32_t>(c - 'A' + 10);
      else
        return std::nullopt;
    }
    return v;
  }

  static void appendUtf8(std::string& out, char32_t cp) {
    if (cp >= 0xD800 && cp <= 0xDFFF) cp = 0xFFFD;  // a lone surrogate
    char bytes[U8_MAX_LENGTH];
    std::size_t length = 0;
    U8_APPEND_UNSAFE(bytes, length, cp);
    out.append(bytes, length);
  }

  std::string_view s_;
  std::size_t pos_ = 0;
};

}  // namespace

std::vector<std::pair<std::string, std::string>> XP_ParseStringsFile(std::string_view content) {
  std::vector<std::pair<std::string, std::string>> entries;
  Reader reader(content);
  while (reader.skipSpace()) {
    auto key = reader.word();
    if (!key) break;
    if (reader.accept(';')) {  // "key"; stands for "key" = "key";
      entries.emplace_back(*key, *key);
      continue;
    }
    if (!reader.accept('=')) break;
    auto value = reader.word();
    if (!value || !reader.accept(';')) break;
    entries.emplace_back(std::move(*key), std::move(*value));
  }
  return entries;
}
