// The built AI filter plug-in, reached as the plug-in of the effects reaches it.
#pragma once

#include <cstdint>
#include <opencv2/core.hpp>
#include <string>

#include "krv/ai_filter.h"

namespace krv::test {

struct BuiltFilter {
  CreateAiFilterFunction* create;
  AiFilterTransformFunction* transform;

  // Loaded on first use, for the rest of the process.
  static const BuiltFilter& Get();
  static std::string Path();
};

// A filter of the library; `models` is the folder of AI models. Throws when there is none.
void* MakeFilter(const std::string& models = "");

// The mask that a filter makes of a picture (CV_8UC4): CV_8UC1 of its size. Throws when it fails,
// or when the four channels of the mask differ or hold anything but 0 and 255.
cv::Mat MaskOf(void* filter, const cv::Mat& picture);

// What two masks share, as a part of what they cover together; 0 when both are empty.
double Overlap(const cv::Mat& a, const cv::Mat& b);

}  // namespace krv::test
