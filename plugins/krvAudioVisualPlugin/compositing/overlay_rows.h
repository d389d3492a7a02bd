// The inner loops of Overlay: one row, or a part of one, at a time. Vector instructions. No memory
// is allocated.
#pragma once

#include <cstdint>

#include "compositing/sampling_axis.h"
#include "krv/frame.h"

namespace krv {

// From `begin` up to, not including, `end`.
struct PixelSpan {
  int32_t begin;
  int32_t end;
};

// Texels of a sampled row are 1/64 of a step (fixed point) or steps (floats) of 8 bits. Either row
// holds one texel more than the effect is wide, equal to the last.
constexpr int kFixedStep = 64;
constexpr uint16_t kFixedOpaque = 255 * kFixedStep;

// The texels of the span, sampled between two rows of the effect. `weight` as in SamplingTap.
// Values are cut rather than rounded, so that only two full values give a full one.
void SampleFixedRow(const uint8_t* lower, const uint8_t* upper, float weight, PixelSpan texels,
                    uint16_t* row);
void SampleFloatRow(const uint8_t* lower, const uint8_t* upper, float weight, PixelSpan texels,
                    float* row);

// What a row of the frame is made from; pointers to the first pixel, texel or tap.
struct RowLayers {
  PixelType type;
  const uint16_t* fixed_effect;   // for 8-bit frames
  const float* float_effect;      // for the others
  const SamplingTap* columns;     // one per pixel
  const int16_t* column_weights;  // four per pixel
  const void* input;
  void* output;
};

// Blends the effect over the input, or writes the effect alone. See Overlay::LayOver. 8-bit results
// differ by less than 0.6 of a step from exact arithmetic. `has_full_alpha` may be false only where
// no texel has: that is faster.
void BlendSpan(const RowLayers& layers, PixelSpan pixels, bool has_full_alpha);
void WriteSpan(const RowLayers& layers, PixelSpan pixels);

}  // namespace krv
