// The analyser that effects use: one Fourier transform per audio block.
#pragma once

#include <fftw3.h>

#include <cstdint>
#include <vector>

#include "audio/audio_visual_process.h"

namespace krv {

// The transform is as long as the block, so each change of the block's length costs a new plan;
// blocks of one length share everything but the samples. The transform itself runs unlocked. Any
// number of analysers may run on as many threads.
class AudioVisualProcessFFT final : public AudioVisualProcess {
 public:
  AudioVisualProcessFFT() = default;
  AudioVisualProcessFFT(const AudioVisualProcessFFT&) = delete;
  AudioVisualProcessFFT& operator=(const AudioVisualProcessFFT&) = delete;
  ~AudioVisualProcessFFT() override;

  // The spectrum is (sample_frames / 2 + 1) / 2 pixels wide: every second bin of the transform,
  // smoothed over 20 pixels. Throws std::system_error when the planner's lock cannot be taken.
  void Process(cv::Mat& image, int32_t sample_frames, uint8_t channels, const int16_t* samples,
               float& level) override;

 private:
  // The only two places that make and drop what depends on the block's length. Both take the
  // process-wide planner lock.
  void SetUp();
  void Release();

  void WeighSamples(uint8_t channels, const int16_t* samples);
  // Fills the bins' levels and bytes from the transform's output and returns the block's level.
  float MeasureBins();
  void DrawSpectrum(cv::Mat& image);

  bool initialized_ = false;             // whether SetUp has run for fft_size_
  uint32_t fft_size_ = 1764;             // sample frames per block
  float* fft_input_ = nullptr;           // fft_size_ values from FFTW's allocator
  fftwf_complex* fft_output_ = nullptr;  // complex_bins_ values from FFTW's allocator
  fftwf_plan fft_plan_ = nullptr;
  int32_t complex_bins_ = 0;
  std::vector<float> mono_samples_;  // the block's mean over its channels, -1 to 1
  std::vector<float> hann_weights_;
  int32_t output_bins_ = 0;
  int32_t bin_step_ = 2;           // transform bins per output bin; the bins between are not read
  std::vector<float> bin_levels_;  // dB, -150 or more
  std::vector<uint8_t> bin_bytes_;
};

}  // namespace krv
