#include "compositing/overlay_rows.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <opencv2/core/hal/intrin.hpp>

namespace krv {
namespace {

using cv::v_float32x4;
using cv::v_int16x8;
using cv::v_int32x4;
using cv::v_uint16x8;
using cv::v_uint32x4;
using cv::v_uint64x2;
using cv::v_uint8x16;

constexpr int kFixedBits = 6;
static_assert(1 << kFixedBits == kFixedStep);

// From `from` to `to`, weight / 32768 of the way, cut. Values below 2^14, so that twice a
// difference fits.
v_int16x8 Lerp(const v_int16x8& from, const v_int16x8& to, const v_int16x8& weight) {
  const v_int16x8 way = v_sub_wrap(to, from);
  return v_add_wrap(from, v_mul_hi(v_add_wrap(way, way), weight));
}

// The same for one value; exactly what the vectors do.
int32_t LerpOne(int32_t from, int32_t to, int32_t weight) {
  return from + ((2 * (to - from) * weight) >> 16);
}

// The alpha of two pixels in all of their channels.
v_int16x8 SpreadAlpha(const v_int16x8& pixels) {
  v_uint64x2 alpha = v_reinterpret_as_u64(pixels) >> 48;
  alpha = alpha | (alpha << 16);
  alpha = alpha | (alpha << 32);
  return v_reinterpret_as_s16(alpha);
}

// The effect's colour at two pixels.
v_int16x8 EffectAt(const RowLayers& layers, int32_t pixel) {
  const auto texels_of = [&layers](int32_t at) {
    return v_reinterpret_as_s16(
        cv::v_load(layers.fixed_effect + 4 * ptrdiff_t{layers.columns[at].lower}));
  };
  const v_int16x8 first = texels_of(pixel);
  const v_int16x8 second = texels_of(pixel + 1);
  return Lerp(v_combine_low(first, second), v_combine_high(first, second),
              cv::v_load(layers.column_weights + 4 * ptrdiff_t{pixel}));
}

// What becomes of the effect's pixels.
enum class Mode {
  kWrite,     // they are written
  kMix,       // they are mixed in by their alpha, which is not full
  kMixOrAdd,  // likewise, but full alpha adds
};

// The weight of an alpha below 255 is that many 32767ths.
template <Mode kMode>
v_int16x8 Blend(const v_int16x8& effect, const v_int16x8& below) {
  const v_int16x8 alpha = SpreadAlpha(effect);
  const v_int16x8 weight = v_add_wrap(v_add_wrap(alpha, alpha), alpha >> 7);
  const v_int16x8 mixed = Lerp(below, effect, weight);
  if constexpr (kMode == Mode::kMix) return mixed;
  const v_int16x8 opaque = cv::v_setall_s16(kFixedOpaque);
  const v_int16x8 added = cv::v_min(v_add_wrap(below, effect), opaque);
  return v_select(alpha == opaque, added, mixed);
}

int32_t BlendOne(int32_t effect, int32_t below, int32_t alpha) {
  if (alpha == kFixedOpaque) return std::min<int32_t>(below + effect, kFixedOpaque);
  return LerpOne(below, effect, 2 * alpha + (alpha >> 7));
}

// Rounds, with what the cuts before took away on average.
constexpr int16_t kRounding = kFixedStep / 2 + 1;

v_int16x8 Rounded(const v_int16x8& fixed) {
  return v_add_wrap(fixed, cv::v_setall_s16(kRounding)) >> kFixedBits;
}

v_int16x8 LoadFixed(const uint8_t* pixels) {
  return v_reinterpret_as_s16(cv::v_load_expand(pixels) << kFixedBits);
}

// One pixel of an 8-bit row, for the ends that do not fill a vector.
template <Mode kMode>
void FixedPixel(const RowLayers& layers, int32_t pixel) {
  const SamplingTap& tap = layers.columns[pixel];
  const uint16_t* texels = layers.fixed_effect + 4 * ptrdiff_t{tap.lower};
  const int32_t weight = layers.column_weights[4 * ptrdiff_t{pixel}];
  const auto* input = static_cast<const uint8_t*>(layers.input);
  auto* output = static_cast<uint8_t*>(layers.output);
  const int32_t alpha = LerpOne(texels[3], texels[7], weight);
  for (int channel = 0; channel < 4; ++channel) {
    const ptrdiff_t at = 4 * ptrdiff_t{pixel} + channel;
    int32_t value = LerpOne(texels[channel], texels[channel + 4], weight);
    if constexpr (kMode != Mode::kWrite) value = BlendOne(value, input[at] * kFixedStep, alpha);
    output[at] = static_cast<uint8_t>((value + kRounding) >> kFixedBits);
  }
}

template <Mode kMode>
void FixedSpan(const RowLayers& layers, PixelSpan pixels) {
  const auto* input = static_cast<const uint8_t*>(layers.input);
  auto* output = static_cast<uint8_t*>(layers.output);
  int32_t pixel = pixels.begin;
  for (; pixel + 4 <= pixels.end; pixel += 4) {
    const ptrdiff_t at = 4 * ptrdiff_t{pixel};
    v_int16x8 first = EffectAt(layers, pixel);
    v_int16x8 second = EffectAt(layers, pixel + 2);
    if constexpr (kMode != Mode::kWrite) {
      first = Blend<kMode>(first, LoadFixed(input + at));
      second = Blend<kMode>(second, LoadFixed(input + at + 8));
    }
    cv::v_store(output + at, v_pack_u(Rounded(first), Rounded(second)));
  }
  for (; pixel < pixels.end; ++pixel) FixedPixel<kMode>(layers, pixel);
}

// How the other types are read and written. Values are steps of 8 bits times kScale.
struct SixteenBits {
  using Channel = uint16_t;
  static constexpr float kScale = 257;
  static v_float32x4 Load(const uint8_t* pixel) {
    std::array<uint16_t, 4> channels;
    std::memcpy(channels.data(), pixel, sizeof(channels));
    return v_cvt_f32(v_reinterpret_as_s32(cv::v_load_expand(channels.data())));
  }
  static void Store(uint8_t* pixel, const v_float32x4& value) {
    const v_float32x4 limited = v_min(value, cv::v_setall_f32(65535.0F));
    std::array<int32_t, 4> rounded;
    cv::v_store(rounded.data(), v_round(limited));
    std::array<uint16_t, 4> channels;
    for (size_t i = 0; i < 4; ++i) channels[i] = static_cast<uint16_t>(rounded[i]);
    std::memcpy(pixel, channels.data(), sizeof(channels));
  }
};

struct Floats {
  using Channel = float;
  static constexpr float kScale = 1.0F / 255.0F;
  static v_float32x4 Load(const uint8_t* pixel) {
    std::array<float, 4> channels;
    std::memcpy(channels.data(), pixel, sizeof(channels));
    return cv::v_load(channels.data());
  }
  static void Store(uint8_t* pixel, const v_float32x4& value) {
    std::array<float, 4> channels;
    cv::v_store(channels.data(), value);
    std::memcpy(pixel, channels.data(), sizeof(channels));
  }
};

template <class Type, Mode kMode>
void FloatSpan(const RowLayers& layers, PixelSpan pixels) {
  constexpr ptrdiff_t kPixelBytes = 4 * sizeof(typename Type::Channel);
  const auto* input = static_cast<const uint8_t*>(layers.input);
  auto* output = static_cast<uint8_t*>(layers.output);
  const v_float32x4 scale = cv::v_setall_f32(Type::kScale);
  const v_float32x4 one = cv::v_setall_f32(1.0F);
  for (int32_t pixel = pixels.begin; pixel < pixels.end; ++pixel) {
    const SamplingTap& tap = layers.columns[pixel];
    const float* texels = layers.float_effect + 4 * ptrdiff_t{tap.lower};
    const v_float32x4 lower = cv::v_load(texels);
    const v_float32x4 way = cv::v_load(texels + 4) - lower;
    const v_float32x4 steps = lower + way * cv::v_setall_f32(tap.weight);
    v_float32x4 value = steps * scale;
    if constexpr (kMode != Mode::kWrite) {
      const v_float32x4 below = Type::Load(input + pixel * kPixelBytes);
      const float alpha = cv::v_broadcast_element<3>(steps).get0();
      if (alpha >= 255.0F) {
        value = value + below;
      } else {
        const v_float32x4 share = cv::v_setall_f32(alpha * (1.0F / 255.0F));
        value = below * (one - share) + value * share;
      }
    }
    Type::Store(output + pixel * kPixelBytes, value);
  }
}

template <Mode kMode>
void Span(const RowLayers& layers, PixelSpan pixels) {
  switch (layers.type) {
    case kPixel8:
      return FixedSpan<kMode>(layers, pixels);
    case kPixel16:
      return FloatSpan<SixteenBits, kMode>(layers, pixels);
    case kPixelFloat:
      return FloatSpan<Floats, kMode>(layers, pixels);
  }
}

}  // namespace

void SampleFixedRow(const uint8_t* lower, const uint8_t* upper, float weight, PixelSpan texels,
                    uint16_t* row) {
  const int16_t fixed_weight = FixedWeight(weight);
  const v_int16x8 weights = cv::v_setall_s16(fixed_weight);
  ptrdiff_t at = 4 * ptrdiff_t{texels.begin};
  const ptrdiff_t end = 4 * ptrdiff_t{texels.end};
  for (; at + 8 <= end; at += 8) {
    const v_int16x8 sampled = Lerp(LoadFixed(lower + at), LoadFixed(upper + at), weights);
    cv::v_store(row + at, v_reinterpret_as_u16(sampled));
  }
  for (; at < end; ++at) {
    row[at] = static_cast<uint16_t>(
        LerpOne(lower[at] * kFixedStep, upper[at] * kFixedStep, fixed_weight));
  }
}

void SampleFloatRow(const uint8_t* lower, const uint8_t* upper, float weight, PixelSpan texels,
                    float* row) {
  const auto load = [](const uint8_t* texel) {
    return v_cvt_f32(v_reinterpret_as_s32(cv::v_load_expand_q(texel)));
  };
  for (ptrdiff_t at = 4 * ptrdiff_t{texels.begin}; at < 4 * ptrdiff_t{texels.end}; at += 4) {
    const v_float32x4 from = load(lower + at);
    cv::v_store(row + at, from + (load(upper + at) - from) * cv::v_setall_f32(weight));
  }
}

void BlendSpan(const RowLayers& layers, PixelSpan pixels, bool has_full_alpha) {
  if (has_full_alpha) {
    Span<Mode::kMixOrAdd>(layers, pixels);
  } else {
    Span<Mode::kMix>(layers, pixels);
  }
}

void WriteSpan(const RowLayers& layers, PixelSpan pixels) { Span<Mode::kWrite>(layers, pixels); }

}  // namespace krv
