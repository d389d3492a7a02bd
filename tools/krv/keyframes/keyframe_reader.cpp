#include "keyframes/keyframe_reader.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "check/description_document.h"
#include "gradient_text.h"
#include "json_places.h"
#include "keyframes/gradient_stops.h"
#include "keyframes/remarks.h"
#include "nearest_name.h"
#include "parameter_values.h"

namespace krv::tool {
namespace {

using host::HostValue;
using host::ParameterListing;
using Json = nlohmann::ordered_json;
using Pointer = Json::json_pointer;

constexpr double kLatest = 1e9;  // seconds or frames

// A value as the file has it, at most a line's part of it.
std::string Shown(const Json& value) {
  constexpr size_t kMost = 40;
  const std::string text = value.dump(-1, ' ', true, Json::error_handler_t::replace);
  return text.size() <= kMost ? text : text.substr(0, kMost - 3) + "...";
}

std::optional<int32_t> WholeNumber(const Json& value, double least, double most) {
  if (!value.is_number()) return std::nullopt;
  const auto number = value.get<double>();
  if (number != std::floor(number) || number < least || number > most) return std::nullopt;
  return static_cast<int32_t>(number);
}

std::optional<int32_t> Colour(const Json& value) {
  if (!value.is_string()) return WholeNumber(value, 0, 0xFFFFFF);
  const auto& text = value.get_ref<const std::string&>();
  return text.starts_with('#') ? host::ParseColour(text) : std::nullopt;
}

std::string NoColour(const Json& value) {
  return "give a colour as \"#RRGGBB\" or a number, not " + Shown(value);
}

std::string NoGradient(const Json& value) {
  return R"(give a gradient as a list of stops, or as a text like "2,16711680,0;255,100", not )" +
         Shown(value);
}

class Reader {
 public:
  Reader(const DescriptionDocument& document, const host::FrameRate& rate, Findings* findings)
      : document_(document),
        places_(document.text()),
        members_(places_.MembersOf(places_.Whole())),
        rate_(rate),
        findings_(findings) {}

  ParameterTracks Read(const host::EffectListing& effect) {
    ParameterTracks tracks;
    if (!document_.json().is_object()) {
      Refuse(Pointer(), "the file is an object of parameters, not " + TypeName(document_.json()));
      return tracks;
    }
    for (const auto& [name, value] : document_.json().items()) {
      if (IsRemark(name)) continue;
      const ParameterListing* parameter = effect.Find(name);
      if (parameter == nullptr) {
        Refuse(Pointer() / name, host::UnknownParameter(effect, name));
        continue;
      }
      parameter_ = parameter;
      if (auto track = ReadTrack(value, Pointer() / name)) tracks.Set(name, std::move(*track));
    }
    tracks.SetRemarks(FileRemarksAmong(members_, places_));
    return tracks;
  }

 private:
  void Refuse(const Pointer& place, std::string message) {
    findings_->push_back(document_.At(place.to_string(), Severity::kError, std::move(message)));
  }

  // Refuses the keys of an object that are not among `known`; `owner` has them.
  void RefuseUnknownKeys(const Json& object, const Pointer& place, const char* owner,
                         const std::vector<std::string>& known) {
    for (const auto& [key, value] : object.items()) {
      if (IsRemark(key) || std::find(known.begin(), known.end(), key) != known.end()) {
        continue;
      }
      const auto nearest = host::NearestName(key, known);
      Refuse(place / key, std::string(owner) + " has nothing of this name" +
                              (nearest ? "; did you mean \"" + *nearest + "\"?" : ""));
    }
  }

  // A list is one of keys unless it begins with a gradient's stop.
  static bool IsListOfKeys(const Json& value) {
    return value.is_array() &&
           (value.empty() || !value.front().is_object() || !value.front().contains("color"));
  }

