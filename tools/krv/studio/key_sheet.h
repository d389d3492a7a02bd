// The keys that the user sets.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "keyframes/parameter_tracks.h"
#include "media/frame_rate.h"
#include "registrar.h"

namespace krv::studio {

// Tracks by parameter. A key belongs to the frame that is nearest to it: those of files may lie
// between frames, those set here are at one. One thread.
class KeySheet {
 public:
  explicit KeySheet(const host::FrameRate& rate) : rate_(rate) {}

  const tool::ParameterTracks& tracks() const { return tracks_; }
  bool empty() const { return tracks_.tracks().empty(); }
  // Null when the parameter has no keys.
  const tool::Track* Find(std::string_view name) const;

  bool HasKeyAt(std::string_view name, int64_t frame) const;
  // The frames that have keys of the parameter, or of any where `name` is empty; from early to
  // late.
  std::vector<int64_t> Frames(std::string_view name) const;
  // The way on from the latest key at the frame or before it; nothing before the first key.
  std::optional<tool::Way> WayAt(std::string_view name, int64_t frame) const;

  // The way on from the keys of a frame, of the parameter or of all where `name` is empty; nothing
  // where they differ.
  std::optional<tool::Way> WayFrom(std::string_view name, int64_t frame) const;

  // Sets the value at a frame. A new key goes on as the one before it does, and has the remarks of
  // one that it replaces.
  void Put(const host::ParameterListing& parameter, int64_t frame, host::HostValue value);
  // For the key that WayAt tells of.
  void SetWay(std::string_view name, int64_t frame, tool::Way way);
  // With its last key the track is gone.
  void RemoveAt(std::string_view name, int64_t frame);
  void Remove(std::string_view name);
  // Moves the keys of a frame, of the parameter or of all where `name` is empty, as far as there is
  // room: never to or past other keys of the same parameter. Returns the frame that they are at.
  int64_t Move(std::string_view name, int64_t from, int64_t to);

  // In place of all there are.
  void Load(tool::ParameterTracks tracks);
  // Takes away the keys of parameters that the effect does not have, or has of another kind, and
  // returns the names; the others keep to the parameters' limits.
  std::vector<std::string> SetEffect(const host::EffectListing& effect);

  // Another number after every change.
  uint64_t revision() const { return revision_; }

 private:
  int64_t FrameOf(const tool::Key& key) const;
  std::vector<tool::Key> KeysOf(std::string_view name) const;
  void Set(std::string_view name, ParameterKind kind, std::vector<tool::Key> keys);
  // The names whose keys are meant by `name`.
  std::vector<std::string> Names(std::string_view name) const;

  host::FrameRate rate_;
  tool::ParameterTracks tracks_;
  uint64_t revision_ = 0;
};

}  // namespace krv::studio
