#include "shaders/halo_geometry_reference.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace krv::test {
namespace {

constexpr double kEpsilon = 0.001;
constexpr double kEnd = 100;
constexpr double kPi = std::numbers::pi;

// A cylinder about the y axis.
double CappedCylinderDistance(Vec3 p, double half_height, double radius) {
  const double dx = std::hypot(p.x, p.z) - radius;
  const double dy = std::abs(p.y) - half_height;
  return std::min(std::max(dx, dy), 0.0) + std::hypot(std::max(dx, 0.0), std::max(dy, 0.0));
}

int Wrapped(int i, int n) { return (i % n + n) % n; }

}  // namespace

HaloGeometryReference::HaloGeometryReference(const HaloGeometryFigure& figure, int width,
                                             int height, double level_shift)
    : figure_(figure), ring_(figure, width, height, level_shift) {
  for (int j = 0; j < 21 * figure.ECG_count; ++j) trace_.push_back(TracePoint(j));
}

double HaloGeometryReference::Radians() const { return ring_.Turn(2 * kPi); }

Pixel HaloGeometryReference::At(double x, double y) const {
  if (figure_.radius == 0) return {0, 0, 0, 1};
  const Vec3 ray = ring_.RayThrough(x, y);
  const Found found = Cast(ray);
  return FigurePixel(figure_, Color(ring_.eye() + ray * found.depth),
                     Coverage(std::max(kEpsilon, found.distance)));
}

HaloGeometryReference::Found HaloGeometryReference::Cast(Vec3 ray) const {
  if (figure_.geometry_type == 1) return CastAtTrace(ray);
  bool meets = false;
  const double depth = ring_.PlaneDepth(ray, &meets);
  double distance = kEnd;
  if (meets && figure_.geometry_type == 0) distance = PointsDistance(ring_.eye() + ray * depth);
  if (meets && figure_.geometry_type == 2) distance = PulsesDistance(ring_.eye() + ray * depth);
  return {std::abs(depth), distance};
}

double HaloGeometryReference::PointsDistance(Vec3 p) const {
  const int n = figure_.point_count;
  if (n <= 0) return kEnd;
  const double gap = 360.0 / n;
  const double sign = figure_.point_direction == 0 ? 1 : -1;
  const double base = Radians() - kPi / 2;
  const double angle = Mod(Degrees(std::atan2(-p.z, p.x) - base), 360);
  const int cell = static_cast<int>(std::floor(angle / gap));
  double nearest = kEnd;
  for (int k = cell - 2; k <= cell + 2; ++k) {
    const int i = Wrapped(k, n);
    const double from_centre =
        figure_.radius + 3 * ring_.Intensity(static_cast<double>(i) / n) * sign;
    const Vec3 point = TurnY({from_centre, 0, 0}, test::Radians(i * gap) + base);
    nearest =
        std::min(nearest, CappedCylinderDistance(p - point, kEpsilon, figure_.point_size * 0.25));
  }
  return nearest;
}

Vec3 HaloGeometryReference::TracePoint(int j) const {
  static constexpr std::array<double, 21> kWeights = {
      0, 0, 0, 0, 0.35, 0, -0.4, 0, 1, 0, -0.2, 0, 0.65, 0, -0.75, 0, 0.15, 0, 0, 0, 0};
  const int points = 21 * figure_.ECG_count;
  const double level = ring_.Intensity(static_cast<double>(j / 21) / figure_.ECG_count);
  const double from_centre = figure_.radius + 3 * level * kWeights[static_cast<size_t>(j % 21)];
  return TurnY({from_centre, 0, 0}, test::Radians(j * 360.0 / points) + Radians());
}

