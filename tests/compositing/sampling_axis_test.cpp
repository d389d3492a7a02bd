#include "compositing/sampling_axis.h"

#include <gtest/gtest.h>

namespace krv {
namespace {

TEST(SamplingTaps, OfTheSameSizeMeetTheTexels) {
  const auto taps = SamplingTaps(853, 853);
  for (size_t i = 0; i < taps.size(); ++i) {
    const double place = taps[i].lower + double{taps[i].weight};
    EXPECT_NEAR(place, static_cast<double>(i), 1e-3) << i;
  }
}

TEST(SamplingTaps, LieAsFarFromTheTexelsAsThePixelCentres) {
  const auto taps = SamplingTaps(1920, 853);
  for (size_t i = 1; i + 2 < taps.size(); ++i) {
    const double place = (static_cast<double>(i) + 0.5) * 853 / 1920 - 0.5;
    EXPECT_NEAR(taps[i].lower + double{taps[i].weight}, place, 2e-4) << i;
  }
}

TEST(SamplingTaps, BeyondTheOutermostCentresMeanTheOutermostTexel) {
  const auto taps = SamplingTaps(6, 2);
  EXPECT_EQ(taps[0].lower, 0);
  EXPECT_EQ(taps[0].weight, 0);
  EXPECT_EQ(taps[5].lower, 1) << "the texel after it is the last again";
}

TEST(SamplingTaps, OfOneTexelAreThatTexel) {
  for (const SamplingTap& tap : SamplingTaps(5, 1)) EXPECT_EQ(tap.lower, 0);
}

TEST(FixedWeight, IsRounded) {
  EXPECT_EQ(FixedWeight(0.5F), 16384);
  EXPECT_EQ(FixedWeight(0.25F + 0.4F / 32768), 8192);
}

TEST(FixedWeight, LeavesNoTexelOutThatTakesPart) {
  EXPECT_EQ(FixedWeight(0.0F), 0);
  EXPECT_EQ(FixedWeight(1e-7F), 1);
  EXPECT_EQ(FixedWeight(0.9999999F), 32767);
}

}  // namespace
}  // namespace krv
