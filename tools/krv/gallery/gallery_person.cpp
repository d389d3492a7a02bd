#include "gallery/gallery_person.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <opencv2/imgproc.hpp>
#include <utility>

#include "media/still_source.h"

namespace krv::tool {
namespace {

cv::Mat AsMat(host::Picture* picture) {
  return {picture->height(), picture->width(), CV_8UC4, picture->Row(0),
          static_cast<size_t>(picture->stride())};
}

// Places in shares of the height, x from the middle.
class Figure {
 public:
  explicit Figure(cv::Mat mask) : mask_(std::move(mask)) {}

  void Draw(double seconds) {
    constexpr double kSwing = 1.5;  // seconds; twice in the clip, which is shown in a loop
    const double swing = std::sin(2 * std::numbers::pi * seconds / kSwing);
    Limb({0, 0.47}, {0, 0.85}, 0.22);
    Limb({-0.08, 0.9}, {-0.12, 1.2}, 0.14);
    Limb({0.08, 0.9}, {0.12, 1.2}, 0.14);
    Limb({0, 0.3}, {0, 0.42}, 0.1);
    Limb({-0.1, 0.46}, {-0.27, 0.42 + 0.12 * swing}, 0.08);
    Limb({0.1, 0.46}, {0.27, 0.42 - 0.12 * swing}, 0.08);
    cv::circle(mask_, At({0, 0.29}), Pixels(0.1), kWhite, cv::FILLED, cv::LINE_AA);
  }

 private:
  static inline const cv::Scalar kWhite = cv::Scalar::all(255);

  int Pixels(double share) const { return static_cast<int>(std::lround(share * mask_.rows)); }
  cv::Point At(const cv::Point2d& place) const {
    return {mask_.cols / 2 + Pixels(place.x), Pixels(place.y)};
  }
  void Limb(const cv::Point2d& from, const cv::Point2d& to, double width) {
    cv::line(mask_, At(from), At(to), kWhite, std::max(1, Pixels(width)), cv::LINE_AA);
  }

  cv::Mat mask_;
};

// Blue, green, red: nearly black, so that the figure's light stands out.
const cv::Scalar kSkin(24, 16, 20, 255);

}  // namespace

RenderJob WithPerson(const RenderJob& frame, double seconds) {
  RenderJob job;
  job.index = frame.index;
  job.samples = frame.samples;
  job.span = frame.span;
  host::CopyPicture(frame.input, &job.input);
  job.mask.Resize(job.input.width(), job.input.height());
  job.mask.Fill(0, 0, 0, 0);
  Figure(AsMat(&job.mask)).Draw(seconds);

  cv::Mat picture = AsMat(&job.input);
  cv::Mat share;
  AsMat(&job.mask).convertTo(share, CV_32F, 1 / 255.0);
  cv::Mat blended;
  picture.convertTo(blended, CV_32F);
  cv::Mat skin(picture.size(), CV_32FC4, kSkin);
  blended += (skin - blended).mul(share);
  blended.convertTo(picture, CV_8U);
  return job;
}

}  // namespace krv::tool
