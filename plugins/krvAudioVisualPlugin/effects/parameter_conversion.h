// Values of parameters, from the host to uniforms.
#pragma once

#include <cstdint>

#include "krv/types.h"

namespace krv {

struct ColorChannels {
  float red;  // 0 to 1
  float green;
  float blue;
};

// Splits a packed 0xRRGGBB.
ColorChannels SplitColor(int32_t color);

// The value as a record of the declared kind: integers, floats, doubles and booleans convert into
// each other, numbers into integers cut toward zero and limited to the range; a colour is an
// integer. `declared` itself where the kinds do not convert. A declared kind of kKindNone takes the
// value as it is.
ParameterValue ConvertToKind(const ParameterValue& declared, const ParameterValue& value);

// Records of the two commonest kinds.
ParameterValue IntValue(int32_t value);
ParameterValue FloatValue(float value);

}  // namespace krv
