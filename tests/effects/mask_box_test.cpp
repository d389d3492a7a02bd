// The box of a mask.
#include "effects/mask_box.h"

#include <gtest/gtest.h>

namespace krv::test {
namespace {

cv::Mat EmptyMask(int columns, int rows) { return cv::Mat::zeros(rows, columns, CV_8UC4); }

void ExpectBox(const cv::Mat& mask, float left, float top, float width, float height) {
  const MaskBox box = FindMaskBox(mask);
  EXPECT_EQ(box.left, left);
  EXPECT_EQ(box.top, top);
  EXPECT_EQ(box.width, width);
  EXPECT_EQ(box.height, height);
}

TEST(MaskBox, HoldsEveryMaskPixelAndNoMore) {
  cv::Mat mask = EmptyMask(20, 10);
  mask(cv::Rect(3, 2, 6, 4)).setTo(cv::Scalar::all(255));
  ExpectBox(mask, 3, 2, 6, 4);
  EXPECT_FALSE(FindMaskBox(mask).IsEmpty());
}

TEST(MaskBox, EachSideIsThatOfTheFarthestPixel) {
  cv::Mat mask = EmptyMask(20, 10);
  for (const auto& [column, row] : {std::pair(7, 1), {2, 4}, {17, 5}, {9, 8}}) {
    mask.at<cv::Vec4b>(row, column)[3] = 255;
  }
  ExpectBox(mask, 2, 1, 16, 8);
}

TEST(MaskBox, OnePixelIsABox) {
  cv::Mat mask = EmptyMask(20, 10);
  mask.at<cv::Vec4b>(9, 19)[3] = 6;
  ExpectBox(mask, 19, 9, 1, 1);
}

TEST(MaskBox, AWholePictureIsABox) {
  ExpectBox(cv::Mat(10, 20, CV_8UC4, cv::Scalar::all(255)), 0, 0, 20, 10);
}

TEST(MaskBox, ANarrowOrLowMaskIsABox) {
  ExpectBox(cv::Mat(1, 1, CV_8UC4, cv::Scalar::all(255)), 0, 0, 1, 1);
  ExpectBox(cv::Mat(1, 30, CV_8UC4, cv::Scalar::all(255)), 0, 0, 30, 1);
  ExpectBox(cv::Mat(30, 1, CV_8UC4, cv::Scalar::all(255)), 0, 0, 1, 30);
}

TEST(MaskBox, AFourthChannelAbove5IsMask) {
  cv::Mat mask = EmptyMask(4, 4);
  mask.setTo(cv::Scalar(255, 255, 255, 5));
  ExpectBox(mask, -1, -1, -1, -1);
  EXPECT_TRUE(FindMaskBox(mask).IsEmpty());
  mask.at<cv::Vec4b>(2, 1) = cv::Vec4b(0, 0, 0, 6);
  ExpectBox(mask, 1, 2, 1, 1);
}

TEST(MaskBox, BytesBetweenRowsAreNotLookedAt) {
  cv::Mat storage(4, 4 * 4 + 5, CV_8UC1, cv::Scalar(255));
  cv::Mat mask(4, 4, CV_8UC4, storage.data, storage.step[0]);
  mask.setTo(cv::Scalar::all(0));
  ExpectBox(mask, -1, -1, -1, -1);
}

}  // namespace
}  // namespace krv::test
