// The flat geometry shader's pictures, worked out on the CPU in double precision by the plain
// definitions: rays through rotated corners, every block of every column, every sample of every
// pulse.
#pragma once

#include "shaders/flat_figure.h"
#include "shaders/reference_math.h"
#include "shaders/shader_canvas.h"

namespace krv::test {

class FlatReference {
 public:
  // A picture of this size. level_shift is added to everything read from the spectrum.
  FlatReference(const FlatFigure& figure, int width, int height, double level_shift = 0);

  // The colour and alpha at a place in pixels; the first pixel's centre is (0.5, 0.5).
  Pixel At(double x, double y) const;

 private:
  struct Point {
    double x = 0, y = 0;
  };
  struct Hit {
    Point local;      // on the rectangle
    double distance;  // to the figure there
  };

  void PlaceRectangle();
  Vec3 RayThrough(double x, double y) const;
  Hit Cast(Vec3 ray) const;

  double Intensity(double u) const;
  double Value(double u) const;
  double ItemLevel(int item, int count) const;
  double VertexHeight(double u) const;
  double VertexOf(int item, int count) const;

  double Distance(Point p) const;
  double RowDistance(Point p, int count) const;
  double ItemDistance(Point p, int item, int count) const;
  double BarDistance(Point p, double level) const;
  double StrokeDistance(Point p, int item, int count) const;
  double CirclesDistance(Point p, double level) const;
  double BlocksDistance(Point p, double level) const;
  double PulsesDistance(Point p) const;
  double PulseCurve(double x, double half_width) const;

  double Coverage(double distance) const;
  std::array<double, 3> Color(Point p) const;

  const FlatFigure figure_;
  const double level_shift_;
  const double width_;
  const double height_;
  double aspect_ = 1;
  Vec3 corner_, right_, up_;
  double quad_width_ = 0;
  double quad_height_ = 0;
};

// ExpectMatches with this figure's reference.
void ExpectMatches(const Picture& drawn, const FlatFigure& figure, double tolerance);

}  // namespace krv::test
