#include "shaders/reference_math.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace krv::test {

Vec3 operator+(Vec3 a, Vec3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
Vec3 operator-(Vec3 a, Vec3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
Vec3 operator*(Vec3 a, double s) { return {a.x * s, a.y * s, a.z * s}; }
double Dot(Vec3 a, Vec3 b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
Vec3 Cross(Vec3 a, Vec3 b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
Vec3 Normalize(Vec3 a) { return a * (1 / std::sqrt(Dot(a, a))); }

Vec3 TurnX(Vec3 p, double angle) {
  const double c = std::cos(angle), s = std::sin(angle);
  return {p.x, p.y * c - p.z * s, p.y * s + p.z * c};
}
Vec3 TurnY(Vec3 p, double angle) {
  const double c = std::cos(angle), s = std::sin(angle);
  return {p.x * c + p.z * s, p.y, -p.x * s + p.z * c};
}
Vec3 TurnZ(Vec3 p, double angle) {
  const double c = std::cos(angle), s = std::sin(angle);
  return {p.x * c - p.y * s, p.x * s + p.y * c, p.z};
}

double Mod(double x, double y) { return x - y * std::floor(x / y); }

double Smoothstep(double from, double to, double x) {
  if (from == to) return x > from ? 1 : 0;
  const double t = std::clamp((x - from) / (to - from), 0.0, 1.0);
  return t * t * (3 - 2 * t);
}

double CubicPulse(double centre, double half_width, double height, double x) {
  const double d = std::abs(x - centre);
  if (d >= half_width) return 0;
  return (1 - Smoothstep(0, half_width, d)) * height;
}

double Radians(double degrees) { return degrees * std::numbers::pi / 180; }
double Degrees(double radians) { return radians * 180 / std::numbers::pi; }

double Spectrum(const CommonFigure& figure, double u, double shift) {
  const auto size = static_cast<double>(figure.spectrum.size());
  const auto texel = [&](double index) {
    const double wrapped = Mod(index, 2 * size);
    const double mirrored = wrapped < size ? wrapped : 2 * size - 1 - wrapped;
    return static_cast<double>(figure.spectrum[static_cast<size_t>(mirrored)]);
  };
  const double place = u * size - 0.5;
  const double left = std::floor(place);
  return std::lerp(texel(left), texel(left + 1), place - left) + shift;
}

double SpectrumPlace(const CommonFigure& figure, double u) {
  if (figure.audio_mirror) u = 1 - std::abs(u - 0.5) * 2;
  return std::lerp(figure.audio_frequency_min, figure.audio_frequency_max, u);
}

double Loudness(const CommonFigure& figure) {
  return Smoothstep(figure.audio_db_min, figure.audio_db_max, figure.audio_left_db);
}

std::array<double, 3> SingleColor(const CommonFigure& figure) {
  return {figure.color_r, figure.color_g, figure.color_b};
}

std::array<double, 3> GradientColor(const CommonFigure& figure, double position) {
  const auto& stops = figure.gradient;
  const int intervals = figure.gradient_color_count - 1;
  for (int i = 0; i < intervals; ++i) {
    const auto& a = stops[static_cast<size_t>(i)];
    const auto& b = stops[static_cast<size_t>(i) + 1];
    double share = -1;
    if (a[3] <= position && position <= b[3]) {
      share = b[3] > a[3] ? (position - a[3]) / (b[3] - a[3]) : 0;
    } else if (i == 0 && position < a[3]) {
      share = 0;
    } else if (i == intervals - 1 && position > b[3]) {
      share = 1;
    }
    if (share < 0) continue;
    return {std::lerp(a[0], b[0], share), std::lerp(a[1], b[1], share),
            std::lerp(a[2], b[2], share)};
  }
  return {0, 0, 0};
}

std::array<double, 3> HueColor(double hue) {
  // Each channel is a trapezium of the hue.
  std::array<double, 3> color;
  const std::array<double, 3> phase = {1, 2.0 / 3, 1.0 / 3};
  for (size_t i = 0; i < color.size(); ++i) {
    color[i] = std::clamp(std::abs(Mod(hue + phase[i], 1) * 6 - 3) - 1, 0.0, 1.0);
  }
  return color;
}

double LineCoverage(double nearness) {
  const double soft = Smoothstep(0, 1, nearness);
  return std::min(1.0, std::pow(soft, 0.8) * 20) + std::min(1.0, std::pow(soft, 1.5) * 10);
}

double GlowCoverage(const CommonFigure& figure, double nearness, double least_exponent) {
  return std::pow(nearness, least_exponent + Smoothstep(1, 0.1, figure.glow_intensity) * 0.4);
}

std::array<double, 4> FigurePixel(const CommonFigure& figure, const std::array<double, 3>& color,
                                  double coverage) {
  return {color[0], color[1], color[2], std::clamp(figure.alpha / 100.0 * coverage, 0.0, 0.99)};
}

}  // namespace krv::test
