#include "keyframes/gradient_stops.h"

#include <algorithm>

#include "keyframes/mixing.h"
#include "parameter_text.h"
#include "text_pieces.h"

namespace krv::tool {
namespace {

std::optional<GradientStop> ParseStop(std::string_view text) {
  const auto colour = host::ParseNumber<uint32_t>(host::TakeUntil(',', &text));
  const auto position = host::ParseNumber<float>(text);
  if (!colour || *colour > 0xFFFFFF) return std::nullopt;
  if (!position || !(*position >= 0 && *position <= 100)) return std::nullopt;
  return GradientStop{*colour, *position};
}

std::optional<GradientStops> ParseStops(std::string_view text) {
  const auto count = host::ParseNumber<size_t>(host::TakeUntil(',', &text));
  if (!count || *count < kFewestStops || *count > kMostStops) return std::nullopt;
  GradientStops stops;
  while (!text.empty()) {
    const auto stop = ParseStop(host::TakeUntil(';', &text));
    if (!stop) return std::nullopt;
    stops.push_back(*stop);
  }
  if (stops.size() != *count) return std::nullopt;
  return stops;
}

bool IsBefore(const GradientStop& one, const GradientStop& other) {
  return one.position < other.position;
}

// The stops at one position, one after the other in a list.
struct Group {
  GradientStops::const_iterator begin;
  GradientStops::const_iterator end;
};

Group GroupAt(const GradientStops& stops, float position) {
  const auto [begin, end] =
      std::equal_range(stops.begin(), stops.end(), GradientStop{0, position}, IsBefore);
  return {begin, end};
}

// Puts `count` stops at the position, which has at most as many in `stops`, behind `result`.
void AppendStops(const GradientStops& stops, float position, std::ptrdiff_t count,
                 GradientStops* result) {
  const Group group = GroupAt(stops, position);
  const std::ptrdiff_t there = group.end - group.begin;
  for (std::ptrdiff_t i = 0; i < count; ++i) {
    const uint32_t colour =
        there == 0 ? ColourAt(stops, position) : group.begin[std::min(i, there - 1)].colour;
    result->push_back({colour, position});
  }
}

// Gives both gradients stops at the same positions, without changing the look of either.
void AlignStops(GradientStops* one, GradientStops* other) {
  std::vector<float> positions;
  for (const GradientStops* stops : {one, other}) {
    for (const GradientStop& stop : *stops) positions.push_back(stop.position);
  }
  std::sort(positions.begin(), positions.end());
  positions.erase(std::unique(positions.begin(), positions.end()), positions.end());
  GradientStops new_one;
  GradientStops new_other;
  for (const float position : positions) {
    const Group group_one = GroupAt(*one, position);
    const Group group_other = GroupAt(*other, position);
    const auto count =
        std::max(group_one.end - group_one.begin, group_other.end - group_other.begin);
    AppendStops(*one, position, count, &new_one);
    AppendStops(*other, position, count, &new_other);
  }
  *one = std::move(new_one);
  *other = std::move(new_other);
}

}  // namespace

std::optional<GradientStops> ParseGradientStops(std::string_view text) {
  auto stops = ParseStops(text);
  if (stops && !std::is_sorted(stops->begin(), stops->end(), IsBefore)) return std::nullopt;
  return stops;
}

std::optional<GradientStops> ParseUnsortedStops(std::string_view text) {
  auto stops = ParseStops(text);
  if (stops) std::stable_sort(stops->begin(), stops->end(), IsBefore);
  return stops;
}

uint32_t ColourAt(const GradientStops& stops, float position) {
  const auto next =
      std::lower_bound(stops.begin(), stops.end(), GradientStop{0, position}, IsBefore);
  if (next == stops.begin() || (next != stops.end() && next->position == position)) {
    return next->colour;
  }
  if (next == stops.end()) return stops.back().colour;
  const GradientStop& before = *std::prev(next);
  const double part = static_cast<double>(position - before.position) /
                      static_cast<double>(next->position - before.position);
  return MixColours(before.colour, next->colour, part);
}

std::string GradientText(const GradientStops& stops) {
  std::string text = std::to_string(stops.size());
  char separator = ',';
  for (const GradientStop& stop : stops) {
    text += separator + std::to_string(stop.colour) + ',' +
            NumberText(kKindFloat, static_cast<double>(stop.position));
    separator = ';';
  }
  return text;
}

GradientStops MixGradients(const GradientStops& from, const GradientStops& to, double share) {
  GradientStops start = from;
  GradientStops end = to;
  if (start.size() != end.size()) AlignStops(&start, &end);
  for (size_t i = 0; i < start.size(); ++i) {
    start[i].colour = MixColours(start[i].colour, end[i].colour, share);
    start[i].position = static_cast<float>(MixNumbers(start[i].position, end[i].position, share));
  }
  return start;
}

}  // namespace krv::tool
