// The values of one parameter over time.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "keyframes/gradient_stops.h"
#include "keyframes/mixing.h"
#include "keyframes/remarks.h"
#include "media/frame_rate.h"
#include "parameter_values.h"

namespace krv::tool {

// A point in time, counted from the clip's first frame, in the unit in which the user gave it.
struct KeyTime {
  enum class Unit { kSeconds, kFrames };

  double amount = 0;
  Unit unit = Unit::kSeconds;

  // As a frame's index. Within a millionth of a frame of a whole one it is that one: 0.1 s at 30
  // frames per second is frame 3, not a little after it.
  double InFrames(const host::FrameRate& rate) const;

  bool operator==(const KeyTime&) const = default;
};

struct Key {
  KeyTime at;
  host::HostValue value;
  Way to_next = Way::kLinear;
  std::vector<Remark> remarks = {};

  bool operator==(const Key&) const = default;
};

// The first key that is earlier than the one in front of it, or nothing.
std::optional<size_t> FirstKeyOutOfOrder(const std::vector<Key>& keys, const host::FrameRate& rate);

// Immutable, for any thread.
class Track {
 public:
  // `keys` holds at least one, from early to late, with values of the parameter's kind. Throws
  // std::invalid_argument otherwise.
  Track(ParameterKind kind, std::vector<Key> keys, const host::FrameRate& rate);

  // The value at a frame's index, which may lie between frames. Before the first key and after the
  // last their values hold. Of keys at the same time the first ends the way to it, and the last
  // counts from that time on.
  //   int, colour  rounded, a colour channel by channel
  //   text         mixed as gradients where both keys' texts are gradients, else held
  //   bool         held
  host::HostValue ValueAt(double frame) const;

  ParameterKind kind() const { return kind_; }
  const std::vector<Key>& keys() const { return keys_; }

 private:
  host::HostValue Mix(size_t from, double share) const;

  ParameterKind kind_;
  std::vector<Key> keys_;
  std::vector<double> frames_;                           // of each key
  std::vector<std::optional<GradientStops>> gradients_;  // of each key; texts only
};

}  // namespace krv::tool
