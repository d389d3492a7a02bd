// How levels and spectra ease from frame to frame: they rise gradually and fall at once.
//
// Pure functions. `factor` is the weight of the past, 0 (none) to 1; `frame_rate` is in frames per
// second, 1 or more. With a = 1 / frame_rate, a rise covers k = (1 - factor) x (1 - a) + a of its
// way per frame.
#pragma once

#include <opencv2/core.hpp>

namespace krv {

// The level to show after `previous` was shown and `next` measured.
float SmoothLevel(float previous, float next, float factor, float frame_rate);

// Merges the spectrum `next` into `shown`, the one of the last frame; both are of type CV_8UC4 with
// one row. Each pixel's red byte follows the rule above, cut to a whole number, and green and blue
// follow red; the alpha of `shown` stays. With factor 0, or when `shown` is empty or of another
// width, `shown` becomes a copy of `next`.
void SmoothSpectrum(cv::Mat& shown, const cv::Mat& next, float factor, float frame_rate);

}  // namespace krv
