#include "keyframes/keyframe_writer.h"

#include <array>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>

#include "keyframes/gradient_stops.h"
#include "parameter_text.h"

namespace krv::tool {
namespace {

using Json = nlohmann::ordered_json;

std::string Quoted(const std::string& text) {
  return Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string StopsText(const GradientStops& stops) {
  std::string text = "[";
  for (const GradientStop& stop : stops) {
    if (text.size() > 1) text += ", ";
    text += "{\"color\": \"" + NumberText(kKindColor, stop.colour) +
            "\", \"position\": " + NumberText(kKindFloat, static_cast<double>(stop.position)) + "}";
  }
  return text + "]";
}

std::string ValueText(ParameterKind kind, const host::HostValue& value) {
  switch (kind) {
    case kKindInt:
      return std::to_string(std::get<int32_t>(value));
    case kKindFloat:
      return NumberText(kind, static_cast<double>(std::get<float>(value)));
    case kKindColor:
      return Quoted(NumberText(kind, std::get<int32_t>(value)));
    case kKindBool:
      return std::get<bool>(value) ? "true" : "false";
    default:
      break;
  }
  const auto& text = std::get<std::string>(value);
  const auto stops = ParseGradientStops(text);
  return stops ? StopsText(*stops) : Quoted(text);
}

std::string TimeText(const KeyTime& time) {
  if (time.unit == KeyTime::Unit::kFrames) {
    return "\"frame\": " + std::to_string(std::llround(time.amount));
  }
  std::array<char, 400> number{};  // the longest of a double without exponent
  const auto end = std::to_chars(number.data(), number.data() + number.size(), time.amount,
                                 std::chars_format::fixed);
  return "\"time\": " + std::string(number.data(), end.ptr);
}

const char* WayText(Way way) {
  switch (way) {
    case Way::kHold:
      return ", \"to\": \"hold\"";
    case Way::kSmooth:
      return ", \"to\": \"smooth\"";
    default:
      return "";
  }
}

std::string TrackText(const Track& track) {
  if (track.keys().size() == 1) return ValueText(track.kind(), track.keys().front().value);
  std::string text = "[";
  const char* separator = "\n";
  for (const Key& key : track.keys()) {
    text += separator + ("    {" + TimeText(key.at)) +
            ", \"value\": " + ValueText(track.kind(), key.value) + WayText(key.to_next) + "}";
    separator = ",\n";
  }
  return text + "\n  ]";
}

}  // namespace

std::string KeyframeText(const ParameterTracks& tracks) {
  std::string text = "{";
  const char* separator = "\n";
  for (const auto& [name, track] : tracks.tracks()) {
    text += separator + ("  " + Quoted(name)) + ": " + TrackText(track);
    separator = ",\n";
  }
  return text + "\n}\n";
}

}  // namespace krv::tool
