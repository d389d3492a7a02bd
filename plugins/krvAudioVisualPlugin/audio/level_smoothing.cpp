#include "audio/level_smoothing.h"

#include <cstdint>

namespace krv {

float SmoothLevel(float previous, float next, float factor, float frame_rate) {
  if (factor == 0.0f || !(next > previous)) return next;
  const float frame_time = 1.0f / frame_rate;
  const float gain = (1.0f - factor) * (1.0f - frame_time) + frame_time;
  return previous + (next - previous) * gain;
}

void SmoothSpectrum(cv::Mat& shown, const cv::Mat& next, float factor, float frame_rate) {
  if (factor == 0.0f || shown.size() != next.size()) {
    shown = next.clone();
    return;
  }
  for (int x = 0; x < shown.cols; ++x) {
    auto& pixel = shown.at<cv::Vec4b>(0, x);
    const float eased = SmoothLevel(pixel[0], next.at<cv::Vec4b>(0, x)[0], factor, frame_rate);
    const auto byte = static_cast<uint8_t>(static_cast<int>(eased));
    pixel = cv::Vec4b(byte, byte, byte, pixel[3]);
  }
}

}  // namespace krv
