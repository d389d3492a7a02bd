#include "shaders/flat_reference.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "shaders/expect_matches.h"

namespace krv::test {
namespace {

constexpr double kEpsilon = 0.002;
constexpr double kEnd = 200;
constexpr double kView = 20;
constexpr Vec3 kEye = {0, 0, 20};

// From (x, y) to an axis-aligned box about the origin with rounded corners; negative inside.
double BoxDistance(double x, double y, double half_width, double half_height, double corner) {
  const double dx = std::abs(x) - half_width + corner;
  const double dy = std::abs(y) - half_height + corner;
  const double inside = std::min(std::max(dx, dy), 0.0);
  return inside + std::hypot(std::max(dx, 0.0), std::max(dy, 0.0)) - corner;
}

}  // namespace

FlatReference::FlatReference(const FlatFigure& figure, int width, int height, double level_shift)
    : figure_(figure), level_shift_(level_shift), width_(width), height_(height) {
  // In single precision, as the result is cut and must not jump over a whole tenth.
  const float ratio = static_cast<float>(width) / static_cast<float>(height);
  aspect_ = std::floor(ratio * 10.0f) / 10.0;
  PlaceRectangle();
}

Vec3 FlatReference::RayThrough(double x, double y) const {
  const double depth = (kView / 2) / std::tan(Radians(30) / 2);
  return Normalize({x - aspect_ * kView / 2, y - kView / 2, -depth});
}

void FlatReference::PlaceRectangle() {
  const std::array<std::array<double, 2>, 4> places = {
      {{0, kView}, {aspect_ * kView, kView}, {aspect_ * kView, 0}, {0, 0}}};
  std::array<Vec3, 4> p;
  for (size_t i = 0; i < p.size(); ++i) {
    const Vec3 ray = RayThrough(places[i][0], places[i][1]);
    p[i] = kEye + ray * (-kEye.z / ray.z);
  }
  const Vec3 translation = (p[1] - p[0]) * ((figure_.position_x / 100.0 - 0.5) * 2) +
                           (p[3] - p[0]) * ((figure_.position_y / 100.0 - 0.5) * 2);
  for (Vec3& corner : p) {
    if (figure_.flip_x) corner = TurnY(corner, std::numbers::pi);
    if (figure_.flip_y) corner = TurnX(corner, std::numbers::pi);
    corner.x *= figure_.scale_x;
    corner.y *= figure_.scale_y;
  }
  const Vec3 pivot = figure_.direction == 0 ? (p[3] - p[0]) * 0.5 : Vec3{};
  for (Vec3& corner : p) {
    corner = TurnX(corner + pivot, Radians(figure_.rotate_x));
    corner = TurnY(corner, Radians(figure_.rotate_y));
    corner = TurnZ(corner, Radians(figure_.rotate_z));
    corner = corner - pivot + translation;
  }
  corner_ = p[0];
  right_ = Normalize(p[1] - p[0]);
  up_ = Normalize(p[3] - p[0]);
  quad_width_ = Dot(p[2] - p[0], right_);
  quad_height_ = Dot(p[2] - p[0], up_);
}

Pixel FlatReference::At(double x, double y) const {
  if (figure_.scale_x == 0 || figure_.scale_y == 0) return {0, 0, 0, 1};
  const Hit hit = Cast(RayThrough(x / width_ * aspect_ * kView, y / height_ * kView));
  return FigurePixel(figure_, Color(hit.local), Coverage(hit.distance));
}

FlatReference::Hit FlatReference::Cast(Vec3 ray) const {
  const Vec3 normal = Normalize(Cross(right_, up_));
  double t = 0;
  bool in_front = false;
  if (Dot(normal, ray) != 0) {
    t = (Dot(normal, corner_) - Dot(normal, kEye)) / Dot(normal, ray);
    in_front = t >= 0;
  }
  const Vec3 place = kEye + ray * std::abs(t) - corner_;
  const Point local = {Dot(place, right_), Dot(place, up_)};
  return {local, std::max(kEpsilon, in_front ? Distance(local) : kEnd)};
}

double FlatReference::Intensity(double u) const {
  u = SpectrumPlace(figure_, u);
  double val = 0;
  if (figure_.audio_averaging) {
    const double step = 0.2;
    const double left = u - Mod(u, step);
    for (const double sample : {left, left + step}) {
      val += CubicPulse(sample, step * 0.9, Spectrum(figure_, sample, level_shift_), u);
    }
  } else {
    val = Spectrum(figure_, u, level_shift_);
  }
  if (val < 0.05) val = 0;
  val *= Loudness(figure_);
  val *= Smoothstep(0, 1, figure_.intensity);
  val *= 1 + Smoothstep(1, 3, figure_.intensity) * 0.5;
  return Smoothstep(0, 1, val);
}

double FlatReference::Value(double u) const {
  const double v = Intensity(u) - 0.5;
  return std::abs(v) < 0.05 ? 0 : std::clamp(v, -0.5, 0.5);
}

double FlatReference::ItemLevel(int item, int count) const {
  const double index = std::floor(Mod(item + static_cast<double>(figure_.offset_x) * count, count));
  return index / count;
}

double FlatReference::VertexHeight(double u) const {
  return quad_height_ * (figure_.direction == 0 ? Intensity(u) : Value(u));
}

double FlatReference::VertexOf(int item, int count) const {
  return VertexHeight(ItemLevel(item, count)) + (figure_.direction == 1 ? quad_height_ / 2 : 0);
}

double FlatReference::Distance(Point p) const {
  switch (figure_.geometry_type) {
    case 0:
      return RowDistance(p, figure_.spectrum_count);
    case 1:
      return RowDistance(p, figure_.point_count);
    case 2:
      return RowDistance(p, figure_.line_count);
    case 3:
      return PulsesDistance(p);
    case 4:
      return RowDistance(p, figure_.circle_column_count);
    case 5:
      return RowDistance(p, figure_.rectangle_column_count);
    default:
      return kEnd;
  }
}

double FlatReference::RowDistance(Point p, int count) const {
  const int last = count - (figure_.geometry_type == 2 ? 2 : 1);
  if (last < 0) return kEnd;
  const double cell = std::clamp(std::floor(p.x / (quad_width_ / count)), -1e6, 1e6);
  const int first_near = std::clamp(static_cast<int>(cell) - 2, 0, last);
  const int last_near = std::clamp(static_cast<int>(cell) + 2, 0, last);
  double nearest = kEnd;
  for (int item = first_near; item <= last_near; ++item) {
    nearest = std::min(nearest, std::max(0.0, ItemDistance(p, item, count)));
  }
  return nearest;
}

double FlatReference::ItemDistance(Point p, int item, int count) const {
  const double pitch = quad_width_ / count;
  const double x = p.x - (item * pitch + pitch / 2);
  const double u = ItemLevel(item, count);
  switch (figure_.geometry_type) {
    case 0:
      return BarDistance({x, p.y}, Intensity(u));
    case 1:
      return std::hypot(x, p.y - VertexOf(item, count)) - figure_.point_size * quad_width_ * 0.005;
    case 2:
      return StrokeDistance({x, p.y}, item, count);
    case 4:
      return CirclesDistance({x, p.y}, Intensity(u));
    default:
      return BlocksDistance({x, p.y}, Intensity(u));
  }
}

double FlatReference::BarDistance(Point p, double level) const {
  const double width = figure_.spectrum_width * quad_width_ * 0.02;
  const double least = figure_.spectrum_minimum_height * 0.01;
  const double height = quad_height_ * (least * (1 - level) + level);
  const double centre = figure_.direction == 0 ? height / 2 : quad_height_ / 2;
  return BoxDistance(p.x, p.y - centre, width / 2, height / 2,
                     (width / 2) * figure_.spectrum_round);
}

double FlatReference::StrokeDistance(Point p, int item, int count) const {
  const double run = quad_width_ / count;
  const double from = VertexOf(item, count);
  const double rise = VertexOf(item + 1, count) - from;
  const double along =
      std::clamp((p.x * run + (p.y - from) * rise) / (run * run + rise * rise), 0.0, 1.0);
  return std::hypot(p.x - along * run, p.y - from - along * rise) -
         figure_.line_width * quad_width_ * 0.003 / 2;
}

double FlatReference::CirclesDistance(Point p, double level) const {
  const double r = figure_.circle_size * quad_width_ * 0.015;
  const double pitch = 2 * r + figure_.clrcle_gap_size * quad_width_ * 0.03;
  if (pitch <= 0) return kEnd;
  const double rest = quad_height_ * level - 2 * r;
  double count = 1 + (rest > 0 ? std::floor(rest / pitch) : 0);
  double y = r;
  if (figure_.direction != 0) {
    count = 1 + std::floor((count - 1) * 0.5) * 2;
    y = quad_height_ / 2 - (r + (count - 1) * 0.5 * pitch);
  }
  double nearest = kEnd;
  for (int j = 0; j < count; ++j) {
    nearest = std::min(nearest, std::hypot(p.x, p.y - (y + j * pitch)) - r);
  }
  return nearest;
}

double FlatReference::BlocksDistance(Point p, double level) const {
  const double half_width = figure_.rectangle_width * quad_width_ * 0.015;
  const double half_height = figure_.rectangle_height * quad_width_ * 0.015;
  const double pitch = 2 * half_height + figure_.rectangle_gap_size * quad_width_ * 0.03;
  if (pitch <= 0) return kEnd;
  const double rest = quad_height_ * level - 2 * half_height;
  double count = 1 + (rest > 0 ? std::floor(rest / pitch + 0.5) : 0);
  double y = half_height;
  if (figure_.direction != 0) {
    count = 1 + std::floor((count - 1) * 0.5) * 2;
    y = quad_height_ / 2 - (half_height + (count - 1) * 0.5 * pitch);
  }
  double nearest = kEnd;
  for (int j = 0; j < count; ++j) {
    nearest =
        std::min(nearest, BoxDistance(p.x, p.y - (y + j * pitch), half_width, half_height, 0));
  }
  return nearest;
}

double FlatReference::PulseCurve(double x, double half_width) const {
  const int count = figure_.pulse_count;
  const double offset = figure_.offset_x;
  const double first = std::floor(((x - 2 * half_width) / quad_width_ + offset) * count);
  const double last = std::ceil((x / quad_width_ + offset) * count);
  double curve = 0;
  for (double i = first; i <= last; ++i) {
    const double centre = quad_width_ / count * i + half_width - offset * quad_width_;
    curve += CubicPulse(centre, half_width, VertexHeight(i / count), x);
  }
  return curve;
}

double FlatReference::PulsesDistance(Point p) const {
  if (figure_.pulse_count <= 0) return kEnd;
  const double half_width = quad_width_ * 2 * figure_.pulse_width * 0.05;
  const double spacing = figure_.pulse_fill ? 0.01 : figure_.pulse_line_width * 0.01;
  const double base = figure_.direction == 1 ? quad_height_ / 2 : 0;
  double nearest = kEnd;
  for (int column = -2; column <= 2; ++column) {
    const double x = p.x + column * spacing;
    if (x < 0 || x > quad_width_) continue;
    const double curve = PulseCurve(x, half_width) + base;
    for (int row = -2; row <= 2; ++row) {
      const double y = p.y + row * spacing;
      double distance = std::abs(y - base);
      if (!figure_.pulse_fill) {
        distance = std::max(
            0.0, std::hypot(p.x - x, p.y - curve) - figure_.pulse_line_width * quad_width_ * 0.003);
      } else if (curve >= base && y > base) {
        distance = std::max(0.0, y - curve);
      } else if (curve < base && y < base) {
        distance = std::max(0.0, curve - y);
      }
      nearest = std::min(nearest, distance);
    }
  }
  return nearest;
}

double FlatReference::Coverage(double distance) const {
  const double nearness = kEpsilon / distance;
  if (figure_.glow != 0) return GlowCoverage(figure_, nearness, 0.3);
  if (figure_.geometry_type == 2 || figure_.geometry_type == 3) return LineCoverage(nearness);
  return std::min(1.0, std::pow(3.5 * nearness, 1.5));
}

std::array<double, 3> FlatReference::Color(Point p) const {
  if (figure_.single_color == 1) return SingleColor(figure_);
  if (figure_.use_gradient_color) {
    const double ratio =
        figure_.gradient_color_direction == 0 ? p.y / quad_height_ : p.x / quad_width_;
    return GradientColor(figure_, std::clamp(ratio, 0.0, 1.0));
  }
  return HueColor(p.x / quad_width_);
}

void ExpectMatches(const Picture& drawn, const FlatFigure& figure, double tolerance) {
  ExpectMatchesReference<FlatReference>(drawn, figure, {tolerance});
}

}  // namespace krv::test
