// A gradient's stops as the studio edits them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "keyframes/gradient_stops.h"

namespace krv::studio {

// At least two stops, in order of position.
class Gradient {
 public:
  // Reads the text of a gradient parameter, whose stops may be in any order. Nothing when it is
  // none.
  static std::optional<Gradient> Parse(std::string_view text);

  std::string ToText() const { return tool::GradientText(stops_); }

  const tool::GradientStops& stops() const { return stops_; }

  uint32_t ColourAt(float position) const { return tool::ColourAt(stops_, position); }

  // Adds a stop that changes nothing yet: of the colour that is there. Returns its index.
  size_t Add(float position);

  // Removes a stop; the last two stay. Whether it did.
  bool Remove(size_t index);

  // Moves a stop to a position, limited to 0 to 100 and cut to tenths; returns its index then,
  // which changes where it passes another.
  size_t Move(size_t index, float position);

  void Recolour(size_t index, uint32_t colour) { stops_[index].colour = colour; }

 private:
  explicit Gradient(tool::GradientStops stops) : stops_(std::move(stops)) {}
  size_t Insert(tool::GradientStop stop);

  tool::GradientStops stops_;
};

}  // namespace krv::studio
