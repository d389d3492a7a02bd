#include "packages/package_scene.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <stdexcept>

namespace krv::test {
namespace {

constexpr int kSampleRate = 48000;
constexpr int kFrameRate = 25;
constexpr int kSampleFrames = kSampleRate / kFrameRate;

void DrawPicture(host::Picture* picture) {
  for (int y = 0; y < picture->height(); ++y) {
    for (int x = 0; x < picture->width(); ++x) {
      uint8_t* pixel = picture->Pixel(x, y);
      const int off_middle = std::abs(2 * x + 1 - picture->width());
      pixel[0] = static_cast<uint8_t>(80 - 40 * off_middle / picture->width());
      pixel[1] = static_cast<uint8_t>(28 + 24 * y / picture->height());
      pixel[2] = static_cast<uint8_t>(30 + 40 * off_middle / picture->width());
      pixel[3] = 255;
    }
  }
}

// A head and shoulders, white on black.
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

// A loud bass over a falling, uneven rest: one tone for every step of the frame's spectrum, each
// at its loudest somewhere else in the frame.
std::vector<int16_t> MakeSound() {
  constexpr int kTones = 800;
  std::vector<double> sums(kSampleFrames);
  for (int k = 1; k <= kTones; ++k) {
    const double height = static_cast<double>(k) / kTones;
    const double rest = std::pow(10.0, 0.5 * std::sin(k / 12.0) - 2.0 * height);
    const double level = 7000 * (std::pow(10.0, -30.0 * height) + 0.03 * rest);
    const double phase = 2 * std::numbers::pi * 0.618 * k * k;
    for (int i = 0; i < kSampleFrames; ++i) {
      sums[i] += level * std::sin(2 * std::numbers::pi * k * i / kSampleFrames + phase);
    }
  }
  std::vector<int16_t> samples;
  for (const double sum : sums) {
    samples.push_back(static_cast<int16_t>(std::lround(std::clamp(sum, -32767.0, 32767.0))));
  }
  return samples;
}

}  // namespace

PackageScene::PackageScene(int width, int height)
    : picture_(width, height), mask_(width, height), sound_(MakeSound()) {
  DrawPicture(&picture_);
  DrawPerson(&mask_);
}

host::Picture PackageScene::Render(host::EffectSession* session) {
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
  session->SetPersonMask(this);
  const bool rendered = session->RenderFrame(request, output.Row(0), output.stride(), &error);
  session->SetPersonMask(nullptr);
  if (!rendered) throw std::runtime_error(error);
  return output;
}

uint8_t PackageScene::GetMask(uint8_t** pixels, int32_t* width, int32_t* height, int32_t* stride) {
  *pixels = mask_.Row(0);
  *width = mask_.width();
  *height = mask_.height();
  *stride = mask_.stride();
  return 1;
}

}  // namespace krv::test
