#include "demo_picture.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <opencv2/imgproc.hpp>

namespace krv::demo {
namespace {

constexpr int kShrink = 3;  // the soft picture is drawn this much smaller
constexpr int kDiscs = 34;
constexpr double kTurn = 2 * std::numbers::pi;

const cv::Scalar kColours[] = {{0.95, 0.45, 0.25},
                               {0.90, 0.30, 0.55},
                               {0.55, 0.35, 0.95},
                               {0.35, 0.55, 1.00},
                               {0.80, 0.75, 0.30}};

// Stays in [-margin, 1 + margin), coming in again on the other side.
double Wrap(double place, double margin) {
  const double span = 1 + 2 * margin;
  const double moved = std::fmod(place + margin, span);
  return (moved < 0 ? moved + span : moved) - margin;
}

}  // namespace

DemoPicture::DemoPicture(int width, int height)
    : width_(width),
      height_(height),
      canvas_(height / kShrink, width / kShrink, CV_32FC3),
      grain_(height, width, CV_32FC3) {
  cv::RNG random(20);
  for (int i = 0; i < kDiscs; ++i) {
    const double size = random.uniform(0.0, 1.0);
    discs_.push_back({{random.uniform(0.0, 1.0), random.uniform(0.0, 1.0)},
                      {random.uniform(-0.012, 0.012), random.uniform(-0.022, -0.004)},
                      0.03 + 0.13 * size * size,
                      random.uniform(0.06, 0.22),
                      random.uniform(0.0, kTurn),
                      kColours[static_cast<size_t>(random.uniform(0, 5))]});
  }
  random.fill(grain_, cv::RNG::UNIFORM, -0.5 / 255, 0.5 / 255);
}

void DemoPicture::DrawGradient(double seconds) {
  const double angle = 0.9 + 0.25 * std::sin(seconds * kTurn / 24);
  const cv::Vec3d dark(0.075, 0.035, 0.030);
  const cv::Vec3d deep(0.290, 0.130, 0.110);
  const cv::Vec3d warm(0.215, 0.075, 0.190);
  for (int y = 0; y < canvas_.rows; ++y) {
    auto* row = canvas_.ptr<cv::Vec3f>(y);
    for (int x = 0; x < canvas_.cols; ++x) {
      const double u = static_cast<double>(x) / canvas_.cols - 0.5;
      const double v = static_cast<double>(y) / canvas_.rows - 0.5;
      const double along = 0.5 + u * std::cos(angle) + v * std::sin(angle);
      const double across = 0.5 - u * std::sin(angle) + v * std::cos(angle);
      const double vignette = 1 - 0.9 * (u * u + v * v);
      const cv::Vec3d colour = dark + (deep - dark) * along + (warm - dark) * (0.6 * across);
      row[x] = cv::Vec3f(colour * vignette);
    }
  }
}

void DemoPicture::DrawDisc(const Disc& disc, double seconds) {
  const double margin = 0.2;
  const double x = Wrap(disc.place.x + disc.motion.x * seconds, margin);
  const double y = Wrap(disc.place.y + disc.motion.y * seconds, margin);
  const double breath = 0.75 + 0.25 * std::sin(disc.phase + seconds * kTurn / 7);
  const double radius = disc.radius * canvas_.rows;
  // Small discs are far away and in focus, large ones near and soft.
  const double edge = 1.2 + radius * 0.22;
  const cv::Point2d centre(x * canvas_.cols, y * canvas_.rows);
  const int reach = static_cast<int>(radius + edge) + 1;
  const cv::Rect box = cv::Rect(static_cast<int>(centre.x) - reach,
                                static_cast<int>(centre.y) - reach, 2 * reach, 2 * reach) &
                       cv::Rect(0, 0, canvas_.cols, canvas_.rows);
  for (int row = box.y; row < box.y + box.height; ++row) {
    auto* pixels = canvas_.ptr<cv::Vec3f>(row);
    for (int column = box.x; column < box.x + box.width; ++column) {
      const double distance = std::hypot(column - centre.x, row - centre.y);
      const double share = std::clamp((radius + edge - distance) / (2 * edge), 0.0, 1.0);
      const double inside = share * share * (3 - 2 * share);
      const double rim = 0.75 + 0.25 * std::min(1.0, distance / radius);
      const double light = disc.light * breath * inside * rim;
      for (int c = 0; c < 3; ++c) pixels[column][c] += static_cast<float>(light * disc.colour[c]);
    }
  }
}

void DemoPicture::Draw(double seconds, host::Picture* out) {
  DrawGradient(seconds);
  for (const Disc& disc : discs_) DrawDisc(disc, seconds);
  cv::Mat full;
  cv::resize(canvas_, full, cv::Size(width_, height_), 0, 0, cv::INTER_CUBIC);
  full += grain_;
  cv::Mat bytes;
  full.convertTo(bytes, CV_8UC3, 255);
  out->Resize(width_, height_);
  cv::Mat target(height_, width_, CV_8UC4, out->Row(0), static_cast<size_t>(out->stride()));
  cv::cvtColor(bytes, target, cv::COLOR_BGR2BGRA);
}

}  // namespace krv::demo
