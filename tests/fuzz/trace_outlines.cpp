#include <cmath>
#include <cstring>

#include "effects/mask_outlines.h"
#include "effects/mask_shape_sizes.h"
#include "effects/shape_mask_algo_point_normal.h"
#include "fuzz/require.h"
#include "fuzz/targets.h"
#include "graphics/px_image.h"

namespace krv::fuzz {
namespace {

constexpr size_t kHeader = 1 + sizeof(float);

// The upper half of a pixel's byte is its alpha, the lower its colour.
cv::Mat MaskOf(std::string_view pixels, int width) {
  const int height = static_cast<int>(pixels.size()) / width;
  cv::Mat mask(height, width, CV_8UC4);
  for (int i = 0; i < width * height; ++i) {
    const auto byte = static_cast<uint8_t>(pixels[static_cast<size_t>(i)]);
    const auto color = static_cast<uint8_t>((byte & 15) * 17);
    mask.at<cv::Vec4b>(i / width, i % width) = {color, color, color,
                                                static_cast<uint8_t>((byte >> 4) * 17)};
  }
  return mask;
}

void CheckPoints(const cv::Mat& points) {
  Require(points.cols <= kWidestTexture, "the points fit a texture");
  for (int i = 0; i < points.cols; ++i) {
    const auto& point = points.at<cv::Vec4f>(0, i);
    Require(point[0] >= 0 && point[0] < 1 && point[1] >= 0 && point[1] < 1,
            "points are in the mask");
    Require(std::abs(std::hypot(point[2], point[3]) - 1) < 1e-3f, "normals have the length 1");
  }
}

}  // namespace

void TraceOutlines(std::string_view bytes) {
  if (bytes.size() <= kHeader) return;
  const int width = 1 + static_cast<uint8_t>(bytes.front()) % 128;
  PointStyle style{};
  std::memcpy(&style.size, bytes.data() + 1, sizeof(float));
  const cv::Mat mask = MaskOf(bytes.substr(kHeader), width);
  if (mask.empty()) return;

  const Outlines outlines = FindOutlines(mask);
  const MaskShapeSizes sizes = SizesFor(ExtentOf(outlines), mask.size(), style);
  cv::Mat points;
  ShapeMaskAlgo_Point_Normal(WholeSpacing(sizes.spacing)).FindPoints(mask, outlines, points);
  Require(points.empty() == outlines.empty(), "every shape has points");
  CheckPoints(points);
}

}  // namespace krv::fuzz
