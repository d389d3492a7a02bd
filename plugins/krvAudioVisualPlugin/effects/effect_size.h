// The size at which an effect's passes are drawn.
#pragma once

#include <cstdint>

#include "description/effect_description.h"

namespace krv {

struct EffectSize {
  int32_t width;   // pixels
  int32_t height;  // pixels
  friend bool operator==(const EffectSize&, const EffectSize&) = default;
};

// The output's size, scaled down so that the shorter side is at most 320, 480 or 720 pixels for
// low, medium and high quality. Both sides are cut to whole pixels, and are at least 1.
EffectSize ReducedSize(int32_t output_width, int32_t output_height, RenderQuality quality);

}  // namespace krv
