#include "effects/shrink.h"

#include <algorithm>
#include <cstdint>
#include <opencv2/imgproc.hpp>

namespace krv {

cv::Mat ShrinkToShorterSide(const cv::Mat& picture, int limit) {
  const int shorter = std::min(picture.cols, picture.rows);
  if (shorter <= limit) return picture;
  // In whole numbers: the quotient as a fraction may lose the last pixel of the shorter side.
  const auto scaled = [&](int side) { return static_cast<int>(int64_t{side} * limit / shorter); };
  cv::Mat small;
  cv::resize(picture, small, cv::Size(scaled(picture.cols), scaled(picture.rows)), 0, 0,
             cv::INTER_LINEAR);
  return small;
}

}  // namespace krv
