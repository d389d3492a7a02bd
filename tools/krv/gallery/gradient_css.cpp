#include "gallery/gradient_css.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <system_error>

#include "parameter_text.h"

namespace krv::tool {
namespace {

// The part in front of the separator, or everything; `rest` keeps what follows.
std::string_view TakeUntil(char separator, std::string_view* rest) {
  const size_t at = rest->find(separator);
  const std::string_view taken = rest->substr(0, at);
  *rest = at == std::string_view::npos ? std::string_view() : rest->substr(at + 1);
  return taken;
}

template <class Number>
std::optional<Number> Parse(std::string_view text) {
  Number number{};
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, number);
  if (text.empty() || error != std::errc() || rest != end) return std::nullopt;
  return number;
}

}  // namespace

std::optional<std::string> GradientCss(std::string_view text) {
  const auto count = Parse<int>(TakeUntil(',', &text));
  if (!count || *count < 2) return std::nullopt;
  std::string css = "linear-gradient(90deg";
  int stops = 0;
  while (!text.empty()) {
    std::string_view stop = TakeUntil(';', &text);
    const auto colour = Parse<int32_t>(TakeUntil(',', &stop));
    const auto position = Parse<float>(stop);
    if (!colour || *colour < 0 || *colour > 0xFFFFFF) return std::nullopt;
    if (!position || !std::isfinite(*position)) return std::nullopt;
    css += "," + NumberText(kKindColor, *colour) + " " + NumberText(kKindFloat, *position) + "%";
    ++stops;
  }
  if (stops != *count) return std::nullopt;
  return css + ")";
}

}  // namespace krv::tool
