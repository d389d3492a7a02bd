// Points along one outline.
#pragma once

#include <cstddef>
#include <opencv2/core.hpp>
#include <vector>

#include "effects/mask_outlines.h"

namespace krv {

// One normal, of length 1, for each point.
struct OutlinePoints {
  std::vector<cv::Point2f> points;  // pixels
  std::vector<cv::Point2f> normals;
};

// The way round a closed outline, in pixels.
double OutlineLength(const Outline& outline);

// How many points stand on a closed way of that length, the first one at its start. At least 1.
size_t PointsOnLength(double length, int spacing);

// Fills `result` with points `spacing` pixels, at least 1, apart along the outline, which is not
// empty: the first on the first corner, the spacing running on across corners and back to the first
// corner, where the last piece may be shorter. A normal is perpendicular to the line between the
// point's two neighbours and points out of the shape. Where the neighbours are one place, as at the
// end of a line, it points away from them; the normal of a point alone is (1, 0). Returns the
// number of points.
size_t WalkOutline(const Outline& outline, int spacing, OutlinePoints& result);

}  // namespace krv
