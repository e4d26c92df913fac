#include "host/container.h"

#include <algorithm>
#include <cctype>
#include <vector>

namespace host {

namespace {

std::string lower(std::string_view s) {
  std::string out(s);
  std::transform(out.begin(), out.end(), out.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return out;
}

unsigned byteAt(std::string_view b, size_t i) {
  return static_cast<unsigned char>(b[i]);
}
unsigned be16(std::string_view b, size_t i) {
  return byteAt(b, i) << 8 | byteAt(b, i + 1);
}
unsigned le16(std::string_view b, size_t i) {
  return byteAt(b, i + 1) << 8 | byteAt(b, i);
}

std::optional<std::pair<int, int>> jpegSize(std::string_view b) {
  if (b.size() < 4 || byteAt(b, 0) != 0xFF || byteAt(b, 1) != 0xD8) return std::nullopt;
  size_t i = 2;
  while (i + 4 <= b.size()) {
    if (byteAt(b, i) != 0xFF) return std::nullopt;
    const unsigned marker = byteAt(b, i + 1);
    if (marker == 0xFF) {
      ++i;
      continue;
    }
    if (marker == 0xD8 || marker == 0x01 || (marker >= 0xD0 && marker <= 0xD7)) {
      i += 2;
      continue;
    }
    const unsigned length = be16(b, i + 2);
    const bool frame =
        marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
    if (frame) {
      if (i + 9 > b.size()) return std::nullopt;
      return std::pair<int, int>(static_cast<int>(be16(b, i + 7)),
                                 static_cast<int>(be16(b, i + 5)));
    }
    if (length < 2) return std::nullopt;
    i += 2 + length;
  }
  return std::nullopt;
}

std::optional<std::pair<int, int>> pngSize(std::string_view b) {
  static const std::string_view signature("\x89PNG\r\n\x1a\n", 8);
  if (b.size() < 24 || b.substr(0, 8) != signature || b.substr(12, 4) != "IHDR")
    return std::nullopt;
  auto be32 = [&](size_t i) { return be16(b, i) << 16 | be16(b, i + 2); };
  return std::pair<int, int>(static_cast<int>(be32(16)), static_cast<int>(be32(20)));
}

std::optional<std::pair<int, int>> gifSize(std::string_view b) {
  if (b.size() < 10 || (b.substr(0, 6) != "GIF87a" && b.substr(0, 6) != "GIF89a")) {
    return std::nullopt;
  }
  return std::pair<int, int>(static_cast<int>(le16(b, 6)), static_cast<int>(le16(b, 8)));
}

// A picture file: a 512-byte header, then the picture's size word and its frame (top, left,
// bottom, right). Some pictures come without the file header.
std::optional<std::pair<int, int>> pictSize(std::string_view b) {
  for (size_t start : {size_t{512}, size_t{0}}) {
    if (b.size() < start + 10) continue;
    const int top = static_cast<int16_t>(be16(b, start + 2));
    const int left = static_cast<int16_t>(be16(b, start + 4));
    const int bottom = static_cast<int16_t>(be16(b, start + 6));
    const int right = static_cast<int16_t>(be16(b, start + 8));
    if (right > left && bottom > top) return std::pair<int, int>(right - left, bottom - top);
  }
  return std::nullopt;
}

}  // namespace

std::string streamTypeForName(std::string_view fileName) {
  const size_t dot = fileName.rfind('.');
  const std::string ext = dot == std::string_view::npos ? "" : lower(fileName.substr(dot + 1));
  if (ext == "jpg" || ext == "jpeg") return "JPEG";
  if (ext == "png") return "PNGf";
  if (ext == "gif") return "GIFf";
  if (ext == "pct" || ext == "pict") return "PICT";
  return "FILE";
}

std::optional<std::pair<int, int>> pictureSize(std::string_view type, std::string_view bytes) {
  if (type == "JPEG") return jpegSize(bytes);
  if (type == "PNGf") return pngSize(bytes);
  if (type == "GIFf") return gifSize(bytes);
  if (type == "PICT") return pictSize(bytes);
  return std::nullopt;
}

Value makeContainer(std::string_view fileName, std::string bytes) {
  const std::string type = streamTypeForName(fileName);
  std::vector<Stream> streams;
  std::optional<std::pair<int, int>> size = pictureSize(type, bytes);
  streams.push_back(Stream{type, std::move(bytes)});
  streams.push_back(Stream{"FNAM", std::string(fileName)});
  if (size && size->first > 0 && size->second > 0 && size->first <= 0xFFFF &&
      size->second <= 0xFFFF) {
    const auto w = static_cast<unsigned>(size->first), h = static_cast<unsigned>(size->second);
    std::string s{static_cast<char>(h >> 8), static_cast<char>(h & 0xFF), static_cast<char>(w >> 8),
                  static_cast<char>(w & 0xFF)};
    streams.push_back(Stream{"SIZE", s});
  }
  return Value::container(std::move(streams));
}

std::optional<std::string> base64Decode(std::u16string_view text) {
  std::string out;
  unsigned buffer = 0;
  int bits = 0;
  for (char16_t c : text) {
    int v;
    if (c >= u'A' && c <= u'Z')
      v = c - u'A';
    else if (c >= u'a' && c <= u'z')
      v = c - u'a' + 26;
    else if (c >= u'0' && c <= u'9')
      v = c - u'0' + 52;
    else if (c == u'+' || c == u'-')
      v = 62;
    else if (c == u'/' || c == u'_')
      v = 63;
    else if (c == u'=')
      break;
    else if (c == u' ' || c == u'\r' || c == u'\n' || c == u'\t')
      continue;
    else
      return std::nullopt;
    buffer = (buffer << 6) | static_cast<unsigned>(v);
    bits += 6;
    if (bits >= 8) {
      bits -= 8;
      out.push_back(static_cast<char>((buffer >> bits) & 0xFF));
    }
  }
  return out;
}

std::string base64Encode(std::string_view bytes) {
  static const char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string out;
  size_t i = 0;
  for (; i + 2 < bytes.size(); i += 3) {
    const unsigned n = byteAt(bytes, i) << 16 | byteAt(bytes, i + 1) << 8 | byteAt(bytes, i + 2);
    out += {alphabet[n >> 18], alphabet[(n >> 12) & 63], alphabet[(n >> 6) & 63], alphabet[n & 63]};
  }
  if (i + 1 == bytes.size()) {
    const unsigned n = byteAt(bytes, i) << 16;
    out += {alphabet[n >> 18], alphabet[(n >> 12) & 63], '=', '='};
  } else if (i + 2 == bytes.size()) {
    const unsigned n = byteAt(bytes, i) << 16 | byteAt(bytes, i + 1) << 8;
    out += {alphabet[n >> 18], alphabet[(n >> 12) & 63], alphabet[(n >> 6) & 63], '='};
  }
  return out;
}

}  // namespace host