HaloGeometryReference::Found HaloGeometryReference::CastAtTrace(Vec3 ray) const {
  bool meets = false;
  Found found{std::abs(ring_.PlaneDepth(ray, &meets)), kEnd};
  const auto points = static_cast<int>(trace_.size());
  if (points == 0) return found;
  int first = 0;
  int last = points - 1;
  if (ray.y != 0) {
    const Vec3 p = ring_.eye() + ray * found.depth;
    const double angle = Mod(Degrees(std::atan2(-p.z, p.x) - Radians()), 360);
    const int cell = static_cast<int>(std::floor(angle / (360.0 / points)));
    first = cell - 10;
    last = cell + 10;
  }
  for (int k = first; k <= last && found.distance >= 0; ++k) {
    const Vec3 a = trace_[static_cast<size_t>(Wrapped(k, points))];
    const Vec3 b = trace_[static_cast<size_t>(Wrapped(k + 1, points))];
    const double length = std::sqrt(Dot(b - a, b - a));
    const Vec3 e = Normalize(b - a);
    const Vec3 ao = a - ring_.eye();
    const double d0 = Dot(ray, e);
    const double s = std::clamp((d0 * Dot(ray, ao) - Dot(e, ao)) / (1 - d0 * d0), 0.0, length);
    const Vec3 q = a + e * s - ring_.eye();
    const Vec3 miss = Cross(q, ray);
    const double distance = std::sqrt(Dot(miss, miss)) - figure_.ECG_line_width * 0.1;
    if (distance < found.distance) found = {Dot(q, ray), distance};
  }
  return found;
}

double HaloGeometryReference::PulseCurve(double x) const {
  const int n = figure_.pulse_count;
  const double step = 360.0 / n;
  const double width = step * figure_.pulse_width * 0.1;
  const double first = std::floor((x - 2 * width) / 360 * n);
  const double last = std::ceil(x / 360 * n);
  double curve = 0;
  for (double i = first; i <= last; ++i) {
    const bool outermost = i == 0 || i == n - 1;
    const double half_width = outermost && width > step ? step / 2 : width / 2;
    curve += ring_.Intensity(i / n) * CubicPulse(i * step + step / 2, half_width, 1, x);
  }
  return curve * 3;
}

double HaloGeometryReference::PulsesDistance(Vec3 p) const {
  if (figure_.pulse_count <= 0) return kEnd;
  const double angle = Mod(Degrees(std::atan2(-p.z, p.x) + Radians()), 360);
  const double spacing = figure_.pulse_fill ? 0.001 : figure_.pulse_line_width * 0.2;
  const double from_centre = std::hypot(p.x, p.z);
  double distance = kEnd;
  for (int sample = -7; sample <= 7; ++sample) {
    const double top = figure_.radius + PulseCurve(angle + sample * spacing);
    if (!figure_.pulse_fill) {
      distance = std::min(distance, std::abs(from_centre - top) - 0.1 * figure_.pulse_line_width);
    } else if (from_centre > top) {
      distance = std::min(distance, from_centre - top);
    } else if (from_centre < figure_.radius) {
      distance = std::min(distance, (figure_.radius - 0.02) - from_centre);
    } else {
      distance = 0;
    }
  }
  return distance;
}

double HaloGeometryReference::Coverage(double distance) const {
  const double nearness = kEpsilon / distance;
  if (figure_.glow != 0) return GlowCoverage(figure_, nearness, 0.4);
  if (figure_.geometry_type == 2) return LineCoverage(nearness);
  return std::min(1.0, std::pow(3.5 * nearness, 1.5));
}

std::array<double, 3> HaloGeometryReference::Color(Vec3 place) const {
  if (figure_.single_color == 1) return SingleColor(figure_);
  double angle = Degrees(std::atan2(place.x, place.z) - Radians());
  if (figure_.use_gradient_color && figure_.geometry_type == 0) {
    const double sign = figure_.point_direction == 0 ? 1 : -1;
    const double ring = figure_.radius + figure_.radius * 0.5 * ring_.Intensity(0) * sign;
    angle += 360 * (figure_.point_size * 0.5 + 2.5 * kEpsilon) / (2 * kPi * ring);
  }
  angle = Mod(angle, 360);
  if (figure_.use_gradient_color) return GradientColor(figure_, std::clamp(angle / 360, 0.0, 1.0));
  return HueColor(angle / 360);
}

void ExpectMatches(const Picture& drawn, const HaloGeometryFigure& figure,
                   const Tolerance& tolerance) {
  ExpectMatchesReference<HaloGeometryReference>(drawn, figure, tolerance);
}

}  // namespace krv::test
