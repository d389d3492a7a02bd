// Pictures scaled down to a shorter side.
#include "effects/shrink.h"

#include <gtest/gtest.h>

namespace krv::test {
namespace {

cv::Size SizeAfter(int width, int height, int limit) {
  return ShrinkToShorterSide(cv::Mat::zeros(height, width, CV_8UC4), limit).size();
}

TEST(Shrink, AMaskOf1920x1080IsWorkedOnAt853x480) {
  EXPECT_EQ(SizeAfter(1920, 1080, 480), cv::Size(853, 480));
  EXPECT_EQ(SizeAfter(1080, 1920, 480), cv::Size(480, 853));
}

TEST(Shrink, AShorterSideAtTheLimitStaysAndIsNotCopied) {
  const cv::Mat picture = cv::Mat::zeros(160, 1000, CV_8UC4);
  const cv::Mat same = ShrinkToShorterSide(picture, 160);
  EXPECT_EQ(same.size(), picture.size());
  EXPECT_EQ(same.data, picture.data);
}

TEST(Shrink, AShorterSideOneAboveTheLimitIsScaled) {
  EXPECT_EQ(SizeAfter(1000, 161, 160), cv::Size(993, 160));
}

TEST(Shrink, TheShorterSideIsTheLimitForEverySize) {
  for (int side = 161; side < 2000; ++side) {
    ASSERT_EQ(ShrinkToShorterSide(cv::Mat::zeros(side, side, CV_8UC1), 160).size(),
              cv::Size(160, 160))
        << side;
  }
}

TEST(Shrink, NeighboursAreMixedInALine) {
  cv::Mat picture = cv::Mat::zeros(4, 4, CV_8UC1);
  picture.colRange(1, 4).setTo(200);
  const cv::Mat small = ShrinkToShorterSide(picture, 2);
  EXPECT_EQ(small.at<uint8_t>(0, 0), 100);
  EXPECT_EQ(small.at<uint8_t>(0, 1), 200);
}

}  // namespace
}  // namespace krv::test
