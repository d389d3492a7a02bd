// A gradient's stops as the studio edits them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace krv::studio {

struct GradientStop {
  uint32_t colour = 0;  // 0xRRGGBB
  float position = 0;   // percent, 0 to 100
};

// At least two stops, in order of position.
class Gradient {
 public:
  // Reads "3,16711680,0;65280,50;255,100": the count, then colour and position of each stop.
  // Nothing when the text is not exactly that, has fewer than two stops or positions outside 0 to
  // 100.
  static std::optional<Gradient> Parse(std::string_view text);

  std::string ToText() const;

  const std::vector<GradientStop>& stops() const { return stops_; }

  // The colour at a position: mixed from the stops on both sides.
  uint32_t ColourAt(float position) const;

  // Adds a stop that changes nothing yet: of the colour that is there. Returns its index.
  size_t Add(float position);

  // Removes a stop; the last two stay. Whether it did.
  bool Remove(size_t index);

  // Moves a stop to a position, limited to 0 to 100 and cut to tenths; returns its index then,
  // which changes where it passes another.
  size_t Move(size_t index, float position);

  void Recolour(size_t index, uint32_t colour) { stops_[index].colour = colour; }

 private:
  size_t Insert(GradientStop stop);

  std::vector<GradientStop> stops_;
};

}  // namespace krv::studio
