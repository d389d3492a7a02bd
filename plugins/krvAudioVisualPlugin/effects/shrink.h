// Smaller copies of pictures.
#pragma once

#include <opencv2/core.hpp>

namespace krv {

// The picture scaled down by linear interpolation so that its shorter side is `limit` pixels, the
// longer side cut to whole pixels; `picture` itself, not a copy, when no side has to shrink.
cv::Mat ShrinkToShorterSide(const cv::Mat& picture, int limit);

}  // namespace krv
