// The halo spectrum shader's pictures, worked out on the CPU in double precision by the plain
// definitions: every segment between its own two angles.
#pragma once

#include "shaders/expect_matches.h"
#include "shaders/halo_reference.h"

namespace krv::test {

class HaloSpectrumReference {
 public:
  // A picture of this size. level_shift is added to everything read from the spectrum.
  HaloSpectrumReference(const HaloSpectrumFigure& figure, int width, int height,
                        double level_shift = 0);

  // The colour and alpha at a place in pixels; the first pixel's centre is (0.5, 0.5).
  Pixel At(double x, double y) const;

 private:
  struct Point {
    double x = 0, y = 0;
  };
  struct Band {
    double inner, outer;
  };

  static double PieDistance(Point p, double from, double to, double radius);
  static double CapsuleDistance(Point p, double inner_radius, double outer_radius, double length);

  double Radians() const;  // the turn of the figure
  double Gap() const;      // degrees
  double Step() const;     // degrees
  double FilledTurn() const;
  Band WidestBand() const;
  Band SegmentBand(double level) const;
  double Distance(Point p) const;
  double SegmentDistance(Point p, double axis, Band band) const;

  double Coverage(double distance) const;
  std::array<double, 3> Color(Vec3 place) const;

  const HaloSpectrumFigure figure_;
  const HaloReference ring_;
};

// ExpectMatches with this figure's reference.
void ExpectMatches(const Picture& drawn, const HaloSpectrumFigure& figure,
                   const Tolerance& tolerance);

}  // namespace krv::test
