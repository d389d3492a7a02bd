#include "person_filter.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>

#include "hog_segmenter.h"
#include "neural_segmenter.h"

namespace krv {
namespace {

// Pixels that are looked at. Callers hand over no more than that on the shorter side already.
constexpr int kMostOnShorterSide = 160;
constexpr int kMostOnLongerSide = 640;

cv::Size WorkingSize(const cv::Size& size) {
  const double shorter = std::min(size.width, size.height);
  const double longer = std::max(size.width, size.height);
  const double scale = std::min({1.0, kMostOnShorterSide / shorter, kMostOnLongerSide / longer});
  return {std::max(1, static_cast<int>(size.width * scale)),
          std::max(1, static_cast<int>(size.height * scale))};
}

bool SamePixels(const cv::Mat& a, const cv::Mat& b) {
  return a.size() == b.size() && cv::norm(a, b, cv::NORM_INF) == 0;
}

}  // namespace

PersonFilter::PersonFilter(const std::string& models) : segmenter_(LoadNeuralSegmenter(models)) {
  if (segmenter_ == nullptr) segmenter_ = std::make_unique<HogSegmenter>();
}

void PersonFilter::Transform(const cv::Mat& in, cv::Mat& out) {
  cv::Mat picture;
  cv::cvtColor(in, picture, cv::COLOR_BGRA2BGR);
  const cv::Size size = WorkingSize(in.size());
  if (size != in.size()) cv::resize(picture, picture, size, 0, 0, cv::INTER_AREA);

  const std::lock_guard lock(mutex_);
  if (!SamePixels(picture, last_picture_)) {
    last_mask_ = segmenter_->Segment(picture);
    last_picture_ = picture;
  }
  cv::Mat mask = last_mask_;
  if (mask.size() != out.size()) cv::resize(mask, mask, out.size(), 0, 0, cv::INTER_NEAREST);
  cv::merge(std::vector<cv::Mat>(4, mask), out);
}

}  // namespace krv
