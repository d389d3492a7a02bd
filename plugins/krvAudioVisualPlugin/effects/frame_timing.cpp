#include "effects/frame_timing.h"

#include <algorithm>
#include <limits>

#include "krv/effect_context.h"

namespace krv {

int64_t FramesPerSecond(EffectContext& context) {
  int64_t numerator = 0;
  int64_t denominator = 0;
  context.GetFrameRate(&numerator, &denominator);
  if (denominator == 0) return 1;
  // The one quotient that does not fit 64 bits.
  if (denominator == -1 && numerator == std::numeric_limits<int64_t>::min()) {
    return std::numeric_limits<int64_t>::max();
  }
  return std::max<int64_t>(1, numerator / denominator);
}

float TimeInSeconds(int64_t frame_index, int64_t frame_offset, int64_t frames_per_second) {
  // Unsigned addition wraps where the host's index is at the end of its range.
  const auto position = static_cast<int64_t>(static_cast<uint64_t>(frame_index) +
                                             static_cast<uint64_t>(frame_offset));
  return static_cast<float>(position) / static_cast<float>(frames_per_second);
}

}  // namespace krv
