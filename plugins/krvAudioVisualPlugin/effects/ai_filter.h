// The sibling plug-in that finds people in pictures.
#pragma once

#include <cstdint>
#include <mutex>
#include <opencv2/core.hpp>

#include "platform/dynamic_library.h"

namespace krv {

inline constexpr char kAiFilterFileName[] = "krvAiFilterPlugin.krv";
inline constexpr char kAiFilterGuid[] = "2193B116-1AD4-49F4-84A1-FFA3CB983A94";

// The library's entry points, C linkage.
//
// CreateNLEAIEffectFilterFromGUID: a filter, or null. `folder` is the host's folder of AI models.
using CreateAiFilterFunction = void*(const char* guid, const char* folder);
// NLEEffectFilterTransform: 0 on success. The input is handed over twice.
using AiFilterTransformFunction = int32_t(void* filter, uint8_t* out, int32_t out_width,
                                          int32_t out_height, int32_t out_stride, const uint8_t* in,
                                          int32_t in_width, int32_t in_height, int32_t in_stride,
                                          const uint8_t* in2, int32_t in2_width, int32_t in2_height,
                                          int32_t in2_stride);

// Loads the library and makes one filter on the first run that needs them; what fails is tried
// again on the next run. The library lies in the host's folder of plug-in files or, when the host
// names none, in "krvPlugin" in its installation folder. [any-thread]; runs wait for each other.
class AiFilter {
 public:
  // The one that effects use; never destroyed, so the library stays loaded.
  static AiFilter& Instance();

  AiFilter() = default;
  AiFilter(const AiFilter&) = delete;
  AiFilter& operator=(const AiFilter&) = delete;

  // The mask of the picture, both of type CV_8UC4 and of one size. Empty when the picture is, when
  // there is no filter, or when it fails.
  cv::Mat Run(const cv::Mat& picture);

 private:
  bool Load();

  std::mutex mutex_;
  platform::DynamicLibrary library_;
  AiFilterTransformFunction* transform_ = nullptr;
  void* filter_ = nullptr;
};

}  // namespace krv
