// Where the pixels of a picture fall between the texels of a smaller one, along one axis.
#pragma once

#include <cstdint>
#include <vector>

namespace krv {

// Between texel `lower` and the one after it, `weight` of the way.
struct SamplingTap {
  int32_t lower;  // texels, 0 to texels - 1
  float weight;   // 0 to below 1
};

// The taps of `pixels` pixels over `texels` texels, both 1 or more, as OpenGL computes them in
// single precision for linear filters and coordinates (pixel + 0.5) / pixels. Beyond the outermost
// texel centres the outermost texel is meant: weight 0 at the lower end; at the upper end the tap's
// upper texel is one past the last, which whoever reads it makes equal to the last.
std::vector<SamplingTap> SamplingTaps(int32_t pixels, int32_t texels);

// The weight in 1/32768, rounded, but never rounded to 0 from above nor to 1: whether a texel takes
// part at all decides whether a pixel is opaque.
int16_t FixedWeight(float weight);

}  // namespace krv
