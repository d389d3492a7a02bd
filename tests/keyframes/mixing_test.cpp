#include "keyframes/mixing.h"

#include <gtest/gtest.h>

namespace krv::tool {
namespace {

TEST(ShareOfNext, BeginsAndEndsAtTheValues) {
  for (const Way way : {Way::kLinear, Way::kHold, Way::kSmooth}) {
    EXPECT_EQ(ShareOfNext(way, 0), 0);
    EXPECT_EQ(ShareOfNext(way, 1), 1);
  }
}

TEST(ShareOfNext, LinearGoesEvenly) { EXPECT_EQ(ShareOfNext(Way::kLinear, 0.3), 0.3); }

TEST(ShareOfNext, HoldStaysUntilTheEnd) { EXPECT_EQ(ShareOfNext(Way::kHold, 0.999), 0); }

TEST(ShareOfNext, SmoothStartsAndEndsAtRest) {
  EXPECT_DOUBLE_EQ(ShareOfNext(Way::kSmooth, 0.25), 3 * 0.0625 - 2 * 0.015625);
  EXPECT_DOUBLE_EQ(ShareOfNext(Way::kSmooth, 0.5), 0.5);
  EXPECT_LT(ShareOfNext(Way::kSmooth, 0.001), 4e-6);
  EXPECT_GT(ShareOfNext(Way::kSmooth, 0.999), 1 - 4e-6);
}

TEST(MixNumbers, IsExactAtBothEnds) {
  EXPECT_EQ(MixNumbers(0.1, 0.7, 0), 0.1);
  EXPECT_EQ(MixNumbers(0.1, 0.7, 1), 0.7);
  EXPECT_EQ(MixNumbers(1e30, 3, 1), 3);
  EXPECT_DOUBLE_EQ(MixNumbers(10, 20, 0.25), 12.5);
}

TEST(MixColours, MixesEachChannelByItself) {
  EXPECT_EQ(MixColours(0xFF0000, 0x0000FF, 0.5), 0x800080u);
  EXPECT_EQ(MixColours(0x102030, 0x304050, 0.25), 0x182838u);
  EXPECT_EQ(MixColours(0xFF0000, 0x0000FF, 0), 0xFF0000u);
  EXPECT_EQ(MixColours(0xFF0000, 0x0000FF, 1), 0x0000FFu);
}

TEST(MixColours, RoundsChannels) {
  EXPECT_EQ(MixColours(0x000000, 0x0A0A0A, 0.04), 0x000000u);
  EXPECT_EQ(MixColours(0x000000, 0x0A0A0A, 0.06), 0x010101u);
}

}  // namespace
}  // namespace krv::tool
