#include "keyframes/keyframe_writer.h"

#include <array>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <optional>
#include <vector>

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

std::string KeyText(ParameterKind kind, const Key& key) {
  std::string text =
      "{" + TimeText(key.at) + ", \"value\": " + ValueText(kind, key.value) + WayText(key.to_next);
  for (const Remark& remark : key.remarks) text += ", " + remark;
  return text + "}";
}

std::string TrackText(const Track& track) {
  const Key& first = track.keys().front();
  if (track.keys().size() == 1 && first.remarks.empty()) {
    return ValueText(track.kind(), first.value);
  }
  std::string text = "[";
  const char* separator = "\n";
  for (const Key& key : track.keys()) {
    text += separator + ("    " + KeyText(track.kind(), key));
    separator = ",\n";
  }
  return text + "\n  ]";
}

}  // namespace

std::string KeyframeText(const ParameterTracks& tracks) {
  std::vector<std::string> members;
  const auto add_remarks = [&](const std::optional<std::string>& before) {
    for (const FileRemark& remark : tracks.remarks()) {
      if (remark.before == before) members.push_back(remark.remark);
    }
  };
  add_remarks({});
  for (const auto& [name, track] : tracks.tracks()) {
    add_remarks(name);
    members.push_back(Quoted(name) + ": " + TrackText(track));
  }
  for (const FileRemark& remark : tracks.remarks()) {
    const bool is_last = remark.before && !tracks.tracks().contains(*remark.before);
    if (is_last) members.push_back(remark.remark);
  }
  std::string text = "{";
  const char* separator = "\n";
  for (const std::string& member : members) {
    text += separator + ("  " + member);
    separator = ",\n";
  }
  return text + "\n}\n";
}

}  // namespace krv::tool
