// When a frame is shown.
#pragma once

#include <cstdint>

namespace krv {

class EffectContext;

// Whole frames per second: the integer quotient of the context's frame rate, so 30000/1001 counts
// as 29. 1 where that is 0 or below, or the denominator is 0.
int64_t FramesPerSecond(EffectContext& context);

// Seconds for shaders: (frame index + offset) / frames per second.
float TimeInSeconds(int64_t frame_index, int64_t frame_offset, int64_t frames_per_second);

}  // namespace krv
