#include "check/check_scene.h"

#include <array>
#include <cmath>
#include <numbers>

namespace krv::tool {
namespace {

constexpr int32_t kWidth = 320;
constexpr int32_t kHeight = 180;
constexpr int32_t kStride = kWidth * 4;
constexpr int32_t kSampleRate = 48000;
constexpr int32_t kFrameRate = 25;
constexpr int32_t kSampleFrames = kSampleRate / kFrameRate;
constexpr uint32_t kChannels = 2;

template <class Pixel>
std::vector<uint8_t> Draw(Pixel pixel) {
  std::vector<uint8_t> picture;
  picture.reserve(size_t{kStride} * kHeight);
  for (int32_t y = 0; y < kHeight; ++y) {
    for (int32_t x = 0; x < kWidth; ++x) {
      for (const int32_t channel : pixel(x, y)) picture.push_back(static_cast<uint8_t>(channel));
    }
  }
  return picture;
}

std::vector<int16_t> Chord() {
  constexpr double kAmplitude = 8000;
  std::vector<int16_t> samples;
  for (int32_t i = 0; i < kSampleFrames; ++i) {
    const double t = 2 * std::numbers::pi * i / kSampleRate;
    const double sum = std::sin(110 * t) + std::sin(440 * t) + std::sin(3520 * t);
    samples.insert(samples.end(), kChannels, static_cast<int16_t>(kAmplitude * sum));
  }
  return samples;
}

}  // namespace

CheckScene::CheckScene()
    : picture_(Draw([](int32_t x, int32_t y) {
        return std::array<int32_t, 4>{255 * x / kWidth, 255 * y / kHeight, 128, 255};
      })),
      mask_(Draw([](int32_t x, int32_t y) {
        const bool person = x > kWidth / 3 && x < kWidth * 2 / 3 && y > kHeight / 4;
        const int32_t value = person ? 255 : 0;
        return std::array<int32_t, 4>{value, value, value, value};
      })),
      sound_(Chord()) {}

host::FrameRequest CheckScene::request() const {
  host::FrameRequest request;
  request.rate_numerator = kFrameRate;
  request.width = kWidth;
  request.height = kHeight;
  request.input = picture_.data();
  request.input_stride = kStride;
  request.audio = {.samples = sound_.data(),
                   .sample_frames = kSampleFrames,
                   .channels = kChannels,
                   .sample_rate = kSampleRate};
  return request;
}

uint8_t CheckScene::GetMask(uint8_t** pixels, int32_t* width, int32_t* height, int32_t* stride) {
  *pixels = mask_.data();
  *width = kWidth;
  *height = kHeight;
  *stride = kStride;
  return 1;
}

}  // namespace krv::tool
