#include "effects/spectrum_levels.h"

#include <algorithm>
#include <cmath>

#include "effects/draw_uniforms.h"

namespace krv {
namespace {

float Smoothstep(float from, float to, float x) {
  const float t = std::clamp((x - from) / (to - from), 0.0f, 1.0f);
  return t * t * (3.0f - 2.0f * t);
}

// A bump of height h over c - w to c + w.
float CubicPulse(float c, float w, float h, float x) {
  float d = std::abs(x - c);
  if (d >= w) return 0;
  d /= w;
  return (1.0f - d * d * (3.0f - 2.0f * d)) * h;
}

// Values below are taken for silence.
float Eased(float value, float gain) {
  return value < 0.05f ? 0.0f : Smoothstep(0, 1, value * gain);
}

}  // namespace

SpectrumLevels::SpectrumLevels(const cv::Mat& spectrum, DrawUniforms& uniforms)
    : spectrum_(spectrum),
      intensity_(uniforms.Float("intensity")),
      level_(uniforms.Float("audio_left_db")),
      lowest_(uniforms.Float("audio_db_min")),
      highest_(uniforms.Float("audio_db_max")),
      from_(uniforms.Float("audio_frequency_min")),
      to_(uniforms.Float("audio_frequency_max")),
      mirrored_(uniforms.Bool("audio_mirror")),
      averaged_(uniforms.Bool("audio_averaging")),
      flat_gain_(Loudness() * Smoothstep(0, 1, intensity_) *
                 (1.0f + Smoothstep(1, 3, intensity_) * 0.5f)),
      halo_gain_(Loudness() * intensity_) {}

// Further out, single precision is too coarse for any two renderers to agree.
bool SpectrumLevels::sound() const {
  constexpr float kFarthest = 100;
  return std::abs(from_) <= kFarthest && std::abs(to_) <= kFarthest;
}

float SpectrumLevels::Loudness() const {
  if (lowest_ == highest_) return level_ > lowest_ ? 1.0f : 0.0f;
  return Smoothstep(lowest_, highest_, level_);
}

float SpectrumLevels::Place(float u) const {
  if (mirrored_) u = 1.0f - std::abs(u - 0.5f) * 2.0f;
  return (to_ - from_) * u + from_;
}

// Linear between the centres of texels, mirrored beyond the ends.
float SpectrumLevels::Sample(float u) const {
  const auto width = static_cast<float>(spectrum_.cols);
  const float turned = std::abs(u - 2.0f * std::floor(u * 0.5f + 0.5f));
  const float place = turned * width - 0.5f;
  const float before = std::floor(place);
  const auto texel = [this](float index) {
    const int column = std::clamp(static_cast<int>(index), 0, spectrum_.cols - 1);
    return static_cast<float>(spectrum_.at<cv::Vec4b>(0, column)[0]) / 255.0f;
  };
  const float level = texel(before);
  return level + (texel(before + 1.0f) - level) * (place - before);
}

float SpectrumLevels::Flat(float u) const {
  u = Place(u);
  if (!averaged_) return Eased(Sample(u), flat_gain_);
  // The two samples around u, eased into each other.
  constexpr float kStep = 0.2f;
  const float at = kStep * std::floor(u / kStep);
  const float next = at + kStep;
  const float value =
      CubicPulse(at, 0.18f, Sample(at), u) + CubicPulse(next, 0.18f, Sample(next), u);
  return Eased(value, flat_gain_);
}

// Seven samples of the spectrum, eased into each other; the last one is eased into the first.
float SpectrumLevels::Halo(float u) const {
  u = Place(u);
  constexpr float kWidth = 0.8f / 7.0f;
  const float left = std::floor(u * 7.0f) / 7.0f;
  const float right = left + 1.0f / 7.0f;
  const float a = Sample(left);
  const float b = Sample(right < 0.9f ? right : 0.0f);
  const float value =
      CubicPulse(left, kWidth, a * a * a, u) + CubicPulse(right, kWidth, b * b * b, u);
  return Eased(value, halo_gain_);
}

}  // namespace krv
