// What the references of the two halo shaders share: the camera by its rotation matrices, one
// sample of the ring's level at a time.
#pragma once

#include "shaders/halo_figure.h"
#include "shaders/reference_math.h"
#include "shaders/shader_canvas.h"

namespace krv::test {

class HaloReference {
 public:
  HaloReference(const HaloFigure& figure, int width, int height, double level_shift);

  // Where the camera stands.
  const Vec3& eye() const { return eye_; }

  // The direction of the ray through a place in pixels, of length 1.
  Vec3 RayThrough(double x, double y) const;

  // The distance to the plane y = 0 along the ray, negative behind the camera; 0 for a ray along
  // the plane, which sets *meets to false.
  double PlaneDepth(Vec3 ray, bool* meets) const;

  // The level at u round the ring, 0..1.
  double Intensity(double u) const;

  // The turn of the figure in radians, cut at `limit`.
  double Turn(double limit) const;

 private:
  void AimCamera();

  const HaloFigure figure_;
  const double level_shift_;
  const double width_;
  const double height_;
  Vec3 eye_, right_, up_, forward_;
};

}  // namespace krv::test
