// Cuts a person out of a picture by colour.
#pragma once

#include <opencv2/core.hpp>

namespace krv {

// The person in a part of a picture (CV_8UC3) where `likelihood` (CV_32FC1, its size, 0 to 1) is a
// guess: CV_8UC1 of the picture's size, 255 for the person, else 0. Where the guess is 0 there is
// nobody. `window` is where to look, in pixels. Colours decide between the two sides of the guess;
// when they cannot, the guess itself is the answer. The same arguments give the same answer.
cv::Mat CutOut(const cv::Mat& picture, const cv::Mat& likelihood, const cv::Rect2d& window);

}  // namespace krv
