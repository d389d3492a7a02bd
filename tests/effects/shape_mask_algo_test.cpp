// The point image of a mask's outlines.
#include <gtest/gtest.h>

#include <cmath>
#include <opencv2/imgproc.hpp>

#include "effects/shape_mask_algo_point_normal.h"
#include "graphics/px_image.h"

namespace krv::test {
namespace {

cv::Mat PointsOf(const cv::Mat& mask, const Outlines& outlines, int spacing) {
  ShapeMaskAlgo_Point_Normal algorithm(spacing);
  ShapeMaskAlgo& through_its_interface = algorithm;
  cv::Mat points;
  through_its_interface.FindPoints(mask, outlines, points);
  return points;
}

cv::Mat EmptyMask(int columns, int rows) { return cv::Mat::zeros(rows, columns, CV_8UC4); }

// Where a point is in pixels of the mask, moved along its normal.
cv::Point MovedOut(const cv::Mat& mask, const cv::Vec4f& texel, float distance) {
  return {static_cast<int>(std::lround(texel[0] * mask.cols + texel[2] * distance)),
          static_cast<int>(std::lround(texel[1] * mask.rows + texel[3] * distance))};
}

bool IsShape(const cv::Mat& mask, const cv::Point& at) { return mask.at<cv::Vec4b>(at)[3] != 0; }

TEST(ShapeMaskAlgo, ATexelIsPositionAsFractionsAndNormal) {
  const cv::Mat points = PointsOf(EmptyMask(40, 20), {{{10, 5}, {10, 15}, {30, 15}, {30, 5}}}, 10);
  ASSERT_EQ(points.type(), CV_32FC4);
  ASSERT_EQ(points.size(), cv::Size(6, 1));  // 60 pixels round
  const auto second = points.at<cv::Vec4f>(0, 1);
  EXPECT_FLOAT_EQ(second[0], 0.25f);
  EXPECT_FLOAT_EQ(second[1], 0.75f);
  EXPECT_NEAR(second[2], -std::sqrt(0.5f), 1e-6);
  EXPECT_NEAR(second[3], std::sqrt(0.5f), 1e-6);
}

TEST(ShapeMaskAlgo, OutlinesFollowEachOtherInTheirOrder) {
  const cv::Mat points =
      PointsOf(EmptyMask(100, 100), {{{50, 1}}, {{10, 2}, {10, 4}}, {{20, 3}}}, 2);
  ASSERT_EQ(points.cols, 4);
  EXPECT_EQ(points.at<cv::Vec4f>(0, 0), cv::Vec4f(0.5f, 0.01f, 1, 0));
  EXPECT_FLOAT_EQ(points.at<cv::Vec4f>(0, 1)[1], 0.02f);
  EXPECT_FLOAT_EQ(points.at<cv::Vec4f>(0, 2)[1], 0.04f);
  EXPECT_EQ(points.at<cv::Vec4f>(0, 3), cv::Vec4f(0.2f, 0.03f, 1, 0));
}

TEST(ShapeMaskAlgo, WithoutOutlinesTheImageIsEmpty) {
  EXPECT_TRUE(PointsOf(EmptyMask(10, 10), {}, 5).empty());
}

TEST(ShapeMaskAlgo, NormalsPointOutOfTheShapeAlsoIntoItsHoles) {
  cv::Mat mask = EmptyMask(200, 200);
  cv::circle(mask, {100, 100}, 80, cv::Scalar::all(255), cv::FILLED);
  cv::circle(mask, {110, 90}, 40, cv::Scalar::all(0), cv::FILLED);
  const Outlines outlines = FindOutlines(mask);
  ASSERT_EQ(outlines.size(), 2U);
  const cv::Mat points = PointsOf(mask, outlines, 6);
  for (int i = 0; i < points.cols; ++i) {
    const auto texel = points.at<cv::Vec4f>(0, i);
    ASSERT_FALSE(IsShape(mask, MovedOut(mask, texel, 3))) << i;
    ASSERT_TRUE(IsShape(mask, MovedOut(mask, texel, -3))) << i;
    ASSERT_NEAR(std::hypot(texel[2], texel[3]), 1, 1e-5) << i;
  }
}

TEST(ShapeMaskAlgo, ASpacingBelow1CountsAs1) {
  const Outlines square = {{{1, 1}, {1, 5}, {5, 5}, {5, 1}}};
  for (const int spacing : {1, 0, -7, -2147483647}) {
    EXPECT_EQ(PointsOf(EmptyMask(10, 10), square, spacing).cols, 16) << spacing;
  }
}

TEST(ShapeMaskAlgo, TheSpacingGrowsWherePointsWouldNotFitIntoATexture) {
  const Outlines large = {{{0, 0}, {0, 9000}, {9000, 9000}, {9000, 0}}};
  const cv::Mat points = PointsOf(EmptyMask(10, 10), large, 1);  // 36000 pixels round
  EXPECT_EQ(points.cols, 12000);                                 // 3 apart
  EXPECT_EQ(PointsOf(EmptyMask(10, 10), large, 4).cols, 9000);
}

TEST(ShapeMaskAlgo, ANoisyMaskGivesAsManyPointsAsATextureHolds) {
  cv::Mat mask = EmptyMask(853, 480);
  cv::randu(mask, cv::Scalar::all(0), cv::Scalar::all(256));
  for (int row = 0; row < mask.rows; ++row) {
    for (int column = 0; column < mask.cols; ++column) {
      if (row % 2 != 0 || column % 2 != 0) mask.at<cv::Vec4b>(row, column) = {};
    }
  }
  cv::rectangle(mask, cv::Rect(100, 100, 50, 50), cv::Scalar::all(255));
  const Outlines outlines = FindOutlines(mask);
  ASSERT_GT(outlines.size(), 100000U);
  const cv::Mat points = PointsOf(mask, outlines, 1);
  EXPECT_EQ(points.cols, kWidestTexture);
  // The long outline is among them.
  int on_left_side = 0;
  for (int i = 0; i < points.cols; ++i) {
    const cv::Point at = MovedOut(mask, points.at<cv::Vec4f>(0, i), 0);
    if (at.x == 100 && at.y >= 100 && at.y < 150) ++on_left_side;
  }
  EXPECT_GT(on_left_side, 0);
}

TEST(ShapeMaskAlgo, TheSameMaskGivesTheSamePoints) {
  cv::Mat mask = EmptyMask(300, 300);
  for (int i = 0; i < 40; ++i) {
    cv::circle(mask, {20 + i % 8 * 35, 20 + i / 8 * 35}, 12, cv::Scalar::all(255), cv::FILLED);
  }
  const Outlines outlines = FindOutlines(mask);
  const cv::Mat first = PointsOf(mask, outlines, 3);
  for (int i = 0; i < 20; ++i) {
    const cv::Mat again = PointsOf(mask, outlines, 3);
    ASSERT_EQ(again.size(), first.size());
    ASSERT_EQ(cv::norm(again, first, cv::NORM_INF), 0);
  }
}

}  // namespace
}  // namespace krv::test
