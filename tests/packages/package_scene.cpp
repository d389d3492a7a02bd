#include "packages/package_scene.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace krv::test {
namespace {

constexpr int kSampleRate = 48000;
constexpr int kFrameRate = 25;
constexpr int kSampleFrames = kSampleRate / kFrameRate;

void DrawPicture(host::Picture* picture) {
  for (int y = 0; y < picture->height(); ++y) {
    for (int x = 0; x < picture->width(); ++x) {
      uint8_t* pixel = picture->Pixel(x, y);
      pixel[0] = static_cast<uint8_t>(40 + 120 * x / picture->width());
      pixel[1] = static_cast<uint8_t>(24 + 60 * y / picture->height());
      pixel[2] = static_cast<uint8_t>(30 + 40 * (picture->width() - x) / picture->width());
      pixel[3] = 255;
    }
  }
}

// Every multiple of 100 Hz, each weaker than the one below it, with phases that spread the sum
// evenly over the frame.
std::vector<int16_t> MakeSound() {
  constexpr double kBase = 100;
  constexpr int kTones = 200;
  std::vector<int16_t> samples;
  for (int i = 0; i < kSampleFrames; ++i) {
    double sum = 0;
    for (int k = 1; k <= kTones; ++k) {
      const double phase = std::numbers::pi * k * k / kTones;
      const double level = std::pow(10.0, -1.8 * k / kTones) * (1.2 + std::sin(0.4 * k));
      sum += level * std::sin(2 * std::numbers::pi * kBase * k * i / kSampleRate + phase);
    }
    samples.push_back(static_cast<int16_t>(std::lround(std::clamp(2000 * sum, -32767.0, 32767.0))));
  }
  return samples;
}

}  // namespace

PackageScene::PackageScene(int width, int height) : picture_(width, height), sound_(MakeSound()) {
  DrawPicture(&picture_);
}

host::Picture PackageScene::Render(host::EffectSession* session) const {
  host::FrameRequest request;
  request.index = kFrameRate;
  request.rate_numerator = kFrameRate;
  request.width = picture_.width();
  request.height = picture_.height();
  request.input = picture_.Row(0);
  request.input_stride = picture_.stride();
  request.audio = {.samples = sound_.data(),
                   .sample_frames = kSampleFrames,
                   .channels = 1,
                   .sample_rate = kSampleRate};
  host::Picture output(picture_.width(), picture_.height());
  std::string error;
  if (session->RenderFrame(request, output.Row(0), output.stride(), &error)) return output;
  ADD_FAILURE() << error;
  return {};
}

}  // namespace krv::test
