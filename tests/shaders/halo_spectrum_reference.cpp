#include "shaders/halo_spectrum_reference.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace krv::test {
namespace {

constexpr double kEpsilon = 0.01;
constexpr double kEnd = 100;
constexpr double kPi = std::numbers::pi;

}  // namespace

HaloSpectrumReference::HaloSpectrumReference(const HaloSpectrumFigure& figure, int width,
                                             int height, double level_shift)
    : figure_(figure), ring_(figure, width, height, level_shift) {}

double HaloSpectrumReference::Radians() const { return ring_.Turn(360); }

double HaloSpectrumReference::Step() const { return 360.0 / std::max(figure_.step_num, 1); }

double HaloSpectrumReference::Gap() const {
  return figure_.gap_degree >= Step() ? Step() - 0.1 : figure_.gap_degree;
}

double HaloSpectrumReference::FilledTurn() const { return 2 * kPi * ((Step() - Gap()) / 360); }

Pixel HaloSpectrumReference::At(double x, double y) const {
  if (figure_.radius == 0) return {0, 0, 0, 1};
  const Vec3 ray = ring_.RayThrough(x, y);
  bool meets = false;
  const double depth = ring_.PlaneDepth(ray, &meets);
  const Vec3 place = ring_.eye() + ray * std::abs(depth);
  const double distance = meets ? Distance({place.x, -place.z}) : kEnd;
  return FigurePixel(figure_, Color(place), Coverage(std::max(kEpsilon, distance)));
}

// The band that the segments may fill.
HaloSpectrumReference::Band HaloSpectrumReference::WidestBand() const {
  const double radius = figure_.radius;
  const double stroke = 0.02 * figure_.stroke_width;
  const double s = radius + 3;
  Band band{std::max(radius - (s + stroke) / 2, 0.0),
            std::min(radius + (s + stroke) / 2, radius + 3)};
  if (figure_.direction == 0) band = {0, radius};
  if (figure_.direction == 1) band = {radius, std::min(radius + s + stroke, radius + 3)};
  if (figure_.round == 1) {
    const double cap = band.outer * FilledTurn() / 2;
    band = {band.inner - cap, band.outer + cap};
  }
  return band;
}

HaloSpectrumReference::Band HaloSpectrumReference::SegmentBand(double level) const {
  const double radius = figure_.radius;
  const double length = (radius + 3) * level + 0.02 * figure_.stroke_width;
  if (figure_.direction == 0) return {std::max(radius - length, 0.0), radius};
  if (figure_.direction == 1) return {radius, std::min(radius + length, 2.2 * radius)};
  return {std::max(radius - length / 2, 0.0), std::min(radius + length / 2, 1.6 * radius)};
}

double HaloSpectrumReference::Distance(Point p) const {
  const int n = figure_.step_num;
  if (n <= 0) return kEnd;
  const double angle = Mod(Degrees(std::atan2(p.y, p.x) - (Radians() - kPi / 2)), 360);
  const int cell = static_cast<int>(std::floor(angle / Step()));
  double nearest = kEnd;
  for (int k = cell - 2; k <= cell + 2; ++k) {
    const double level = ring_.Intensity(static_cast<double>(k) / n);
    const double axis = test::Radians(Step() * Mod(k, n)) + Radians() - kPi / 2;
    nearest = std::min(nearest, SegmentDistance(p, axis, SegmentBand(level)));
  }
  return nearest;
}

double HaloSpectrumReference::SegmentDistance(Point p, double axis, Band band) const {
  const double length = band.outer - band.inner;
  if (figure_.round == 0) {
    const double half = test::Radians(Step() - Gap()) / 2;
    const double pie =
        PieDistance(p, Mod(axis - half, 2 * kPi), Mod(axis + half, 2 * kPi), band.outer);
    return std::max(0.0, std::max(-(std::hypot(p.x, p.y) - band.inner), pie));
  }
  const double inner_radius = band.inner * FilledTurn() / 2;
  const double outer_radius = band.outer * FilledTurn() / 2;
  if (length < 0 || outer_radius > length + inner_radius) return kEnd;
  const Point along = {p.x * std::cos(axis) + p.y * std::sin(axis) - band.inner,
                       p.x * std::sin(axis) - p.y * std::cos(axis)};
  return CapsuleDistance(along, inner_radius, outer_radius, length);
}

double HaloSpectrumReference::PieDistance(Point p, double from, double to, double radius) {
  if (from > to) to += 2 * kPi;
  const double half = (to - from) / 2;
  const double turn = -(from + half - kPi / 2);
  const Point q = {std::abs(p.x * std::cos(turn) - p.y * std::sin(turn)),
                   p.x * std::sin(turn) + p.y * std::cos(turn)};
  const Point c = {std::sin(half), std::cos(half)};
  const double l = std::hypot(p.x, p.y) - radius;
  const double along = std::clamp(q.x * c.x + q.y * c.y, 0.0, radius);
  const double m = std::hypot(q.x - c.x * along, q.y - c.y * along);
  const double side = c.y * q.x - c.x * q.y;
  return std::max(l, side > 0 ? m : -m);
}

// The hull of two circles on the x axis: the first about the origin, the second at the length.
// Found as the least distance to any circle between the two.
double HaloSpectrumReference::CapsuleDistance(Point p, double inner_radius, double outer_radius,
                                              double length) {
  const double slope = length > 0 ? (outer_radius - inner_radius) / length : 0;
  // d/ds (hypot(x - s, y) - slope s) = 0 where the normal leans back by the flank's slope.
  const double lean = slope < 1 ? slope / std::sqrt(1 - slope * slope) : kEnd * kEnd;
  const double s = std::clamp(p.x + std::abs(p.y) * lean, 0.0, length);
  return std::hypot(p.x - s, p.y) - (inner_radius + slope * s);
}

double HaloSpectrumReference::Coverage(double distance) const {
  const double nearness = kEpsilon / distance;
  if (figure_.glow != 0) return GlowCoverage(figure_, nearness, 0.3);
  return std::min(1.0, std::pow(1.5 * nearness, 2));
}

std::array<double, 3> HaloSpectrumReference::Color(Vec3 place) const {
  if (figure_.single_color == 1) return SingleColor(figure_);
  const double angle = Mod(Degrees(std::atan2(place.x, place.z) - Radians()), 360);
  if (!figure_.use_gradient_color) return HueColor(angle / 360);
  if (figure_.gradient_color_direction != 0) {
    const double shifted = Mod(angle - (Step() - Gap()) * 0.5, 360);
    return GradientColor(figure_, std::clamp(shifted / 360, 0.0, 1.0));
  }
  const Band band = WidestBand();
  const double from_centre = std::sqrt(Dot(place, place));
  const double ratio = (from_centre - band.inner) / (band.outer - band.inner);
  if (figure_.direction == 0) return GradientColor(figure_, 1 - ratio);
  return GradientColor(figure_, figure_.direction == 1 ? ratio : std::abs(ratio - 0.5) * 2);
}

void ExpectMatches(const Picture& drawn, const HaloSpectrumFigure& figure,
                   const Tolerance& tolerance) {
  ExpectMatchesReference<HaloSpectrumReference>(drawn, figure, tolerance);
}

}  // namespace krv::test
