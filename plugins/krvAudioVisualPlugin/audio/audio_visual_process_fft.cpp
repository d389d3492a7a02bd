#include "audio/audio_visual_process_fft.h"

#include <algorithm>
#include <cmath>
#include <mutex>
#include <opencv2/imgproc.hpp>

namespace krv {
namespace {

constexpr float kFloorDb = -150.0f;
constexpr float kPerDbRange = 0.006666667f;  // 1 / 150
constexpr int kBlurWidth = 20;               // pixels

// FFTW's planner is not reentrant: every plan and buffer of the process is made and freed under
// this one lock.
std::mutex& PlannerMutex() {
  static std::mutex mutex;
  return mutex;
}

void FillHannWeights(std::vector<float>& weights) {
  const auto size = static_cast<double>(weights.size());
  for (size_t i = 0; i < weights.size(); ++i) {
    const double phase = static_cast<double>(i) * 6.28318530718 / size;
    weights[i] = static_cast<float>((1.0 - std::cos(phase)) * 0.5);
  }
}

uint8_t ByteOfLevel(float db) {
  const int value = static_cast<int>((db - kFloorDb) * kPerDbRange * 255.0f);
  return static_cast<uint8_t>(std::min(value, 255));
}

}  // namespace

AudioVisualProcessFFT::~AudioVisualProcessFFT() { Release(); }

void AudioVisualProcessFFT::Process(cv::Mat& image, int32_t sample_frames, uint8_t channels,
                                    const int16_t* samples, float& level) {
  image.release();
  level = 0.0f;
  if (sample_frames < 2 || channels == 0 || samples == nullptr) return;

  const auto size = static_cast<uint32_t>(sample_frames);
  if (size != fft_size_) {
    Release();
    fft_size_ = size;
  }
  if (!initialized_) SetUp();
  if (fft_input_ == nullptr || fft_output_ == nullptr || fft_plan_ == nullptr) return;

  WeighSamples(channels, samples);
  fftwf_execute(fft_plan_);
  level = MeasureBins();
  DrawSpectrum(image);
}

void AudioVisualProcessFFT::SetUp() {
  const std::lock_guard lock(PlannerMutex());
  initialized_ = true;
  complex_bins_ = static_cast<int32_t>(fft_size_ / 2 + 1);
  output_bins_ = complex_bins_ / bin_step_;
  bin_levels_.resize(static_cast<size_t>(output_bins_));
  bin_bytes_.resize(static_cast<size_t>(output_bins_));
  mono_samples_.resize(fft_size_);
  hann_weights_.resize(fft_size_);
  FillHannWeights(hann_weights_);

  fft_input_ = fftwf_alloc_real(fft_size_);
  fft_output_ = fftwf_alloc_complex(static_cast<size_t>(complex_bins_));
  if (fft_input_ == nullptr || fft_output_ == nullptr) return;
  // Other users of FFTW in the host's process know nothing of our lock.
  fftwf_make_planner_thread_safe();
  fft_plan_ =
      fftwf_plan_dft_r2c_1d(static_cast<int>(fft_size_), fft_input_, fft_output_, FFTW_ESTIMATE);
}

void AudioVisualProcessFFT::Release() {
  const std::lock_guard lock(PlannerMutex());
  if (!initialized_) return;
  fftwf_free(fft_input_);
  fftwf_free(fft_output_);
  fftwf_destroy_plan(fft_plan_);
  fft_input_ = nullptr;
  fft_output_ = nullptr;
  fft_plan_ = nullptr;
  initialized_ = false;
}

void AudioVisualProcessFFT::WeighSamples(uint8_t channels, const int16_t* samples) {
  const double scale = (1.0 / channels) * 3.0517578125e-5;  // 1 / channels / 32768
  for (uint32_t i = 0; i < fft_size_; ++i) {
    float mono = 0.0f;
    for (uint8_t channel = 0; channel < channels; ++channel) {
      mono = static_cast<float>(mono + *samples++ * scale);
    }
    mono_samples_[i] = mono;
    fft_input_[i] = mono * hann_weights_[i];
  }
}

float AudioVisualProcessFFT::MeasureBins() {
  const float per_size = 1.0f / static_cast<float>(fft_size_);
  float sum = 0.0f;
  int32_t counted = 0;
  for (int32_t k = 0; k < output_bins_; ++k) {
    const fftwf_complex& bin = fft_output_[ptrdiff_t{k} * bin_step_];
    const float magnitude = std::sqrt(bin[0] * bin[0] + bin[1] * bin[1]);
    // In double precision, where the C libraries of all platforms agree.
    const auto decades = static_cast<float>(std::log10(double{magnitude * per_size}));
    const float db = std::max(20.0f * decades, kFloorDb);
    if (db > kFloorDb) {
      sum += db;
      ++counted;
    }
    bin_levels_[static_cast<size_t>(k)] = db;
    bin_bytes_[static_cast<size_t>(k)] = ByteOfLevel(db);
  }
  if (counted == 0) return 0.0f;
  const double mean = sum / static_cast<float>(counted);
  return static_cast<float>((mean - kFloorDb) / 180.0 * 100.0 + 50.0);
}

void AudioVisualProcessFFT::DrawSpectrum(cv::Mat& image) {
  cv::Mat row(1, output_bins_, CV_8UC1, bin_bytes_.data());
  cv::blur(row, row, cv::Size(kBlurWidth, 1), cv::Point(-1, -1), cv::BORDER_REFLECT_101);
  cv::cvtColor(row, image, cv::COLOR_GRAY2RGBA);
}

}  // namespace krv
