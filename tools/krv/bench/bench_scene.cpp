#include "bench/bench_scene.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace krv::tool {
namespace {

constexpr int kSampleRate = 48000;
constexpr int kChannels = 2;
constexpr int kSampleFrames = kSampleRate / BenchScene::kFrameRate;

// The same numbers on every machine.
class Noise {
 public:
  uint8_t Next() {
    state_ = state_ * 1664525U + 1013904223U;
    return static_cast<uint8_t>(state_ >> 24);
  }

 private:
  uint32_t state_ = 1;
};

void DrawPicture(host::Picture* picture) {
  Noise noise;
  for (int y = 0; y < picture->height(); ++y) {
    for (int x = 0; x < picture->width(); ++x) {
      uint8_t* pixel = picture->Pixel(x, y);
      pixel[0] = static_cast<uint8_t>(220 * x / picture->width() + (noise.Next() >> 3));
      pixel[1] = static_cast<uint8_t>(220 * y / picture->height() + (noise.Next() >> 3));
      pixel[2] = static_cast<uint8_t>(90 + (noise.Next() >> 3));
      pixel[3] = 255;
    }
  }
}

// A head and shoulders, white on transparent black.
void DrawPerson(host::Picture* mask) {
  mask->Fill(0, 0, 0, 0);
  const double height = mask->height();
  for (int y = 0; y < mask->height(); ++y) {
    for (int x = 0; x < mask->width(); ++x) {
      const double across = (x + 0.5 - mask->width() / 2.0) / height;
      const double down = (y + 0.5) / height;
      const bool head = std::hypot(across, down - 0.35) < 0.14;
      const bool body = std::hypot(across, (down - 1.0) * 0.6) < 0.28;
      if (head || body) std::fill_n(mask->Pixel(x, y), 4, uint8_t{255});
    }
  }
}

std::vector<int16_t> MakeSound() {
  constexpr double kTones[] = {110, 164.81, 220, 277.18, 440, 880, 1760, 3520, 7040, 12000};
  Noise noise;
  std::vector<int16_t> samples;
  samples.reserve(size_t{kSampleRate} * kChannels);
  for (int i = 0; i < kSampleRate; ++i) {
    const double t = static_cast<double>(i) / kSampleRate;
    const double since_beat = std::fmod(t, 0.5);
    double sum = 9000 * std::exp(-9 * since_beat) * std::sin(2 * std::numbers::pi * 55 * t);
    for (const double tone : kTones) {
      sum += 60000 / (tone + 40) * std::sin(2 * std::numbers::pi * tone * t);
    }
    for (int channel = 0; channel < kChannels; ++channel) {
      const double hiss = 12.0 * (noise.Next() - 127.5) * std::exp(-6 * since_beat);
      samples.push_back(static_cast<int16_t>(std::clamp(sum + hiss, -32767.0, 32767.0)));
    }
  }
  return samples;
}

}  // namespace

BenchScene::BenchScene(FrameSize size)
    : picture_(size.width, size.height), mask_(size.width, size.height), sound_(MakeSound()) {
  DrawPicture(&picture_);
  DrawPerson(&mask_);
}

host::FrameAudio BenchScene::Audio(int64_t frame) const {
  const int64_t place = frame % kFrameRate * kSampleFrames;
  return {.samples = sound_.data() + place * kChannels,
          .sample_frames = kSampleFrames,
          .channels = kChannels,
          .sample_rate = kSampleRate,
          .start_sample = frame * kSampleFrames};
}

uint8_t BenchScene::GetMask(uint8_t** pixels, int32_t* width, int32_t* height, int32_t* stride) {
  *pixels = mask_.Row(0);
  *width = mask_.width();
  *height = mask_.height();
  *stride = mask_.stride();
  return 1;
}

}  // namespace krv::tool
