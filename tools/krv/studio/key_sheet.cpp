#include "studio/key_sheet.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <utility>

#include "studio/parameter_sheet.h"

namespace krv::studio {
namespace {

tool::KeyTime AtFrame(int64_t frame) {
  return {static_cast<double>(frame), tool::KeyTime::Unit::kFrames};
}

}  // namespace

const tool::Track* KeySheet::Find(std::string_view name) const {
  const auto found = tracks_.tracks().find(name);
  return found == tracks_.tracks().end() ? nullptr : &found->second;
}

int64_t KeySheet::FrameOf(const tool::Key& key) const {
  return std::llround(key.at.InFrames(rate_));
}

std::vector<tool::Key> KeySheet::KeysOf(std::string_view name) const {
  const tool::Track* track = Find(name);
  return track == nullptr ? std::vector<tool::Key>() : track->keys();
}

std::vector<std::string> KeySheet::Names(std::string_view name) const {
  if (!name.empty()) return {std::string(name)};
  std::vector<std::string> names;
  for (const auto& [each, track] : tracks_.tracks()) names.push_back(each);
  return names;
}

void KeySheet::Set(std::string_view name, ParameterKind kind, std::vector<tool::Key> keys) {
  ++revision_;
  if (keys.empty()) return tracks_.Remove(name);
  tracks_.Set(std::string(name), tool::Track(kind, std::move(keys), rate_));
}

bool KeySheet::HasKeyAt(std::string_view name, int64_t frame) const {
  const tool::Track* track = Find(name);
  return track != nullptr &&
         std::any_of(track->keys().begin(), track->keys().end(),
                     [&](const tool::Key& key) { return FrameOf(key) == frame; });
}

std::vector<int64_t> KeySheet::Frames(std::string_view name) const {
  std::set<int64_t> frames;
  for (const std::string& each : Names(name)) {
    for (const tool::Key& key : KeysOf(each)) frames.insert(FrameOf(key));
  }
  return {frames.begin(), frames.end()};
}

std::optional<tool::Way> KeySheet::WayAt(std::string_view name, int64_t frame) const {
  std::optional<tool::Way> way;
  for (const tool::Key& key : KeysOf(name)) {
    if (FrameOf(key) <= frame) way = key.to_next;
  }
  return way;
}

std::optional<tool::Way> KeySheet::WayFrom(std::string_view name, int64_t frame) const {
  std::optional<tool::Way> way;
  for (const std::string& each : Names(name)) {
    if (!HasKeyAt(each, frame)) continue;
    const auto here = WayAt(each, frame);
    if (way && way != here) return std::nullopt;
    way = here;
  }
  return way;
}

void KeySheet::Put(const host::ParameterListing& parameter, int64_t frame, host::HostValue value) {
  std::vector<tool::Key> keys = KeysOf(parameter.name);
  value = Limited(parameter, std::move(value));
  const tool::Way before = WayAt(parameter.name, frame).value_or(tool::Way::kLinear);
  // Of keys at exactly this frame the last counts from it on. The others end the way to it.
  const auto exact = std::find_if(keys.rbegin(), keys.rend(), [&](const tool::Key& key) {
    return key.at.InFrames(rate_) == static_cast<double>(frame);
  });
  if (exact != keys.rend()) {
    exact->value = std::move(value);
  } else {
    tool::Key put{AtFrame(frame), std::move(value), before};
    for (const tool::Key& key : keys) {
      if (FrameOf(key) == frame && !key.remarks.empty()) put.remarks = key.remarks;
    }
    std::erase_if(keys, [&](const tool::Key& key) { return FrameOf(key) == frame; });
    const auto next = std::find_if(keys.begin(), keys.end(),
                                   [&](const tool::Key& key) { return FrameOf(key) > frame; });
    keys.insert(next, std::move(put));
  }
  Set(parameter.name, parameter.kind, std::move(keys));
}

void KeySheet::SetWay(std::string_view name, int64_t frame, tool::Way way) {
  const tool::Track* track = Find(name);
  if (track == nullptr) return;
  std::vector<tool::Key> keys = track->keys();
  const auto key = std::find_if(keys.rbegin(), keys.rend(),
                                [&](const tool::Key& each) { return FrameOf(each) <= frame; });
  if (key == keys.rend()) return;
  key->to_next = way;
  Set(name, track->kind(), std::move(keys));
}

void KeySheet::RemoveAt(std::string_view name, int64_t frame) {
  const tool::Track* track = Find(name);
  if (track == nullptr) return;
  std::vector<tool::Key> keys = track->keys();
  std::erase_if(keys, [&](const tool::Key& key) { return FrameOf(key) == frame; });
  Set(name, track->kind(), std::move(keys));
}

void KeySheet::Remove(std::string_view name) {
  tracks_.Remove(name);
  ++revision_;
}

int64_t KeySheet::Move(std::string_view name, int64_t from, int64_t to) {
  int64_t least = 0;
  int64_t most = std::numeric_limits<int64_t>::max();
  std::vector<std::string> moved;
  for (const std::string& each : Names(name)) {
    if (!HasKeyAt(each, from)) continue;
    moved.push_back(each);
    for (const int64_t frame : Frames(each)) {
      if (frame < from) least = std::max(least, frame + 1);
      if (frame > from) most = std::min(most, frame - 1);
    }
  }
  to = std::clamp(to, least, most);
  if (moved.empty() || to == from) return from;
  for (const std::string& each : moved) {
    const tool::Track* track = Find(each);
    std::vector<tool::Key> keys = track->keys();
    for (tool::Key& key : keys) {
      if (FrameOf(key) == from) key.at = AtFrame(to);
    }
    Set(each, track->kind(), std::move(keys));
  }
  return to;
}

void KeySheet::Load(tool::ParameterTracks tracks) {
  tracks_ = std::move(tracks);
  ++revision_;
}

std::vector<std::string> KeySheet::SetEffect(const host::EffectListing& effect) {
  std::vector<std::string> gone;
  for (const std::string& name : Names({})) {
    const tool::Track* track = Find(name);
    const host::ParameterListing* parameter = effect.Find(name);
    if (parameter == nullptr || parameter->kind != track->kind()) {
      gone.push_back(name);
      Remove(name);
      continue;
    }
    std::vector<tool::Key> keys = track->keys();
    for (tool::Key& key : keys) key.value = Limited(*parameter, std::move(key.value));
    if (keys != track->keys()) Set(name, parameter->kind, std::move(keys));
  }
  return gone;
}

}  // namespace krv::studio
