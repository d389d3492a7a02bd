// How large, how far apart and where the points along a mask's outlines are.
#pragma once

#include <opencv2/core.hpp>

#include "effects/mask_outlines.h"

namespace krv {

// The package's parameters of those names, as the host sets them.
struct PointStyle {
  float size;        // factor
  float gap;         // factor
  float max_length;  // pixels of the working mask that a point may move outwards
};

// Any value may be huge, infinite or NaN when a parameter is or when there is no outline.
struct MaskShapeSizes {
  double spacing;    // from point to point, pixels of the working mask
  float point_size;  // fraction of the working mask's shorter side
  // The part of the picture that points may reach, fractions of the working mask; not limited to 0
  // to 1.
  float region_x1;
  float region_x2;
  float region_y1;
  float region_y2;
};

// From the shortest side of any outline, at least 30 pixels, come the points' size, 0.3 of it times
// the factor, and the gap, 0.4 of it times the factor; the spacing is half a size and a gap.
MaskShapeSizes SizesFor(const OutlineExtent& extent, cv::Size working_mask,
                        const PointStyle& style);

// The spacing as points can be placed: whole pixels, 1 to 2^20, and 1 for NaN.
int WholeSpacing(double spacing);

}  // namespace krv
