// The halo geometry shader's pictures, worked out on the CPU in double precision by the plain
// definitions: every point placed by its own rotation, every stroke of the trace in space, every
// sample of the pulses with the pulses it knows.
#pragma once

#include <vector>

#include "shaders/expect_matches.h"
#include "shaders/halo_reference.h"

namespace krv::test {

class HaloGeometryReference {
 public:
  // A picture of this size. level_shift is added to everything read from the spectrum.
  HaloGeometryReference(const HaloGeometryFigure& figure, int width, int height,
                        double level_shift = 0);

  // The colour and alpha at a place in pixels; the first pixel's centre is (0.5, 0.5).
  Pixel At(double x, double y) const;

 private:
  struct Found {
    double depth;  // along the ray
    double distance;
  };

  double Radians() const;  // the turn of the figure
  Found Cast(Vec3 ray) const;
  double PointsDistance(Vec3 p) const;
  Vec3 TracePoint(int j) const;
  Found CastAtTrace(Vec3 ray) const;
  double PulseCurve(double x) const;
  double PulsesDistance(Vec3 p) const;

  double Coverage(double distance) const;
  std::array<double, 3> Color(Vec3 place) const;

  const HaloGeometryFigure figure_;
  const HaloReference ring_;
  std::vector<Vec3> trace_;  // the points of the ECG
};

// ExpectMatches with this figure's reference.
void ExpectMatches(const Picture& drawn, const HaloGeometryFigure& figure,
                   const Tolerance& tolerance);

}  // namespace krv::test
