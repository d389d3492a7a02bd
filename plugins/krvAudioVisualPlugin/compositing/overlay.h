// Lays a small 8-bit picture over a large one on the CPU, as the default blend shader does on the
// GPU.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "compositing/overlay_rows.h"
#include "compositing/sampling_axis.h"
#include "krv/frame.h"

namespace krv {

// A frame to be written and the one below it, of the same size and type, four channels a pixel in
// the order blue, green, red, alpha. Not owned. Both may be the same pixels.
struct OverlayFrames {
  PixelType type;
  const void* input;       // the first row; not read when the effect is not blended
  ptrdiff_t input_stride;  // bytes from row to row
  void* output;
  ptrdiff_t output_stride;
};

// Keeps what depends on the two sizes alone, and its scratch memory, from call to call. One thread
// at a time, any thread.
class Overlay {
 public:
  // Prepares for an effect of that size in pixels over frames of that size, each 1 or more; the
  // effect is not the larger one on either axis. Allocates only where a size differs from the last.
  void Resize(int32_t effect_width, int32_t effect_height, int32_t frame_width,
              int32_t frame_height);

  // Where LayOver finds the effect: 8 bits per channel in the order red, green, blue, alpha, rows
  // without padding, from row 0 on. The rows named here are written anew before the next call of
  // LayOver, which changes them; the others are transparent. Valid until the next call of Resize.
  uint8_t* StartEffect(int32_t first_row, int32_t row_count);

  // Writes every pixel of a frame of the size last given; what lies between the rows stays. The
  // effect is sampled linearly. With `blend`, an effect pixel below full alpha is mixed with the
  // input by that alpha and one of full alpha is added to the input, in all four channels; without,
  // the effect is written as it is. Integers are rounded and limited, floats are neither.
  void LayOver(const OverlayFrames& frames, bool blend);

 private:
  void ClearRows(int32_t begin, int32_t end);
  // Brings the effect into the order of the frames, and finds the blocks with alpha.
  void PrepareEffect();
  void FindSpans(const SamplingTap& row, bool blend);
  void SampleRow(PixelType type, const SamplingTap& row, PixelSpan texels);

  int32_t effect_width_ = 0;
  int32_t effect_height_ = 0;
  int32_t frame_width_ = 0;
  int32_t frame_height_ = 0;
  std::vector<uint8_t> effect_;
  int32_t first_row_ = 0;  // of those written
  int32_t end_row_ = 0;
  std::vector<SamplingTap> columns_;     // one per pixel of a row
  std::vector<SamplingTap> rows_;        // one per row of the frame
  std::vector<int16_t> column_weights_;  // four equal ones per pixel, 1/32768
  std::vector<PixelSpan> block_spans_;   // by block of a row of the effect: the pixels it reaches
  std::vector<uint8_t> touched_;         // by row and block of the effect: not all transparent
  bool has_full_alpha_ = false;          // somewhere in the effect
  std::vector<PixelSpan> spans_;         // pixels of the row at hand that the effect touches
  std::vector<uint16_t> fixed_row_;      // a row between two rows of the effect
  std::vector<float> float_row_;         // the same
};

}  // namespace krv
