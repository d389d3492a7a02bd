// The values of the parameters as the user sets them: constant ones, and such as change over time.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "studio/key_sheet.h"
#include "studio/parameter_sheet.h"

namespace krv::studio {

// A parameter either has keys or a constant value. Frames are those of the clip. One thread.
class ValueSheet {
 public:
  explicit ValueSheet(const host::FrameRate& rate) : rate_(rate), keys_(rate) {}

  const ParameterSheet& constants() const { return constants_; }
  const KeySheet& keys() const { return keys_; }

  // The effect as the package announces it now. Returns the parameters whose keys had to go.
  std::vector<std::string> SetEffect(const host::EffectListing& effect);

  host::HostValue ValueAt(const host::ParameterListing& parameter, int64_t frame) const;

  // Sets the constant value, or the key of the frame where the parameter has keys.
  void Set(const host::ParameterListing& parameter, int64_t frame, host::HostValue value);
  // Constant values go back to the default, keys stay.
  void ResetAll() { constants_.ResetAll(); }

  // Removes the key of the frame, or sets one there with the value that there is. The value of a
  // last key stays, as a constant.
  void ToggleKey(const host::ParameterListing& parameter, int64_t frame);
  // The value at the frame stays, as a constant.
  void RemoveKeys(const host::ParameterListing& parameter, int64_t frame);
  void SetWay(std::string_view name, int64_t frame, tool::Way way);
  int64_t MoveKeys(std::string_view name, int64_t from, int64_t to);

  // Everything that differs from the package's defaults, constant values as tracks of one key.
  tool::ParameterTracks Tracks() const;
  // The reverse: tracks of one key become constant values, unless it has remarks. Those of the file
  // stay with the values from then on.
  void Load(const tool::ParameterTracks& tracks);

  // Another number after every change of a value.
  uint64_t revision() const { return constants_.revision() + keys_.revision(); }

 private:
  host::FrameRate rate_;
  ParameterSheet constants_;
  KeySheet keys_;
};

}  // namespace krv::studio
