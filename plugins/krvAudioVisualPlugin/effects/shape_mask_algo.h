// From the outlines of a mask to points that a shader can draw.
#pragma once

#include <opencv2/core.hpp>

#include "effects/mask_outlines.h"

namespace krv {

class ShapeMaskAlgo {
 public:
  // Makes `points` from the outlines of `mask`: one row of type CV_32FC4 with a column per point,
  // each holding the position as fractions of the mask's width and height, and the normal, of
  // length 1, x before y. Never wider than kWidestTexture; empty without outlines. [any-thread]
  virtual void FindPoints(const cv::Mat& mask, const Outlines& outlines, cv::Mat& points) = 0;

  virtual ~ShapeMaskAlgo() = default;
};

}  // namespace krv
