#include "effects/shape_mask_algo_point_normal.h"

#include <algorithm>
#include <cstddef>
#include <future>
#include <numeric>
#include <vector>

#include "effects/outline_walk.h"
#include "graphics/px_image.h"

namespace krv {
namespace {

constexpr size_t kMostPoints = kWidestTexture;
// A noisy mask has thousands of outlines. So many tasks start threads, the others run when they are
// waited for.
constexpr size_t kMostThreads = 16;

std::vector<double> LengthsOf(const Outlines& outlines) {
  std::vector<double> lengths(outlines.size());
  std::transform(outlines.begin(), outlines.end(), lengths.begin(), OutlineLength);
  return lengths;
}

// The indices of the longest outlines that may have a point each, in their order.
std::vector<size_t> ChooseOutlines(const std::vector<double>& lengths) {
  std::vector<size_t> chosen(lengths.size());
  std::iota(chosen.begin(), chosen.end(), size_t{0});
  if (chosen.size() <= kMostPoints) return chosen;
  std::stable_sort(chosen.begin(), chosen.end(),
                   [&](size_t a, size_t b) { return lengths[a] > lengths[b]; });
  chosen.resize(kMostPoints);
  std::sort(chosen.begin(), chosen.end());
  return chosen;
}

// The smallest spacing, from `spacing` upwards in steps of an eighth, at which the points fit.
int FittingSpacing(const std::vector<double>& lengths, const std::vector<size_t>& chosen,
                   int spacing) {
  const auto too_many = [&] {
    size_t points = 0;
    for (const size_t i : chosen) points += PointsOnLength(lengths[i], spacing);
    return points > kMostPoints;
  };
  while (too_many()) spacing += spacing / 8 + 1;
  return spacing;
}

void AppendPoints(const OutlinePoints& outline, cv::Size mask, cv::Vec4f* texel) {
  const auto width = static_cast<float>(mask.width);
  const auto height = static_cast<float>(mask.height);
  for (size_t i = 0; i < outline.points.size(); ++i) {
    const cv::Point2f& point = outline.points[i];
    const cv::Point2f& normal = outline.normals[i];
    texel[i] = {point.x / width, point.y / height, normal.x, normal.y};
  }
}

}  // namespace

ShapeMaskAlgo_Point_Normal::ShapeMaskAlgo_Point_Normal(int spacing)
    : spacing_(std::max(spacing, 1)) {}

void ShapeMaskAlgo_Point_Normal::FindPoints(const cv::Mat& mask, const Outlines& outlines,
                                            cv::Mat& points) {
  points.release();
  const std::vector<double> lengths = LengthsOf(outlines);
  const std::vector<size_t> chosen = ChooseOutlines(lengths);
  const int spacing = FittingSpacing(lengths, chosen, spacing_);

  std::vector<OutlinePoints> results(chosen.size());  // outlives the tasks, which write into it
  std::vector<std::future<size_t>> tasks;
  tasks.reserve(chosen.size());
  for (size_t i = 0; i < chosen.size(); ++i) {
    const auto policy = i < kMostThreads ? std::launch::async : std::launch::deferred;
    tasks.push_back(
        std::async(policy, [&outline = outlines[chosen[i]], spacing, &result = results[i]] {
          return WalkOutline(outline, spacing, result);
        }));
  }
  size_t count = 0;
  for (auto& task : tasks) count += task.get();
  if (count == 0) return;

  points.create(1, static_cast<int>(count), CV_32FC4);
  auto* texel = points.ptr<cv::Vec4f>();
  for (const OutlinePoints& result : results) {
    AppendPoints(result, mask.size(), texel);
    texel += result.points.size();
  }
}

}  // namespace krv
