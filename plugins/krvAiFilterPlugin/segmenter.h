// What finds the people in a picture.
#pragma once

#include <opencv2/core.hpp>

namespace krv {

// One thread at a time.
class Segmenter {
 public:
  virtual ~Segmenter() = default;

  // The people in a CV_8UC3 picture (blue, green, red): CV_8UC1 of its size, 255 where one is, else
  // 0. Throws when it fails.
  virtual cv::Mat Segment(const cv::Mat& picture) = 0;
};

}  // namespace krv
