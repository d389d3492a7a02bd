#include "studio/gradient.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace krv::studio {
namespace {

float Tenths(float position) { return std::round(std::clamp(position, 0.0f, 100.0f) * 10) / 10; }

}  // namespace

std::optional<Gradient> Gradient::Parse(std::string_view text) {
  auto stops = tool::ParseUnsortedStops(text);
  if (!stops) return std::nullopt;
  return Gradient(std::move(*stops));
}

size_t Gradient::Add(float position) { return Insert({ColourAt(position), Tenths(position)}); }

bool Gradient::Remove(size_t index) {
  if (stops_.size() <= tool::kFewestStops) return false;
  stops_.erase(stops_.begin() + static_cast<ptrdiff_t>(index));
  return true;
}

size_t Gradient::Move(size_t index, float position) {
  const tool::GradientStop moved{stops_[index].colour, Tenths(position)};
  stops_.erase(stops_.begin() + static_cast<ptrdiff_t>(index));
  return Insert(moved);
}

size_t Gradient::Insert(tool::GradientStop stop) {
  const auto place = std::find_if(stops_.begin(), stops_.end(), [&stop](const auto& other) {
    return other.position > stop.position;
  });
  const auto inserted = stops_.insert(place, stop);
  return static_cast<size_t>(inserted - stops_.begin());
}

}  // namespace krv::studio
