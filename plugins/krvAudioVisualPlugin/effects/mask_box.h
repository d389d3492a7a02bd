// The occupied area of a mask.
#pragma once

#include <opencv2/core.hpp>

namespace krv {

// In mask pixels; -1 in every field when the mask is empty.
struct MaskBox {
  float left = -1;
  float top = -1;
  float width = -1;
  float height = -1;

  bool IsEmpty() const { return left < 0 || top < 0 || width <= 0 || height <= 0; }
};

// The smallest box round the pixels that belong to the mask: those whose fourth channel is above 5.
// `mask` is of type CV_8UC4. Its four sides are searched side by side.
MaskBox FindMaskBox(const cv::Mat& mask);

}  // namespace krv
