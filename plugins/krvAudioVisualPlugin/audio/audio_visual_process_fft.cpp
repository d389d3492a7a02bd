#include "audio/audio_visual_process_fft.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>
#include <utility>

namespace krv {
namespace {

constexpr float kFloorDb = -150.0f;
constexpr float kPerDbRange = 0.006666667f;  // 1 / 150
constexpr int kBlurWidth = 20;               // pixels
constexpr uint32_t kBinStep = 2;             // transform bins per pixel; those between are not read

uint8_t ByteOfLevel(float db) {
  const int value = static_cast<int>((db - kFloorDb) * kPerDbRange * 255.0f);
  return static_cast<uint8_t>(std::min(value, 255));
}

// The mean of the channels, -1 to 1, weighed by the window.
void WeighSamples(const int16_t* samples, uint8_t channels, AudioTransform& transform) {
  const double scale = (1.0 / channels) * 3.0517578125e-5;  // 1 / channels / 32768
  const float* weights = transform.hann_weights().data();
  float* input = transform.input();
  for (uint32_t i = 0; i < transform.size(); ++i) {
    float mono = 0.0f;
    for (uint8_t channel = 0; channel < channels; ++channel) {
      mono = static_cast<float>(mono + *samples++ * scale);
    }
    input[i] = mono * weights[i];
  }
}

}  // namespace

void AudioVisualProcessFFT::Process(cv::Mat& image, int32_t sample_frames, uint8_t channels,
                                    const int16_t* samples, float& level) {
  image.release();
  level = 0.0f;
  if (sample_frames < 2 || channels == 0 || samples == nullptr) return;

  AudioTransform& transform = TransformFor(static_cast<uint32_t>(sample_frames));
  if (!transform.usable()) return;
  WeighSamples(samples, channels, transform);
  transform.Run();
  level = MeasureBins(transform);
  DrawSpectrum(image);
}

AudioTransform& AudioVisualProcessFFT::TransformFor(uint32_t size) {
  if (latest_ != nullptr && latest_->size() == size) return *latest_;
  std::swap(latest_, previous_);
  if (latest_ == nullptr || latest_->size() != size) {
    latest_.reset();
    latest_ = std::make_unique<AudioTransform>(size);
  }
  return *latest_;
}

float AudioVisualProcessFFT::MeasureBins(const AudioTransform& transform) {
  bin_bytes_.resize(transform.bins() / kBinStep);
  const float per_size = 1.0f / static_cast<float>(transform.size());
  const fftwf_complex* bin = transform.output();
  float sum = 0.0f;
  int32_t counted = 0;
  for (uint8_t& byte : bin_bytes_) {
    const float magnitude = std::sqrt((*bin)[0] * (*bin)[0] + (*bin)[1] * (*bin)[1]);
    bin += kBinStep;
    // In double precision, where the C libraries of all platforms agree.
    const auto decades = static_cast<float>(std::log10(double{magnitude * per_size}));
    const float db = std::max(20.0f * decades, kFloorDb);
    if (db > kFloorDb) {
      sum += db;
      ++counted;
    }
    byte = ByteOfLevel(db);
  }
  if (counted == 0) return 0.0f;
  const double mean = sum / static_cast<float>(counted);
  return static_cast<float>((mean - kFloorDb) / 180.0 * 100.0 + 50.0);
}

void AudioVisualProcessFFT::DrawSpectrum(cv::Mat& image) {
  cv::Mat row(1, static_cast<int>(bin_bytes_.size()), CV_8UC1, bin_bytes_.data());
  cv::blur(row, row, cv::Size(kBlurWidth, 1), cv::Point(-1, -1), cv::BORDER_REFLECT_101);
  cv::cvtColor(row, image, cv::COLOR_GRAY2RGBA);
}

}  // namespace krv
