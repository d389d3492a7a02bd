#include "effects/mask_outlines.h"

#include <algorithm>
#include <limits>
#include <opencv2/imgproc.hpp>

namespace krv {
namespace {

// 255 where the shape is, 0 elsewhere.
cv::Mat ShapeOf(const cv::Mat& mask) {
  cv::Mat alpha;
  cv::extractChannel(mask, alpha, 3);
  double least_alpha = 0;
  cv::minMaxIdx(alpha, &least_alpha);
  cv::Mat shape = mask;
  if (least_alpha < 255) {
    shape = mask.clone();
    shape.setTo(cv::Scalar::all(255), alpha);
  }
  cv::Mat grey;
  cv::cvtColor(shape, grey, cv::COLOR_BGRA2GRAY);
  cv::threshold(grey, grey, 0, 255, cv::THRESH_BINARY);
  return grey;
}

}  // namespace

Outlines FindOutlines(const cv::Mat& mask) {
  Outlines outlines;
  cv::findContours(ShapeOf(mask), outlines, cv::RETR_LIST, cv::CHAIN_APPROX_SIMPLE);
  return outlines;
}

OutlineExtent ExtentOf(const Outlines& outlines) {
  constexpr float kLargest = std::numeric_limits<float>::max();
  OutlineExtent extent{kLargest, kLargest, kLargest, 0, 0};
  for (const Outline& outline : outlines) {
    const cv::Rect box = cv::boundingRect(outline);
    extent.min_side =
        std::min(extent.min_side, static_cast<float>(std::min(box.width, box.height)));
    extent.min_x = std::min(extent.min_x, static_cast<float>(box.x));
    extent.min_y = std::min(extent.min_y, static_cast<float>(box.y));
    extent.max_x = std::max(extent.max_x, static_cast<float>(box.x + box.width));
    extent.max_y = std::max(extent.max_y, static_cast<float>(box.y + box.height));
  }
  return extent;
}

}  // namespace krv
