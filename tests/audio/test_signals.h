// Audio blocks that tests analyse.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <numbers>
#include <random>
#include <vector>

namespace krv::test {

// Interleaved samples of `frames` x `channels`, each from its frame and channel in full scale
// (-1 to 1).
inline std::vector<int16_t> MakeBlock(int frames, int channels,
                                      const std::function<double(int, int)>& value) {
  std::vector<int16_t> samples;
  for (int frame = 0; frame < frames; ++frame) {
    for (int channel = 0; channel < channels; ++channel) {
      samples.push_back(static_cast<int16_t>(std::lround(value(frame, channel) * 32767.0)));
    }
  }
  return samples;
}

// A sine whose frequency is the centre of the transform's bin `bin`.
inline double SineAt(int frame, int frames, int bin) {
  return std::sin(2.0 * std::numbers::pi * bin * frame / frames);
}

// White noise, the same for the same seed on every platform.
inline std::vector<int16_t> MakeNoise(int frames, int channels, uint32_t seed) {
  std::mt19937 random(seed);
  return MakeBlock(frames, channels, [&random](int, int) {
    return static_cast<double>(random() % 65535U) / 32767.0 - 1.0;
  });
}

// The block with noise of up to 8 steps of 16 bits added, as recordings have it: every bin then
// lies well above the floor of the levels, and none is near enough to it for rounding to decide
// whether it counts.
inline std::vector<int16_t> WithQuietNoise(std::vector<int16_t> samples) {
  std::mt19937 random(16);
  for (int16_t& sample : samples) {
    const int sum = sample + static_cast<int>(random() % 17U) - 8;
    sample = static_cast<int16_t>(std::clamp(sum, -32768, 32767));
  }
  return samples;
}

}  // namespace krv::test
