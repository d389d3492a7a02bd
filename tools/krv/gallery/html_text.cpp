#include "gallery/html_text.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace krv::tool {
namespace {

std::string_view Escaped(const char& c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\'':
      return "&#39;";
    default:
      return {&c, 1};
  }
}

// Appends up to three bytes as four characters.
void AppendBase64(std::string_view bytes, std::string* text) {
  constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  uint32_t bits = 0;
  for (size_t i = 0; i < 3; ++i) {
    bits = bits << 8 | (i < bytes.size() ? static_cast<uint8_t>(bytes[i]) : 0u);
  }
  std::array<char, 4> digits{'=', '=', '=', '='};
  for (size_t i = 0; i <= bytes.size(); ++i) digits[i] = kDigits[bits >> (18 - 6 * i) & 63];
  text->append(digits.data(), digits.size());
}

}  // namespace

std::string EscapeHtml(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size());
  for (const char& c : text) escaped += Escaped(c);
  return escaped;
}

std::string DataUri(std::string_view type, std::string_view bytes) {
  std::string uri = "data:";
  uri.append(type).append(";base64,");
  uri.reserve(uri.size() + (bytes.size() + 2) / 3 * 4);
  for (size_t i = 0; i < bytes.size(); i += 3) AppendBase64(bytes.substr(i, 3), &uri);
  return uri;
}

}  // namespace krv::tool
