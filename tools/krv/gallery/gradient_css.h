// Gradient texts as stylesheets draw them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace krv::tool {

// The CSS image for a gradient of at least two stops, "count,colour,position;colour,position;...",
// a colour being a decimal 0xRRGGBB and a position a percentage. Nothing for every other text.
std::optional<std::string> GradientCss(std::string_view text);

}  // namespace krv::tool
