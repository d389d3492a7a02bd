#include "compositing/sampling_axis.h"

#include <algorithm>
#include <cmath>

namespace krv {

std::vector<SamplingTap> SamplingTaps(int32_t pixels, int32_t texels) {
  std::vector<SamplingTap> taps(static_cast<size_t>(pixels));
  for (int32_t pixel = 0; pixel < pixels; ++pixel) {
    const float coordinate = (static_cast<float>(pixel) + 0.5F) / static_cast<float>(pixels);
    const float place = coordinate * static_cast<float>(texels) - 0.5F;
    const float lower = std::floor(place);
    SamplingTap& tap = taps[static_cast<size_t>(pixel)];
    tap.lower = std::clamp(static_cast<int32_t>(lower), 0, texels - 1);
    tap.weight = lower < 0.0F ? 0.0F : place - lower;
  }
  return taps;
}

int16_t FixedWeight(float weight) {
  if (weight <= 0.0F) return 0;
  return static_cast<int16_t>(std::clamp(std::lround(weight * 32768.0F), 1L, 32767L));
}

}  // namespace krv
