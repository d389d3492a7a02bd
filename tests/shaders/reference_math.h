// What the references of the visualisation shaders share, in double precision.
#pragma once

#include <array>

#include "shaders/common_figure.h"

namespace krv::test {

struct Vec3 {
  double x = 0, y = 0, z = 0;
};

Vec3 operator+(Vec3 a, Vec3 b);
Vec3 operator-(Vec3 a, Vec3 b);
Vec3 operator*(Vec3 a, double s);
double Dot(Vec3 a, Vec3 b);
Vec3 Cross(Vec3 a, Vec3 b);
Vec3 Normalize(Vec3 a);

// Right-handed turns by an angle in radians.
Vec3 TurnX(Vec3 p, double angle);
Vec3 TurnY(Vec3 p, double angle);
Vec3 TurnZ(Vec3 p, double angle);

double Radians(double degrees);
double Degrees(double radians);
// x - y floor(x / y).
double Mod(double x, double y);
// May fall as well as rise; a step where from equals to.
double Smoothstep(double from, double to, double x);
// 0 beyond half_width from the centre.
double CubicPulse(double centre, double half_width, double height, double x);

// The spectrum texture's red at u: linear between texel centres, mirrored beyond the ends. shift is
// added.
double Spectrum(const CommonFigure& figure, double u, double shift);
// Where the spectrum is read for u across the figure.
double SpectrumPlace(const CommonFigure& figure, double u);
// How far the loudness lets the figure move, 0..1.
double Loudness(const CommonFigure& figure);

std::array<double, 3> SingleColor(const CommonFigure& figure);
std::array<double, 3> GradientColor(const CommonFigure& figure, double position);
// The hue circle at full saturation and value.
std::array<double, 3> HueColor(double hue);

// Coverages by EPSILON / distance: of thin lines, and glowing with this least exponent.
double LineCoverage(double nearness);
double GlowCoverage(const CommonFigure& figure, double nearness, double least_exponent);

// Colour and alpha as written.
std::array<double, 4> FigurePixel(const CommonFigure& figure, const std::array<double, 3>& color,
                                  double coverage);

}  // namespace krv::test
