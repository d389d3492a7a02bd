// What the shaders hear, and what a frame costs.
#pragma once

#include "studio/ui.h"

namespace krv::studio {

inline constexpr float kMeterHeight = 132;  // units

// Fills the space there is.
void DrawMeters(const Ui& ui);

}  // namespace krv::studio
