#include "effects/folded_figure.h"

#include <algorithm>

#include "effects/draw_uniforms.h"

namespace krv {

int RoomForEntries(size_t count) {
  for (const int room : {64, 256}) {
    if (count <= static_cast<size_t>(room)) return room;
  }
  return kMostEntries;
}

int Coloring(DrawUniforms& uniforms) {
  if (uniforms.Int("single_color") == 1) return 0;
  if (!uniforms.Bool("use_gradient_color")) return 1;
  return uniforms.Int("gradient_color_direction") == 0 ? 2 : 3;
}

int FoldGradient(int coloring, const cv::Mat& gradient, FoldedFigure& figure) {
  if (coloring < 2) return 0;
  const int count = gradient.cols;
  if (count < 2 || count > kMostStops) return 0;
  const auto* texels = gradient.ptr<cv::Vec4b>(0);
  const auto later = [](const cv::Vec4b& one, const cv::Vec4b& other) { return one[3] < other[3]; };
  if (!std::is_sorted(texels, texels + count, later)) return 0;
  for (int i = 0; i < count; ++i) {
    constexpr std::array<int, 4> kChannels = {2, 1, 0, 3};  // stored as blue, green, red, position
    for (int k = 0; k < 4; ++k) {
      figure.stops[static_cast<size_t>(4 * i + k)] =
          static_cast<float>(texels[i][kChannels[static_cast<size_t>(k)]]) / 255.0f;
    }
  }
  return count - 1;
}

bool HasItsGradient(int coloring, const cv::Mat& gradient, DrawUniforms& uniforms) {
  return coloring < 2 || gradient.cols == uniforms.Int("gradient_color_count");
}

}  // namespace krv
