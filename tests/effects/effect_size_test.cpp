#include "effects/effect_size.h"

#include <gtest/gtest.h>

namespace krv {
namespace {

void ExpectSize(const EffectSize& size, int32_t width, int32_t height) {
  EXPECT_EQ(size.width, width);
  EXPECT_EQ(size.height, height);
}

TEST(EffectSize, ShorterSideAtTheLimitIsKept) {
  ExpectSize(ReducedSize(1000, 320, kQualityLow), 1000, 320);
  ExpectSize(ReducedSize(1000, 480, kQualityMedium), 1000, 480);
  ExpectSize(ReducedSize(1000, 720, kQualityHigh), 1000, 720);
  ExpectSize(ReducedSize(480, 1000, kQualityMedium), 480, 1000);
}

TEST(EffectSize, ShorterSideAboveTheLimitIsScaledDownToIt) {
  ExpectSize(ReducedSize(642, 321, kQualityLow), 640, 320);
  ExpectSize(ReducedSize(962, 481, kQualityMedium), 960, 480);
  ExpectSize(ReducedSize(1920, 1080, kQualityHigh), 1280, 720);
}

TEST(EffectSize, BothSidesAreCutToWholePixels) {
  ExpectSize(ReducedSize(1920, 1080, kQualityMedium), 853, 480);
  ExpectSize(ReducedSize(1080, 1920, kQualityMedium), 480, 853);
  ExpectSize(ReducedSize(1920, 1080, kQualityLow), 568, 320);
}

TEST(EffectSize, SmallOutputsAreNeverEnlarged) {
  ExpectSize(ReducedSize(1, 1, kQualityLow), 1, 1);
  ExpectSize(ReducedSize(5000, 3, kQualityHigh), 5000, 3);
}

TEST(EffectSize, EqualSidesAreScaledAlike) {
  ExpectSize(ReducedSize(4096, 4096, kQualityHigh), 720, 720);
}

TEST(EffectSize, NumberThatIsNoQualityCountsAsMedium) {
  ExpectSize(ReducedSize(960, 960, static_cast<RenderQuality>(9)), 480, 480);
}

}  // namespace
}  // namespace krv
