#include "imageio/file_name.h"

namespace framekit::imageio {
namespace {

constexpr bool IsHighSurrogate(char32_t u) { return u >= 0xD800 && u <= 0xDBFF; }
constexpr bool IsLowSurrogate(char32_t u) { return u >= 0xDC00 && u <= 0xDFFF; }

void AppendUtf8(std::string& out, char32_t c) {
  const auto byte = [&out](char32_t v) { out.push_back(static_cast<char>(v)); };
  if (c < 0x80) {
    byte(c);
  } else if (c < 0x800) {
    byte(0xC0 | (c >> 6));
    byte(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    byte(0xE0 | (c >> 12));
    byte(0x80 | ((c >> 6) & 0x3F));
    byte(0x80 | (c & 0x3F));
  } else {
    byte(0xF0 | (c >> 18));
    byte(0x80 | ((c >> 12) & 0x3F));
    byte(0x80 | ((c >> 6) & 0x3F));
    byte(0x80 | (c & 0x3F));
  }
}

}  // namespace

std::optional<std::string> Utf16ToUtf8(std::u16string_view text) {
  std::string out;
  out.reserve(text.size() * 3);  // no BMP unit needs more; a pair needs 4 for its 2 units
  for (size_t i = 0; i < text.size(); ++i) {
    char32_t c = text[i];
    if (IsHighSurrogate(c)) {
      if (i + 1 == text.size() || !IsLowSurrogate(text[i + 1])) return std::nullopt;
      c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00);
    } else if (IsLowSurrogate(c)) {
      return std::nullopt;
    }
    AppendUtf8(out, c);
  }
  return out;
}

}  // namespace framekit::imageio
