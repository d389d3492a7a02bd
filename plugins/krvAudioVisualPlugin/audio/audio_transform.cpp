#include "audio/audio_transform.h"

#include <cmath>
#include <mutex>

namespace krv {
namespace {

// FFTW's planner is not reentrant: every plan and buffer of the process is made and freed under
// this one lock.
std::mutex& PlannerMutex() {
  static std::mutex mutex;
  return mutex;
}

std::vector<float> HannWeights(uint32_t size) {
  std::vector<float> weights(size);
  for (uint32_t i = 0; i < size; ++i) {
    const double phase = i * 6.28318530718 / size;
    weights[i] = static_cast<float>((1.0 - std::cos(phase)) * 0.5);
  }
  return weights;
}

}  // namespace

AudioTransform::AudioTransform(uint32_t size) : size_(size), hann_weights_(HannWeights(size)) {
  const std::lock_guard lock(PlannerMutex());
  input_ = fftwf_alloc_real(size_);
  output_ = fftwf_alloc_complex(bins());
  if (input_ == nullptr || output_ == nullptr) return;
  // Other users of FFTW in the host's process know nothing of our lock.
  fftwf_make_planner_thread_safe();
  plan_ = fftwf_plan_dft_r2c_1d(static_cast<int>(size_), input_, output_, FFTW_ESTIMATE);
}

AudioTransform::~AudioTransform() {
  const std::lock_guard lock(PlannerMutex());
  fftwf_free(input_);
  fftwf_free(output_);
  fftwf_destroy_plan(plan_);
}

}  // namespace krv
