#include "shaders/halo_canvas.h"

#include "shaders/common_canvas.h"

namespace krv::test {
namespace {

#define KRV_SET(name) program.Set(#name, f.name)
void SetRing(const UniformSetter& program, const HaloFigure& f) {
  KRV_SET(radius);
  KRV_SET(inclination_degree_x);
  KRV_SET(inclination_degree_z);
  KRV_SET(rotate_direction);
  KRV_SET(rotate_speed);
  KRV_SET(manual_rotate);
  KRV_SET(manual_rotate_degree);
}

void SetFigures(const UniformSetter& program, const HaloGeometryFigure& f) {
  KRV_SET(geometry_type);
  KRV_SET(point_direction);
  KRV_SET(point_size);
  KRV_SET(point_count);
  KRV_SET(ECG_count);
  KRV_SET(ECG_line_width);
  KRV_SET(pulse_count);
  KRV_SET(pulse_width);
  KRV_SET(pulse_fill);
  KRV_SET(pulse_line_width);
}

void SetFigures(const UniformSetter& program, const HaloSpectrumFigure& f) {
  KRV_SET(direction);
  KRV_SET(gap_degree);
  KRV_SET(step_num);
  KRV_SET(gradient_color_direction);
  KRV_SET(stroke_width);
  KRV_SET(round);
}
#undef KRV_SET

}  // namespace

void SetFigure(const UniformSetter& program, const HaloGeometryFigure& figure) {
  SetRing(program, figure);
  SetFigures(program, figure);
}

void SetFigure(const UniformSetter& program, const HaloSpectrumFigure& figure) {
  SetRing(program, figure);
  SetFigures(program, figure);
}

Picture DrawFigure(const ShaderProgram& program, const HaloGeometryFigure& figure, int width,
                   int height, GLenum format) {
  SetFigure(program, figure);
  return DrawCommon(program, figure, width, height, format);
}

Picture DrawFigure(const ShaderProgram& program, const HaloSpectrumFigure& figure, int width,
                   int height, GLenum format) {
  SetFigure(program, figure);
  return DrawCommon(program, figure, width, height, format);
}

}  // namespace krv::test
