#include "compositing/overlay.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace krv {
namespace {

constexpr int32_t kBlock = 16;  // texels

size_t PixelBytes(PixelType type) {
  switch (type) {
    case kPixel8:
      return 4;
    case kPixel16:
      return 8;
    case kPixelFloat:
      return 16;
  }
  return 4;
}

struct AlphaFound {
  bool any;
  bool full;
};

// Exchanges red and blue of some texels; what alpha there is among them. Written for little-endian
// machines, so that compilers make vector code of it.
static_assert(std::endian::native == std::endian::little);
AlphaFound SwapChannels(uint8_t* texels, int32_t count) {
  uint32_t all = 0;
  uint32_t full = 0;
  for (int32_t i = 0; i < count; ++i) {
    uint32_t texel = 0;
    std::memcpy(&texel, texels + 4 * ptrdiff_t{i}, sizeof(texel));
    all |= texel;
    full |= (texel >> 24) + 1;  // 256 for full alpha
    texel = (texel & 0xFF00FF00U) | ((texel >> 16) & 0xFFU) | ((texel & 0xFFU) << 16);
    std::memcpy(texels + 4 * ptrdiff_t{i}, &texel, sizeof(texel));
  }
  return {(all >> 24) != 0, full > 0xFF};
}

void CopyPixels(const std::byte* input, std::byte* output, size_t pixel_bytes, PixelSpan pixels) {
  if (input == output || pixels.begin >= pixels.end) return;
  const size_t offset = static_cast<size_t>(pixels.begin) * pixel_bytes;
  std::memcpy(output + offset, input + offset,
              static_cast<size_t>(pixels.end - pixels.begin) * pixel_bytes);
}

// By block, the pixels that have one of its texels as their lower or upper one.
std::vector<PixelSpan> BlockSpans(const std::vector<SamplingTap>& columns, int32_t texels) {
  std::vector<PixelSpan> spans(static_cast<size_t>((texels + kBlock - 1) / kBlock));
  for (size_t block = 0; block < spans.size(); ++block) {
    const int32_t first = static_cast<int32_t>(block) * kBlock;
    const auto reaches = [first](const SamplingTap& tap) { return tap.lower + 1 < first; };
    const auto within = [first](const SamplingTap& tap) { return tap.lower < first + kBlock; };
    const auto begin = std::partition_point(columns.begin(), columns.end(), reaches);
    const auto end = std::partition_point(columns.begin(), columns.end(), within);
    spans[block] = {static_cast<int32_t>(begin - columns.begin()),
                    static_cast<int32_t>(end - columns.begin())};
  }
  return spans;
}

}  // namespace

void Overlay::Resize(int32_t effect_width, int32_t effect_height, int32_t frame_width,
                     int32_t frame_height) {
  const bool new_effect = effect_width != effect_width_ || effect_height != effect_height_;
  const bool new_columns = effect_width != effect_width_ || frame_width != frame_width_;
  const bool new_rows = effect_height != effect_height_ || frame_height != frame_height_;
  if (!new_columns && !new_rows) return;
  // So that nothing that a failed allocation leaves half done is taken for whole.
  effect_width_ = effect_height_ = frame_width_ = frame_height_ = 0;
  if (new_columns) {
    columns_ = SamplingTaps(frame_width, effect_width);
    column_weights_.clear();
    for (const SamplingTap& tap : columns_) {
      column_weights_.insert(column_weights_.end(), 4, FixedWeight(tap.weight));
    }
    block_spans_ = BlockSpans(columns_, effect_width);
    spans_.reserve(block_spans_.size());
    const size_t channels = (static_cast<size_t>(effect_width) + 1) * 4;
    fixed_row_.assign(channels, 0);
    float_row_.assign(channels, 0);
  }
  if (new_rows) rows_ = SamplingTaps(frame_height, effect_height);
  if (new_effect) {
    effect_.assign(static_cast<size_t>(effect_width) * static_cast<size_t>(effect_height) * 4, 0);
    touched_.assign(block_spans_.size() * static_cast<size_t>(effect_height), 0);
    first_row_ = end_row_ = 0;
  }
  effect_width_ = effect_width;
  effect_height_ = effect_height;
  frame_width_ = frame_width;
  frame_height_ = frame_height;
}

uint8_t* Overlay::StartEffect(int32_t first_row, int32_t row_count) {
  const int32_t end_row = first_row + row_count;
  ClearRows(first_row_, std::min(end_row_, first_row));
  ClearRows(std::max(first_row_, end_row), end_row_);
  first_row_ = first_row;
  end_row_ = end_row;
  return effect_.data();
}

