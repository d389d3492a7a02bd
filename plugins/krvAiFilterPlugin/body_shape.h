// The shape of a body in the people detector's window.
//
// A shape is CV_32FC1 of 64 x 128 pixels, the window's own: how likely each belongs to the person,
// 0 to 1.
#pragma once

#include <opencv2/core.hpp>

namespace krv {

// That of people in general.
cv::Mat UsualBodyShape();

// The shape in the window `area` of a picture of the given size: CV_32FC1, 0 outside the window.
cv::Mat PlaceBodyShape(const cv::Mat& shape, const cv::Rect2d& area, const cv::Size& size);

// The shape that a mask (CV_8UC1, 255 for the person) has in the window `area`.
cv::Mat TakeBodyShape(const cv::Mat& mask, const cv::Rect2d& area);

}  // namespace krv
