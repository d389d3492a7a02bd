// One parameter that an effect package declares.
#pragma once

#include <cstdint>
#include <string>

#include "krv/types.h"

namespace krv {

// A ParameterValue that owns its text. Immutable once made; copies are independent.
class StoredParameterValue {
 public:
  // Kind 0, value 0: what a missing key gives.
  StoredParameterValue();
  // Copies `value`, and its text up to the NUL when the kind is kKindText.
  explicit StoredParameterValue(const ParameterValue& value);

  int32_t kind() const { return value_.kind; }  // ParameterKind, or a number without a kind

  // The record as it crosses the boundary. A text is valid as long as this object.
  ParameterValue View() const;

 private:
  ParameterValue value_;  // as_text is null; View points it at text_
  std::string text_;
};

// A record of that kind whose value is all zero bits.
ParameterValue ZeroParameterValue(int32_t kind);

struct ParameterDescription {
  std::string name;  // also the uniform's name and the label that the host shows
  StoredParameterValue max_value;
  StoredParameterValue min_value;
  StoredParameterValue default_value;  // its kind says how the parameter is announced
  uint32_t hidden = 0;                 // 1: not meant for the user's eyes
};

}  // namespace krv
