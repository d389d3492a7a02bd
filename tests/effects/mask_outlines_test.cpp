// The outlines of a mask, and what they span.
#include "effects/mask_outlines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <opencv2/imgproc.hpp>

namespace krv::test {
namespace {

using testing::UnorderedElementsAre;

const cv::Scalar kInside = cv::Scalar::all(255);

cv::Mat MaskWith(const cv::Rect& shape, const cv::Scalar& outside = cv::Scalar::all(0),
                 const cv::Scalar& inside = kInside) {
  cv::Mat mask(20, 30, CV_8UC4, outside);
  mask(shape).setTo(inside);
  return mask;
}

TEST(MaskOutlines, ARectanglesOutlineIsItsCorners) {
  const Outlines outlines = FindOutlines(MaskWith({4, 3, 10, 8}));
  ASSERT_EQ(outlines.size(), 1U);
  EXPECT_THAT(outlines[0], UnorderedElementsAre(cv::Point(4, 3), cv::Point(4, 10),
                                                cv::Point(13, 10), cv::Point(13, 3)));
}

TEST(MaskOutlines, HolesHaveOutlinesToo) {
  cv::Mat mask = MaskWith({4, 3, 12, 12});
  mask(cv::Rect(8, 7, 4, 4)).setTo(cv::Scalar::all(0));
  EXPECT_EQ(FindOutlines(mask).size(), 2U);
}

TEST(MaskOutlines, AnEmptyMaskHasNone) {
  EXPECT_TRUE(FindOutlines(cv::Mat::zeros(20, 30, CV_8UC4)).empty());
}

TEST(MaskOutlines, WhatIsNotFullyTransparentIsShapeWhateverItsColour) {
  const Outlines faint = FindOutlines(MaskWith({4, 3, 10, 8}, {0, 0, 0, 0}, {0, 0, 0, 1}));
  EXPECT_EQ(faint, FindOutlines(MaskWith({4, 3, 10, 8})));
}

TEST(MaskOutlines, AnOpaqueMaskIsAShapeByItsBrightness) {
  const Outlines opaque = FindOutlines(MaskWith({4, 3, 10, 8}, {0, 0, 0, 255}, {9, 9, 9, 255}));
  EXPECT_EQ(opaque, FindOutlines(MaskWith({4, 3, 10, 8})));
}

TEST(MaskOutlines, TheMaskItselfIsLeftAsItWas) {
  const cv::Mat mask = MaskWith({4, 3, 10, 8}, {0, 0, 0, 0}, {1, 2, 3, 4});
  const cv::Mat before = mask.clone();
  FindOutlines(mask);
  EXPECT_EQ(cv::norm(mask, before, cv::NORM_INF), 0);
}

TEST(MaskOutlines, TheExtentGoesFromTheFirstPixelToBehindTheLast) {
  const OutlineExtent extent = ExtentOf({{{4, 3}, {4, 10}, {13, 10}, {13, 3}}, {{20, 5}, {22, 5}}});
  EXPECT_EQ(extent.min_x, 4);
  EXPECT_EQ(extent.min_y, 3);
  EXPECT_EQ(extent.max_x, 23);
  EXPECT_EQ(extent.max_y, 11);
  EXPECT_EQ(extent.min_side, 1);
}

TEST(MaskOutlines, WithoutOutlinesTheExtentIsTheLargestFloatAndZero) {
  constexpr float kLargest = std::numeric_limits<float>::max();
  const OutlineExtent extent = ExtentOf({});
  EXPECT_EQ(extent.min_side, kLargest);
  EXPECT_EQ(extent.min_x, kLargest);
  EXPECT_EQ(extent.min_y, kLargest);
  EXPECT_EQ(extent.max_x, 0);
  EXPECT_EQ(extent.max_y, 0);
}

}  // namespace
}  // namespace krv::test
