#include "gallery/gradient_css.h"

#include <cmath>
#include <cstdint>

#include "parameter_text.h"
#include "text_pieces.h"

namespace krv::tool {
std::optional<std::string> GradientCss(std::string_view text) {
  const auto count = host::ParseNumber<int>(host::TakeUntil(',', &text));
  if (!count || *count < 2) return std::nullopt;
  std::string css = "linear-gradient(90deg";
  int stops = 0;
  while (!text.empty()) {
    std::string_view stop = host::TakeUntil(';', &text);
    const auto colour = host::ParseNumber<int32_t>(host::TakeUntil(',', &stop));
    const auto position = host::ParseNumber<float>(stop);
    if (!colour || *colour < 0 || *colour > 0xFFFFFF) return std::nullopt;
    if (!position || !std::isfinite(*position)) return std::nullopt;
    css += "," + NumberText(kKindColor, *colour) + " " + NumberText(kKindFloat, *position) + "%";
    ++stops;
  }
  if (stops != *count) return std::nullopt;
  return css + ")";
}

}  // namespace krv::tool
