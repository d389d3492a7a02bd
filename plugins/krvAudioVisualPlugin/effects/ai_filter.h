// The AI filter plug-in, as effects use it.
#pragma once

#include <cstdint>
#include <mutex>
#include <opencv2/core.hpp>

#include "krv/ai_filter.h"
#include "platform/dynamic_library.h"

namespace krv {

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