  std::optional<Track> ReadTrack(const Json& value, const Pointer& place) {
    std::vector<Key> keys;
    if (!IsListOfKeys(value)) {
      auto constant = ReadValue(value, place);
      if (!constant) return std::nullopt;
      keys.push_back({{}, std::move(*constant)});
      return Track(parameter_->kind, std::move(keys), rate_);
    }
    if (value.empty()) Refuse(place, "has no keys; give one at least, or a value");
    for (size_t i = 0; i < value.size(); ++i) {
      if (auto key = ReadKey(value[i], place / i)) keys.push_back(std::move(*key));
    }
    if (keys.empty() || keys.size() < value.size()) return std::nullopt;
    if (const auto late = FirstKeyOutOfOrder(keys, rate_)) {
      Refuse(place / *late,
             "is earlier than the key in front of it; put the keys in order of time");
      return std::nullopt;
    }
    TakeRemarks(value, &keys);
    return Track(parameter_->kind, std::move(keys), rate_);
  }

  // Of the parameter's list of keys, for each of `keys` the remarks in it.
  void TakeRemarks(const Json& list, std::vector<Key>* keys) const {
    const bool has_some = std::any_of(list.begin(), list.end(), [](const Json& key) {
      const auto names = key.items();
      return std::any_of(names.begin(), names.end(),
                         [](const auto& member) { return IsRemark(member.key()); });
    });
    if (!has_some) return;
    const auto member =
        std::find_if(members_.rbegin(), members_.rend(),
                     [this](const auto& candidate) { return candidate.name == parameter_->name; });
    const auto elements = places_.Elements(member->value);
    for (size_t i = 0; i < elements.size(); ++i) {
      (*keys)[i].remarks = RemarksAmong(places_.MembersOf(elements[i]), places_);
    }
  }

  std::optional<Key> ReadKey(const Json& value, const Pointer& place) {
    if (!value.is_object()) {
      Refuse(place,
             R"(a key is an object with "time" or "frame", and "value", not )" + TypeName(value));
      return std::nullopt;
    }
    const size_t before = findings_->size();
    RefuseUnknownKeys(value, place, "a key", {"time", "frame", "value", "to"});
    const auto at = ReadTime(value, place);
    std::optional<HostValue> read;
    if (value.contains("value")) {
      read = ReadValue(value["value"], place / "value");
    } else {
      Refuse(place, "the key has no \"value\"");
    }
    const auto way = ReadWay(value, place);
    if (findings_->size() > before) return std::nullopt;
    return Key{*at, std::move(*read), *way};
  }

  std::optional<KeyTime> ReadTime(const Json& key, const Pointer& place) {
    const bool in_frames = key.contains("frame");
    if (in_frames == key.contains("time")) {
      Refuse(place, R"(a key has either "time", in seconds, or "frame", counted from 0)");
      return std::nullopt;
    }
    const char* name = in_frames ? "frame" : "time";
    const Json& amount = key[name];
    const bool fits = amount.is_number() && amount.get<double>() >= 0 &&
                      amount.get<double>() <= kLatest &&
                      (!in_frames || WholeNumber(amount, 0, kLatest));
    if (!fits) {
      Refuse(place / name, std::string("give ") +
                               (in_frames ? "a frame's number, whole and counted from 0"
                                          : "seconds from the clip's start, 0 or more") +
                               ", not " + Shown(amount));
      return std::nullopt;
    }
    return KeyTime{amount.get<double>(),
                   in_frames ? KeyTime::Unit::kFrames : KeyTime::Unit::kSeconds};
  }

  std::optional<Way> ReadWay(const Json& key, const Pointer& place) {
    if (!key.contains("to") || key["to"] == "linear") return Way::kLinear;
    if (key["to"] == "hold") return Way::kHold;
    if (key["to"] == "smooth") return Way::kSmooth;
    Refuse(place / "to", R"(give "linear", "hold" or "smooth", not )" + Shown(key["to"]));
    return std::nullopt;
  }

