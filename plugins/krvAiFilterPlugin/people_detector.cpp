#include "people_detector.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>
#include <tuple>

namespace krv {
namespace {

// The window has 64 x 128 pixels, so small pictures are enlarged until the smallest people that
// matter fill it.
constexpr double kEnlargedShorterSide = 360;
constexpr double kMargin = 0.14;    // of the shorter side, so that windows reach out of the picture
constexpr double kScaleStep = 1.1;  // from one size of people to the next
constexpr double kLowestScore = -0.4;
const cv::Size kStride(8, 8);
constexpr double kHighestOverlap = 0.3;
constexpr double kMostCovered = 0.6;

bool IsSurer(const PersonWindow& a, const PersonWindow& b) {
  const auto key = [](const PersonWindow& window) {
    return std::tuple(-window.score, window.area.x, window.area.y, window.area.height);
  };
  return key(a) < key(b);
}

bool IsSamePerson(const cv::Rect2d& a, const cv::Rect2d& b) {
  return IntersectionOverUnion(a, b) > kHighestOverlap ||
         (a & b).area() > kMostCovered * std::min(a.area(), b.area());
}

}  // namespace

double IntersectionOverUnion(const cv::Rect2d& a, const cv::Rect2d& b) {
  const double shared = (a & b).area();
  return shared / (a.area() + b.area() - shared);
}

PeopleDetector::PeopleDetector() {
  hog_.setSVMDetector(cv::HOGDescriptor::getDefaultPeopleDetector());
}

std::vector<PersonWindow> PeopleDetector::Detect(const cv::Mat& picture) const {
  const int shorter = std::min(picture.cols, picture.rows);
  const double scale = std::max(1.0, kEnlargedShorterSide / shorter);
  const int margin = cvRound(kMargin * shorter * scale);
  cv::Mat enlarged;
  cv::resize(picture, enlarged, {}, scale, scale, cv::INTER_LINEAR);
  cv::copyMakeBorder(enlarged, enlarged, margin, margin, margin, margin, cv::BORDER_REPLICATE);
  std::vector<cv::Rect> areas;
  std::vector<double> scores;
  hog_.detectMultiScale(enlarged, areas, scores, kLowestScore, kStride, {}, kScaleStep, 0);

  std::vector<PersonWindow> windows;
  for (size_t i = 0; i < areas.size(); ++i) {
    const cv::Rect2d area = areas[i];
    windows.push_back({{(area.x - margin) / scale, (area.y - margin) / scale, area.width / scale,
                        area.height / scale},
                       scores[i]});
  }
  // Sizes are looked at side by side on several threads: the windows come in any order.
  std::sort(windows.begin(), windows.end(), IsSurer);
  std::vector<PersonWindow> people;
  for (const PersonWindow& window : windows) {
    const auto is_same = [&](const PersonWindow& other) {
      return IsSamePerson(window.area, other.area);
    };
    if (std::none_of(people.begin(), people.end(), is_same)) people.push_back(window);
  }
  return people;
}

}  // namespace krv
