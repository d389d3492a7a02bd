#include "shaders/halo_reference.h"

#include <cmath>

namespace krv::test {

HaloReference::HaloReference(const HaloFigure& figure, int width, int height, double level_shift)
    : figure_(figure), level_shift_(level_shift), width_(width), height_(height) {
  AimCamera();
}

void HaloReference::AimCamera() {
  double tilt = figure_.inclination_degree_x;
  if (figure_.inclination_degree_x % 180 == 0) tilt += 0.01;
  eye_ = TurnX({0, 0, 19}, Radians(90 + tilt));
  forward_ = Normalize(Vec3{} - eye_);
  const double roll = Radians(figure_.inclination_degree_z);
  Vec3 up = eye_.z > 0 ? TurnZ({0, -1, 0}, -roll) : TurnZ({0, 1, 0}, roll);
  if (std::abs(forward_.y) > 0.99) {
    up = forward_.y > 0 ? TurnY({0, 0, -1}, roll) : TurnY({0, 0, 1}, -roll);
  }
  right_ = Normalize(Cross(forward_, up));
  up_ = Normalize(Cross(right_, forward_));
}

Vec3 HaloReference::RayThrough(double x, double y) const {
  const double px = (figure_.position_x / 100.0) * 2 - 0.5;
  const double py = (figure_.position_y / 100.0) * 2 - 0.5;
  const double offset_x = px * width_ - width_ / 2;
  const double offset_y = py * height_ - height_ / 2;
  const double depth = (height_ / 2) / std::tan(Radians(30) / 2);
  return Normalize(forward_ * depth + right_ * (x - offset_x - width_ / 2) +
                   up_ * (y - offset_y - height_ / 2));
}

double HaloReference::PlaneDepth(Vec3 ray, bool* meets) const {
  const double depth = ray.y != 0 ? -eye_.y / ray.y : 0;
  *meets = ray.y != 0 && depth >= 0;
  return depth;
}

double HaloReference::Intensity(double u) const {
  u = SpectrumPlace(figure_, u);
  const double step = 1.0 / 7;
  const double left = u - Mod(u, step);
  const double right = left + step;
  const double a = Spectrum(figure_, left, level_shift_);
  const double b = Spectrum(figure_, right < 0.9 ? right : 0, level_shift_);
  double val = CubicPulse(left, step * 0.8, a * a * a, u);
  val += CubicPulse(right, step * 0.8, b * b * b, u);
  if (val < 0.05) val = 0;
  return Smoothstep(0, 1, val * Loudness(figure_) * figure_.intensity);
}

double HaloReference::Turn(double limit) const {
  double turn = Radians(figure_.manual_rotate_degree);
  if (figure_.manual_rotate != 1) {
    turn = static_cast<double>(figure_.time_second) * figure_.rotate_speed;
    if (figure_.rotate_direction == 1) turn = -turn;
  }
  return Mod(turn, limit);
}

}  // namespace krv::test