  std::optional<HostValue> ReadValue(const Json& value, const Pointer& place) {
    if (parameter_->kind == kKindText && value.is_array()) return ReadStops(value, place);
    auto read = ValueOfKind(value);
    if (!read) {
      Refuse(place, parameter_->kind == kKindColor ? NoColour(value)
                                                   : host::WrongKind(*parameter_, Shown(value)));
      return std::nullopt;
    }
    if (const auto beyond = host::BeyondLimits(*parameter_, *read, Shown(value))) {
      Refuse(place, *beyond);
      return std::nullopt;
    }
    const auto* text = std::get_if<std::string>(&*read);
    if (text != nullptr && !host::IsOfUse(*parameter_, *text)) {
      Refuse(place, NoGradient(value));
      return std::nullopt;
    }
    return read;
  }

  std::optional<HostValue> ValueOfKind(const Json& value) const {
    switch (parameter_->kind) {
      case kKindInt:
        return WholeNumber(value, std::numeric_limits<int32_t>::min(),
                           std::numeric_limits<int32_t>::max());
      case kKindFloat:
        if (!value.is_number() ||
            std::abs(value.get<double>()) > std::numeric_limits<float>::max()) {
          return std::nullopt;
        }
        return value.get<float>();
      case kKindColor:
        return Colour(value);
      case kKindBool:
        if (!value.is_boolean()) return std::nullopt;
        return value.get<bool>();
      default:
        if (!value.is_string()) return std::nullopt;
        return value.get<std::string>();
    }
  }

  // A gradient's stops, as the text that the plug-in reads.
  std::optional<HostValue> ReadStops(const Json& list, const Pointer& place) {
    const size_t before = findings_->size();
    if (list.size() < kFewestStops || list.size() > kMostStops) {
      Refuse(place, "a gradient has " + std::to_string(kFewestStops) + " to " +
                        std::to_string(kMostStops) + " stops, not " + std::to_string(list.size()));
    }
    GradientStops stops;
    for (size_t i = 0; i < list.size() && i < kMostStops; ++i) {
      const auto stop = ReadStop(list[i], place / i);
      if (stop && !stops.empty() && stop->position < stops.back().position) {
        Refuse(place / i / "position",
               "is less than that of the stop in front of it; put the stops in order");
      }
      if (stop) stops.push_back(*stop);
    }
    if (findings_->size() > before) return std::nullopt;
    return GradientText(stops);
  }

  std::optional<GradientStop> ReadStop(const Json& value, const Pointer& place) {
    if (!value.is_object()) {
      Refuse(place, R"(a stop is an object with "color" and "position", not )" + TypeName(value));
      return std::nullopt;
    }
    const size_t before = findings_->size();
    RefuseUnknownKeys(value, place, "a stop", {"color", "position"});
    for (const char* key : {"color", "position"}) {
      if (!value.contains(key)) Refuse(place, "the stop has no \"" + std::string(key) + "\"");
    }
    if (findings_->size() > before) return std::nullopt;
    const auto colour = Colour(value["color"]);
    if (!colour) Refuse(place / "color", NoColour(value["color"]));
    const Json& position = value["position"];
    if (!position.is_number() || position.get<double>() < 0 || position.get<double>() > 100) {
      Refuse(place / "position", "give a percentage from 0 to 100, not " + Shown(position));
    }
    if (findings_->size() > before) return std::nullopt;
    return GradientStop{static_cast<uint32_t>(*colour), position.get<float>()};
  }

  const DescriptionDocument& document_;
  const JsonPlaces places_;
  const JsonPlaces::Members members_;
  const host::FrameRate rate_;
  Findings* findings_;
  const ParameterListing* parameter_ = nullptr;
};

}  // namespace

std::optional<ParameterTracks> ReadKeyframes(const std::filesystem::path& file,
                                             const host::EffectListing& effect,
                                             const host::FrameRate& rate, Findings* findings) {
  const size_t before = findings->size();
  const auto document = DescriptionDocument::Read(file, findings);
  if (!document) return std::nullopt;
  ParameterTracks tracks = Reader(*document, rate, findings).Read(effect);
  if (findings->size() > before) return std::nullopt;
  return tracks;
}

}  // namespace krv::tool
