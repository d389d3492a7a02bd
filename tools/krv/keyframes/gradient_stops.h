// Gradients as lists of stops, their text, and what lies between two of them. Pure functions, for
// any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace krv::tool {

struct GradientStop {
  uint32_t colour = 0;  // 0xRRGGBB
  float position = 0;   // percent, 0 to 100

  bool operator==(const GradientStop&) const = default;
};

// Positions never fall from stop to stop; two stops at one position are a hard edge.
using GradientStops = std::vector<GradientStop>;

inline constexpr size_t kFewestStops = 2;
inline constexpr size_t kMostStops = 4096;

// Reads the text of a gradient parameter, "3,16711680,0;65280,50;255,100": the number of stops,
// then the colour and position of each. Nothing when the text is not exactly that, or its positions
// fall or lie outside 0 to 100, or there are fewer than kFewestStops or more than kMostStops of
// them.
std::optional<GradientStops> ParseGradientStops(std::string_view text);

// Does the same for stops in any order, which it sorts.
std::optional<GradientStops> ParseUnsortedStops(std::string_view text);

// The colour at a position, mixed from the stops around it; where stops lie, the first one's there.
uint32_t ColourAt(const GradientStops& stops, float position);

std::string GradientText(const GradientStops& stops);

// The gradient `share`, 0 to 1, of the way from one to the other. With as many stops in both, each
// stop's colour and position go from the one to the other. Else each gradient first gets stops, of
// the colour that it has there, at the positions that only the other has: that changes neither's
// look, and then both have as many. Neither may be empty.
GradientStops MixGradients(const GradientStops& from, const GradientStops& to, double share);

}  // namespace krv::tool
