// What any analysis of an audio block has to compute: a transform and the logarithms of its bins.
#pragma once

#include <fftw3.h>

#include <vector>

namespace krv {

// The transform and every second bin's level, as the plug-in's analyser has them, and nothing else:
// no mixing of channels, no window, no smoothing, no picture.
class BareFft {
 public:
  // `size` samples, 2 or more.
  explicit BareFft(int size);
  ~BareFft();
  BareFft(const BareFft&) = delete;
  BareFft& operator=(const BareFft&) = delete;

  // Returns the levels in dB. Valid until the next call.
  const std::vector<float>& Run();

 private:
  int size_;
  float* input_;
  fftwf_complex* output_;
  fftwf_plan plan_;
  std::vector<float> levels_;
};

}  // namespace krv