void Overlay::ClearRows(int32_t begin, int32_t end) {
  if (begin >= end) return;
  const auto clear = [begin, end](std::vector<uint8_t>& rows, size_t row_size) {
    std::fill(rows.begin() + static_cast<ptrdiff_t>(row_size) * begin,
              rows.begin() + static_cast<ptrdiff_t>(row_size) * end, uint8_t{0});
  };
  clear(effect_, static_cast<size_t>(effect_width_) * 4);
  clear(touched_, block_spans_.size());
}

void Overlay::PrepareEffect() {
  uint8_t* texels = effect_.data() + ptrdiff_t{first_row_} * effect_width_ * 4;
  uint8_t* touched = touched_.data() + static_cast<size_t>(first_row_) * block_spans_.size();
  has_full_alpha_ = false;
  for (int32_t row = first_row_; row < end_row_; ++row) {
    for (int32_t left = effect_width_; left > 0; left -= kBlock) {
      const int32_t count = std::min(left, kBlock);
      const AlphaFound alpha = SwapChannels(texels, count);
      *touched++ = alpha.any ? 1 : 0;
      has_full_alpha_ = has_full_alpha_ || alpha.full;
      texels += 4 * ptrdiff_t{count};
    }
  }
}

// Next to each other, spans become one; without blending nothing of the effect is left out.
void Overlay::FindSpans(const SamplingTap& row, bool blend) {
  spans_.clear();
  if (!blend) {
    spans_.push_back({0, frame_width_});
    return;
  }
  const size_t blocks = block_spans_.size();
  const uint8_t* lower = touched_.data() + static_cast<size_t>(row.lower) * blocks;
  const uint8_t* upper = row.lower + 1 < effect_height_ ? lower + blocks : lower;
  for (size_t block = 0; block < blocks; ++block) {
    if ((lower[block] | upper[block]) == 0) continue;
    const PixelSpan& pixels = block_spans_[block];
    if (!spans_.empty() && spans_.back().end >= pixels.begin) {
      spans_.back().end = pixels.end;
    } else {
      spans_.push_back(pixels);
    }
  }
}

void Overlay::SampleRow(PixelType type, const SamplingTap& row, PixelSpan texels) {
  const size_t row_bytes = static_cast<size_t>(effect_width_) * 4;
  const uint8_t* lower = effect_.data() + static_cast<size_t>(row.lower) * row_bytes;
  const uint8_t* upper = row.lower + 1 < effect_height_ ? lower + row_bytes : lower;
  const bool repeats_last = texels.end > effect_width_;
  texels.end = std::min(texels.end, effect_width_);
  if (type == kPixel8) {
    SampleFixedRow(lower, upper, row.weight, texels, fixed_row_.data());
    if (repeats_last) std::copy_n(fixed_row_.end() - 8, 4, fixed_row_.end() - 4);
  } else {
    SampleFloatRow(lower, upper, row.weight, texels, float_row_.data());
    if (repeats_last) std::copy_n(float_row_.end() - 8, 4, float_row_.end() - 4);
  }
}

void Overlay::LayOver(const OverlayFrames& frames, bool blend) {
  PrepareEffect();
  const size_t pixel_bytes = PixelBytes(frames.type);
  const auto* input = static_cast<const std::byte*>(frames.input);
  auto* output = static_cast<std::byte*>(frames.output);
  for (const SamplingTap& row : rows_) {
    const RowLayers layers{frames.type,     fixed_row_.data(),      float_row_.data(),
                           columns_.data(), column_weights_.data(), input,
                           output};
    int32_t copied = 0;
    FindSpans(row, blend);
    for (const PixelSpan& span : spans_) {
      SampleRow(frames.type, row,
                {columns_[static_cast<size_t>(span.begin)].lower,
                 columns_[static_cast<size_t>(span.end) - 1].lower + 2});
      if (blend) {
        CopyPixels(input, output, pixel_bytes, {copied, span.begin});
        BlendSpan(layers, span, has_full_alpha_);
      } else {
        WriteSpan(layers, span);
      }
      copied = span.end;
    }
    if (blend) {
      CopyPixels(input, output, pixel_bytes, {copied, frame_width_});
      input += frames.input_stride;
    }
    output += frames.output_stride;
  }
}

}  // namespace krv
