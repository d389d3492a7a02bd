#include "bare_fft.h"

#include <cmath>
#include <new>

namespace krv {

BareFft::BareFft(int size)
    : size_(size),
      input_(fftwf_alloc_real(static_cast<size_t>(size))),
      output_(fftwf_alloc_complex(static_cast<size_t>(size / 2 + 1))),
      plan_(nullptr),
      levels_(static_cast<size_t>((size / 2 + 1) / 2)) {
  if (input_ == nullptr || output_ == nullptr) throw std::bad_alloc();
  plan_ = fftwf_plan_dft_r2c_1d(size, input_, output_, FFTW_ESTIMATE);
  if (plan_ == nullptr) throw std::bad_alloc();
  for (int i = 0; i < size; ++i) input_[i] = std::sin(0.01F * static_cast<float>(i * i % 997));
}

BareFft::~BareFft() {
  fftwf_destroy_plan(plan_);
  fftwf_free(output_);
  fftwf_free(input_);
}

const std::vector<float>& BareFft::Run() {
  fftwf_execute(plan_);
  const float scale = 1.0F / static_cast<float>(size_);
  for (size_t i = 0; i < levels_.size(); ++i) {
    const fftwf_complex& bin = output_[2 * i];
    const float magnitude = std::sqrt(bin[0] * bin[0] + bin[1] * bin[1]) * scale;
    levels_[i] = static_cast<float>(20 * std::log10(double{magnitude}));
  }
  return levels_;
}

}  // namespace krv
