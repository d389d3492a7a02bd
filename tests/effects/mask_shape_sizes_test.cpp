// Sizes, spacing and reach of the points along an outline.
#include "effects/mask_shape_sizes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace krv::test {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

// One outline of 100 x 60 pixels at (50, 20), in a mask of 200 x 100.
constexpr OutlineExtent kExtent = {60, 50, 20, 150, 80};

MaskShapeSizes Sizes(const PointStyle& style, const OutlineExtent& extent = kExtent) {
  return SizesFor(extent, {200, 100}, style);
}

TEST(MaskShapeSizes, SpacingIsHalfASizeAndAGap) {
  // A size of 60 x 0.5 x 0.3 = 9 pixels, a gap of 60 x 0.25 x 0.4 = 6.
  EXPECT_DOUBLE_EQ(Sizes({0.5f, 0.25f, 0}).spacing, 10.5);
}

TEST(MaskShapeSizes, SizeIsAFractionOfTheShorterSide) {
  EXPECT_FLOAT_EQ(Sizes({0.5f, 0, 0}).point_size, 0.09f);
}

TEST(MaskShapeSizes, SmallOutlinesSizeThePointsFrom30Pixels) {
  for (const float side : {1.0f, 12.0f, 29.0f, 30.0f}) {
    OutlineExtent extent = kExtent;
    extent.min_side = side;
    EXPECT_DOUBLE_EQ(Sizes({1, 1, 0}, extent).spacing, 16.5) << side;  // 9 / 2 + 12
  }
}

TEST(MaskShapeSizes, TheRegionIsTheOutlinesAndWhatPointsReach) {
  const MaskShapeSizes sizes = Sizes({0.5f, 1, 11});  // 9 pixels and 11
  EXPECT_FLOAT_EQ(sizes.region_x1, 30 / 200.0f);
  EXPECT_FLOAT_EQ(sizes.region_x2, 170 / 200.0f);
  EXPECT_FLOAT_EQ(sizes.region_y1, 0);
  EXPECT_FLOAT_EQ(sizes.region_y2, 1);
}

TEST(MaskShapeSizes, TheRegionIsNotLimitedToThePicture) {
  const MaskShapeSizes sizes = Sizes({0, 0, 100});
  EXPECT_FLOAT_EQ(sizes.region_x1, -0.25f);
  EXPECT_FLOAT_EQ(sizes.region_x2, 1.25f);
  EXPECT_FLOAT_EQ(sizes.region_y1, -0.8f);
  EXPECT_FLOAT_EQ(sizes.region_y2, 1.8f);
}

TEST(MaskShapeSizes, WithoutOutlinesSizesAreHugeAndTheSpacingIsStillUsable) {
  const MaskShapeSizes sizes = Sizes({1, 1, 10}, ExtentOf({}));
  EXPECT_GT(sizes.point_size, 1e30f);
  EXPECT_GT(sizes.region_x1, 1e30f);
  EXPECT_EQ(WholeSpacing(sizes.spacing), 1 << 20);
}

TEST(MaskShapeSizes, SpacingIsCutToWholePixelsAndAtLeast1) {
  EXPECT_EQ(WholeSpacing(16.9), 16);
  EXPECT_EQ(WholeSpacing(1.5), 1);
  for (const double spacing : {0.9, 0.0, -3.0, -1e300}) EXPECT_EQ(WholeSpacing(spacing), 1);
  EXPECT_EQ(WholeSpacing(1e300), 1 << 20);
}

TEST(MaskShapeSizes, ParametersThatAreNoNumbersGiveAUsableSpacing) {
  for (const float bad : {kNan, kInfinity, -kInfinity}) {
    for (const PointStyle& style : {PointStyle{bad, 1, 0}, {1, bad, 0}, {bad, -bad, bad}}) {
      const int spacing = WholeSpacing(Sizes(style).spacing);
      EXPECT_GE(spacing, 1);
      EXPECT_LE(spacing, 1 << 20);
    }
  }
}

}  // namespace
}  // namespace krv::test
