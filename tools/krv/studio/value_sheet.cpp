#include "studio/value_sheet.h"

#include <utility>

namespace krv::studio {

using host::HostValue;
using host::ParameterListing;

std::vector<std::string> ValueSheet::SetEffect(const host::EffectListing& effect) {
  constants_.SetEffect(effect);
  return keys_.SetEffect(effect);
}

HostValue ValueSheet::ValueAt(const ParameterListing& parameter, int64_t frame) const {
  const tool::Track* track = keys_.Find(parameter.name);
  return track == nullptr ? constants_.Value(parameter)
                          : track->ValueAt(static_cast<double>(frame));
}

void ValueSheet::Set(const ParameterListing& parameter, int64_t frame, HostValue value) {
  if (keys_.Find(parameter.name) == nullptr) {
    constants_.Set(parameter, std::move(value));
  } else {
    keys_.Put(parameter, frame, std::move(value));
  }
}

void ValueSheet::ToggleKey(const ParameterListing& parameter, int64_t frame) {
  HostValue value = ValueAt(parameter, frame);
  if (!keys_.HasKeyAt(parameter.name, frame)) {
    constants_.Reset(parameter.name);
    keys_.Put(parameter, frame, std::move(value));
    return;
  }
  keys_.RemoveAt(parameter.name, frame);
  if (keys_.Find(parameter.name) == nullptr) constants_.Set(parameter, std::move(value));
}

void ValueSheet::RemoveKeys(const ParameterListing& parameter, int64_t frame) {
  HostValue value = ValueAt(parameter, frame);
  keys_.Remove(parameter.name);
  constants_.Set(parameter, std::move(value));
}

void ValueSheet::SetWay(std::string_view name, int64_t frame, tool::Way way) {
  keys_.SetWay(name, frame, way);
}

int64_t ValueSheet::MoveKeys(std::string_view name, int64_t from, int64_t to) {
  return keys_.Move(name, from, to);
}

tool::ParameterTracks ValueSheet::Tracks() const {
  tool::ParameterTracks tracks = keys_.tracks();
  for (const auto& [name, value] : constants_.changed()) {
    const ParameterListing* parameter = constants_.effect().Find(name);
    tracks.Set(name, tool::Track(parameter->kind, {{{}, value, tool::Way::kLinear}}, rate_));
  }
  return tracks;
}

void ValueSheet::Load(const tool::ParameterTracks& tracks) {
  constants_.ResetAll();
  tool::ParameterTracks moving = tracks;
  for (const auto& [name, track] : tracks.tracks()) {
    const tool::Key& first = track.keys().front();
    if (track.keys().size() > 1 || !first.remarks.empty()) continue;
    constants_.Set(*constants_.effect().Find(name), first.value);
    moving.Remove(name);
  }
  keys_.Load(std::move(moving));
}

}  // namespace krv::studio
