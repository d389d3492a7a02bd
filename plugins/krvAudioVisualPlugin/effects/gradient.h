// The text of a gradient parameter.
#pragma once

#include <opencv2/core.hpp>
#include <optional>
#include <string_view>

#include "graphics/px_image.h"

namespace krv {

// The most stops a gradient may have, as each is a pixel of a texture.
inline constexpr int kMaxGradientStops = kWidestTexture;

// Reads "count,entry;entry;..." where an entry is "colour,position": the colour a decimal 0xRRGGBB,
// the position a percentage. "3,16711680,0;65280,50;255,100" is red, green in the middle, blue.
//
// The result has one row of `count` pixels of type CV_8UC4: blue, green, red, and the position as
// position x 255 / 100 cut to a whole number and limited to 0 to 255. Pixels without an entry are
// zero, entries beyond the count are dropped, an entry without a comma is skipped.
//
// Nothing when the text has no comma or the count is not 1 to kMaxGradientStops. Throws
// std::invalid_argument or std::out_of_range when a number does not parse. Independent of the
// locale.
std::optional<cv::Mat> ParseGradient(std::string_view text);

}  // namespace krv
