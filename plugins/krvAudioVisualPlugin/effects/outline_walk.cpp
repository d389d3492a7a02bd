#include "effects/outline_walk.h"

#include <algorithm>
#include <cmath>

namespace krv {
namespace {

double Distance(const cv::Point& a, const cv::Point& b) { return std::hypot(b.x - a.x, b.y - a.y); }

const cv::Point& CornerAfter(const Outline& outline, size_t index) {
  return outline[index + 1 < outline.size() ? index + 1 : 0];
}

void PlacePoints(const Outline& outline, int spacing, size_t count,
                 std::vector<cv::Point2f>& points) {
  size_t corner = 0;
  double corner_at = 0;  // the way from the first corner to this one
  double segment = Distance(outline[0], CornerAfter(outline, 0));
  for (size_t i = 0; i < count; ++i) {
    const double at = static_cast<double>(i) * spacing;
    while (at - corner_at >= segment && corner + 1 < outline.size()) {
      corner_at += segment;
      ++corner;
      segment = Distance(outline[corner], CornerAfter(outline, corner));
    }
    const cv::Point2d from = outline[corner];
    const cv::Point2d to = CornerAfter(outline, corner);
    points.emplace_back(segment > 0 ? from + (to - from) * ((at - corner_at) / segment) : from);
  }
}

// (1, 0) for no direction.
cv::Point2f Unit(const cv::Point2f& direction) {
  const double length = cv::norm(direction);
  return length > 0 ? cv::Point2f(direction / length) : cv::Point2f(1, 0);
}

cv::Point2f NormalOf(const cv::Point2f& before, const cv::Point2f& point,
                     const cv::Point2f& after) {
  const cv::Point2f along = after - before;
  // The shape is on the left of the way, as the picture is seen, so its outside is on the right.
  return along == cv::Point2f() ? Unit(point - before) : Unit({-along.y, along.x});
}

}  // namespace

double OutlineLength(const Outline& outline) {
  double length = 0;
  for (size_t i = 0; i < outline.size(); ++i) {
    length += Distance(outline[i], CornerAfter(outline, i));
  }
  return length;
}

size_t PointsOnLength(double length, int spacing) {
  return static_cast<size_t>(std::max(1.0, std::ceil(length / spacing)));
}

size_t WalkOutline(const Outline& outline, int spacing, OutlinePoints& result) {
  const size_t count = PointsOnLength(OutlineLength(outline), spacing);
  std::vector<cv::Point2f> points;
  points.reserve(count);
  PlacePoints(outline, spacing, count, points);
  result.normals.clear();
  result.normals.reserve(count);
  for (size_t i = 0; i < count; ++i) {
    result.normals.push_back(
        NormalOf(points[(i + count - 1) % count], points[i], points[(i + 1) % count]));
  }
  result.points = std::move(points);
  return count;
}

}  // namespace krv
