#include "effects/effect_size.h"

#include <algorithm>

namespace krv {
namespace {

int32_t ShorterSideLimit(RenderQuality quality) {
  switch (quality) {
    case kQualityLow:
      return 320;
    case kQualityHigh:
      return 720;
    default:
      return 480;
  }
}

}  // namespace

EffectSize ReducedSize(int32_t output_width, int32_t output_height, RenderQuality quality) {
  const int32_t shorter = std::min(output_width, output_height);
  const int32_t limit = ShorterSideLimit(quality);
  if (shorter <= limit) return {output_width, output_height};
  const double scale = static_cast<double>(limit) / shorter;
  return {std::max(1, static_cast<int32_t>(output_width * scale)),
          std::max(1, static_cast<int32_t>(output_height * scale))};
}

}  // namespace krv
