#include "audio/level_smoothing.h"

#include <gtest/gtest.h>

#include <vector>

namespace krv {
namespace {

cv::Mat RowOf(const std::vector<int>& bytes, int alpha) {
  cv::Mat row(1, static_cast<int>(bytes.size()), CV_8UC4);
  for (int x = 0; x < row.cols; ++x) {
    const int byte = bytes[static_cast<size_t>(x)];
    row.at<cv::Vec4b>(0, x) = cv::Vec4b(byte, byte, byte, alpha);
  }
  return row;
}

bool SamePixels(const cv::Mat& a, const cv::Mat& b) {
  return a.size() == b.size() && cv::norm(a, b, cv::NORM_INF) == 0.0;
}

TEST(SmoothLevel, FactorZeroTakesTheNewLevel) {
  EXPECT_EQ(SmoothLevel(50.0f, 120.0f, 0.0f, 30.0f), 120.0f);
  EXPECT_EQ(SmoothLevel(120.0f, 50.0f, 0.0f, 30.0f), 50.0f);
}

TEST(SmoothLevel, RiseCoversItsShareOfTheWayPerFrame) {
  // a = 1/25 = 0.04, k = 0.5 x 0.96 + 0.04 = 0.52
  EXPECT_NEAR(SmoothLevel(100.0f, 200.0f, 0.5f, 25.0f), 152.0f, 1e-4);
  // a = 0.02, k = 0.2 x 0.98 + 0.02 = 0.216
  EXPECT_NEAR(SmoothLevel(0.0f, 100.0f, 0.8f, 50.0f), 21.6f, 1e-4);
}

TEST(SmoothLevel, FullFactorRisesInOneSecond) {
  // k = a: one frame's part of a second.
  EXPECT_NEAR(SmoothLevel(0.0f, 100.0f, 1.0f, 25.0f), 4.0f, 1e-4);
}

TEST(SmoothLevel, OneFramePerSecondRisesAtOnce) {
  EXPECT_EQ(SmoothLevel(10.0f, 90.0f, 0.9f, 1.0f), 90.0f);
}

TEST(SmoothLevel, FallIsFollowedAtOnce) {
  EXPECT_EQ(SmoothLevel(120.0f, 50.0f, 0.9f, 30.0f), 50.0f);
  EXPECT_EQ(SmoothLevel(120.0f, 0.0f, 1.0f, 60.0f), 0.0f);
}

TEST(SmoothLevel, SteadyLevelStays) { EXPECT_EQ(SmoothLevel(120.0f, 120.0f, 0.5f, 30.0f), 120.0f); }

TEST(SmoothSpectrum, EachPixelRisesGraduallyAndFallsAtOnce) {
  cv::Mat shown = RowOf({0, 200, 77}, 255);
  SmoothSpectrum(shown, RowOf({100, 10, 77}, 255), 0.5f, 25.0f);
  EXPECT_TRUE(SamePixels(shown, RowOf({52, 10, 77}, 255))) << shown;
}

TEST(SmoothSpectrum, EasedBytesAreCutToWholeNumbers) {
  cv::Mat shown = RowOf({10}, 255);
  SmoothSpectrum(shown, RowOf({13}, 255), 0.8f, 50.0f);  // 10 + 3 x 0.216 = 10.648
  EXPECT_TRUE(SamePixels(shown, RowOf({10}, 255))) << shown;
}

TEST(SmoothSpectrum, AlphaStaysAndColoursFollowRed) {
  cv::Mat shown(1, 1, CV_8UC4, cv::Scalar(0, 90, 80, 33));
  const cv::Mat next(1, 1, CV_8UC4, cv::Scalar(100, 1, 2, 255));
  SmoothSpectrum(shown, next, 0.5f, 25.0f);
  EXPECT_EQ(shown.at<cv::Vec4b>(0, 0), cv::Vec4b(52, 52, 52, 33));
}

TEST(SmoothSpectrum, FactorZeroShowsTheNewSpectrum) {
  cv::Mat shown = RowOf({0, 200}, 33);
  const cv::Mat next = RowOf({100, 10}, 255);
  SmoothSpectrum(shown, next, 0.0f, 25.0f);
  EXPECT_TRUE(SamePixels(shown, next)) << shown;
}

TEST(SmoothSpectrum, FirstSpectrumAndOneOfAnotherWidthReplaceTheShownOne) {
  cv::Mat shown;
  SmoothSpectrum(shown, RowOf({100, 10}, 255), 0.5f, 25.0f);
  EXPECT_TRUE(SamePixels(shown, RowOf({100, 10}, 255))) << shown;
  SmoothSpectrum(shown, RowOf({200, 20, 30}, 255), 0.5f, 25.0f);
  EXPECT_TRUE(SamePixels(shown, RowOf({200, 20, 30}, 255))) << shown;
  SmoothSpectrum(shown, RowOf({250}, 255), 0.5f, 25.0f);
  EXPECT_TRUE(SamePixels(shown, RowOf({250}, 255))) << shown;
}

TEST(SmoothSpectrum, MeasuredSpectrumKeepsItsPixels) {
  const cv::Mat next = RowOf({100}, 255);
  cv::Mat shown;
  SmoothSpectrum(shown, next, 0.5f, 25.0f);
  SmoothSpectrum(shown, RowOf({200}, 255), 0.5f, 25.0f);
  EXPECT_TRUE(SamePixels(next, RowOf({100}, 255))) << next;
}

}  // namespace
}  // namespace krv
