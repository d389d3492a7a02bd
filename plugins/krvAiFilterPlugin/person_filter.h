// One filter of the AI filter plug-in.
#pragma once

#include <memory>
#include <mutex>
#include <opencv2/core.hpp>
#include <string>

#include "segmenter.h"

namespace krv {

class PersonFilter {
 public:
  // `models` is the folder of AI models, UTF-8; empty for none.
  explicit PersonFilter(const std::string& models);

  // Writes the mask of `in` into `out`, both CV_8UC4 and of any sizes. [any-thread]
  void Transform(const cv::Mat& in, cv::Mat& out);

 private:
  std::mutex mutex_;
  std::unique_ptr<Segmenter> segmenter_;
  // Several effects ask about the same frame.
  cv::Mat last_picture_;
  cv::Mat last_mask_;
};

}  // namespace krv
