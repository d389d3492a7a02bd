#include "studio/gradient.h"

#include <algorithm>
#include <cmath>

#include "parameter_text.h"
#include "text_pieces.h"

namespace krv::studio {
namespace {

std::optional<GradientStop> ParseStop(std::string_view text) {
  const auto colour = ParseNumber<uint32_t>(TakeUntil(',', &text));
  const auto position = ParseNumber<float>(text);
  if (!colour || *colour > 0xFFFFFF) return std::nullopt;
  if (!position || !(*position >= 0 && *position <= 100)) return std::nullopt;
  return GradientStop{*colour, *position};
}

uint32_t Mix(uint32_t from, uint32_t to, float share) {
  uint32_t mixed = 0;
  for (const int shift : {16, 8, 0}) {
    const auto a = static_cast<float>((from >> shift) & 255);
    const auto b = static_cast<float>((to >> shift) & 255);
    mixed |= static_cast<uint32_t>(std::lround(a + (b - a) * share)) << shift;
  }
  return mixed;
}

float Tenths(float position) { return std::round(std::clamp(position, 0.0f, 100.0f) * 10) / 10; }

}  // namespace

std::optional<Gradient> Gradient::Parse(std::string_view text) {
  const auto count = ParseNumber<size_t>(TakeUntil(',', &text));
  if (!count || *count < 2) return std::nullopt;
  Gradient gradient;
  while (!text.empty()) {
    const auto stop = ParseStop(TakeUntil(';', &text));
    if (!stop) return std::nullopt;
    gradient.stops_.push_back(*stop);
  }
  if (gradient.stops_.size() != *count) return std::nullopt;
  std::stable_sort(
      gradient.stops_.begin(), gradient.stops_.end(),
      [](const GradientStop& a, const GradientStop& b) { return a.position < b.position; });
  return gradient;
}

std::string Gradient::ToText() const {
  std::string text = std::to_string(stops_.size());
  char separator = ',';
  for (const GradientStop& stop : stops_) {
    text += separator + std::to_string(stop.colour) + ',' +
            tool::NumberText(kKindFloat, static_cast<double>(stop.position));
    separator = ';';
  }
  return text;
}

uint32_t Gradient::ColourAt(float position) const {
  if (position <= stops_.front().position) return stops_.front().colour;
  for (size_t i = 1; i < stops_.size(); ++i) {
    const GradientStop& from = stops_[i - 1];
    const GradientStop& to = stops_[i];
    if (position > to.position) continue;
    const float length = to.position - from.position;
    return length > 0 ? Mix(from.colour, to.colour, (position - from.position) / length)
                      : to.colour;
  }
  return stops_.back().colour;
}

size_t Gradient::Add(float position) { return Insert({ColourAt(position), Tenths(position)}); }

bool Gradient::Remove(size_t index) {
  if (stops_.size() <= 2) return false;
  stops_.erase(stops_.begin() + static_cast<ptrdiff_t>(index));
  return true;
}

size_t Gradient::Move(size_t index, float position) {
  const GradientStop moved{stops_[index].colour, Tenths(position)};
  stops_.erase(stops_.begin() + static_cast<ptrdiff_t>(index));
  return Insert(moved);
}

size_t Gradient::Insert(GradientStop stop) {
  const auto place = std::find_if(stops_.begin(), stops_.end(), [&stop](const GradientStop& other) {
    return other.position > stop.position;
  });
  const auto inserted = stops_.insert(place, stop);
  return static_cast<size_t>(inserted - stops_.begin());
}

}  // namespace krv::studio
