// The outlines of a mask.
#pragma once

#include <opencv2/core.hpp>
#include <vector>

namespace krv {

// The corners of one closed outline, in pixels, which belong to the shape. Seen on the picture, the
// shape is on the left of the way along each outline, that round a hole included.
using Outline = std::vector<cv::Point>;
using Outlines = std::vector<Outline>;

// The outlines of the shape in a mask of type CV_8UC4: of its pixels that are not black and, where
// the mask has transparency at all, of those that are not fully transparent.
Outlines FindOutlines(const cv::Mat& mask);

// What all outlines span, in pixels.
struct OutlineExtent {
  float min_side;  // the shortest side of any outline's bounding box; the largest float for none
  float min_x;     // the largest float for none
  float min_y;
  float max_x;  // one beyond the last pixel; 0 for none
  float max_y;
};

OutlineExtent ExtentOf(const Outlines& outlines);

}  // namespace krv
