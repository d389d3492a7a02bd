// How often the analyser plans. The program's calls of the planner are counted on their way.
#include <fftw3.h>
#include <gtest/gtest.h>

#include <opencv2/core.hpp>
#include <vector>

#include "audio/audio_visual_process_fft.h"

namespace {
int plans_made = 0;
}  // namespace

extern "C" {
fftwf_plan __real_fftwf_plan_dft_r2c_1d(int, float*, fftwf_complex*, unsigned);

fftwf_plan __wrap_fftwf_plan_dft_r2c_1d(int size, float* in, fftwf_complex* out, unsigned flags) {
  ++plans_made;
  return __real_fftwf_plan_dft_r2c_1d(size, in, out, flags);
}
}

namespace krv {
namespace {

int PlansFor(const std::vector<int32_t>& lengths) {
  plans_made = 0;
  AudioVisualProcessFFT analyser;
  const std::vector<int16_t> samples(4096, 1000);
  for (const int32_t length : lengths) {
    cv::Mat image;
    float level = 0;
    analyser.Process(image, length, 1, samples.data(), level);
    EXPECT_EQ(image.cols, (length / 2 + 1) / 2);
  }
  return plans_made;
}

TEST(Plans, AreMadeOnceForBlocksOfOneLength) { EXPECT_EQ(PlansFor({1600, 1600, 1600}), 1); }

TEST(Plans, AreMadeOnceForEachOfTwoLengthsInTurn) {
  EXPECT_EQ(PlansFor({1601, 1602, 1601, 1602, 1602, 1601}), 2);
}

TEST(Plans, OfALengthThatIsGoneAreMadeAgain) { EXPECT_EQ(PlansFor({1600, 800, 400, 1600}), 4); }

}  // namespace
}  // namespace krv
