// One Fourier transform of real values, with its buffers and window.
#pragma once

#include <fftw3.h>

#include <cstdint>
#include <vector>

namespace krv {

// For blocks of one length. Making and destroying take the process-wide planner lock; running does
// not. One thread at a time.
class AudioTransform {
 public:
  // `size` is 2 or more. Throws std::bad_alloc when memory runs out, std::system_error when the
  // planner's lock cannot be taken.
  explicit AudioTransform(uint32_t size);
  AudioTransform(const AudioTransform&) = delete;
  AudioTransform& operator=(const AudioTransform&) = delete;
  ~AudioTransform();

  // False when no transform of that length can be had.
  bool usable() const { return input_ != nullptr && output_ != nullptr && plan_ != nullptr; }
  uint32_t size() const { return size_; }
  uint32_t bins() const { return size_ / 2 + 1; }

  // The periodic Hann window: 0.5 x (1 - cos(2 pi i / size)).
  const std::vector<float>& hann_weights() const { return hann_weights_; }

  // `size` values, overwritten by no one but the caller.
  float* input() { return input_; }
  // `bins` values, those of the last Run.
  const fftwf_complex* output() const { return output_; }
  void Run() { fftwf_execute(plan_); }

 private:
  uint32_t size_;
  std::vector<float> hann_weights_;
  float* input_ = nullptr;           // from FFTW's allocator
  fftwf_complex* output_ = nullptr;  // from FFTW's allocator
  fftwf_plan plan_ = nullptr;
};

}  // namespace krv
