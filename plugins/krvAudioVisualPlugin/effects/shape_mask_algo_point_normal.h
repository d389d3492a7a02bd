// Points at equal distances along every outline, with their normals.
#pragma once

#include "effects/shape_mask_algo.h"

namespace krv {

// See WalkOutline for where points and normals are. The spacing grows where there would be more
// points than a texture holds; when there are more outlines than that, the shortest are left out.
class ShapeMaskAlgo_Point_Normal : public ShapeMaskAlgo {
 public:
  // `spacing` is in pixels of the mask; below 1 counts as 1.
  explicit ShapeMaskAlgo_Point_Normal(int spacing);

  void FindPoints(const cv::Mat& mask, const Outlines& outlines, cv::Mat& points) override;

 private:
  int spacing_;
};

}  // namespace krv
