#include "effects/mask_shape_sizes.h"

#include <algorithm>
#include <cmath>

namespace krv {

MaskShapeSizes SizesFor(const OutlineExtent& extent, cv::Size working_mask,
                        const PointStyle& style) {
  const float base = std::max(30.0f, extent.min_side);
  const auto size = static_cast<float>(base * style.size * 0.3);
  const auto gap = static_cast<float>(base * style.gap * 0.4);
  const auto width = static_cast<float>(working_mask.width);
  const auto height = static_cast<float>(working_mask.height);
  const float reach = style.max_length;
  return {.spacing = size * 0.5 + gap,
          .point_size = size / std::min(width, height),
          .region_x1 = (extent.min_x - size - reach) / width,
          .region_x2 = (extent.max_x + size + reach) / width,
          .region_y1 = (extent.min_y - size - reach) / height,
          .region_y2 = (extent.max_y + size + reach) / height};
}

int WholeSpacing(double spacing) {
  constexpr double kWidest = 1 << 20;
  return std::isnan(spacing) ? 1 : static_cast<int>(std::clamp(spacing, 1.0, kWidest));
}

}  // namespace krv
