#include "shaders/flat_canvas.h"

#include "shaders/common_canvas.h"

namespace krv::test {
namespace {

#define KRV_SET(name) program.Set(#name, f.name)
void SetRectangle(const UniformSetter& program, const FlatFigure& f) {
  KRV_SET(scale_x);
  KRV_SET(scale_y);
  KRV_SET(rotate_x);
  KRV_SET(rotate_y);
  KRV_SET(rotate_z);
  KRV_SET(flip_x);
  KRV_SET(flip_y);
  KRV_SET(geometry_type);
  KRV_SET(direction);
  KRV_SET(offset_x);
  KRV_SET(gradient_color_direction);
}

void SetShapes(const UniformSetter& program, const FlatFigure& f) {
  KRV_SET(spectrum_count);
  KRV_SET(spectrum_width);
  KRV_SET(spectrum_minimum_height);
  KRV_SET(spectrum_round);
  KRV_SET(point_size);
  KRV_SET(point_count);
  KRV_SET(line_width);
  KRV_SET(line_count);
  KRV_SET(pulse_count);
  KRV_SET(pulse_width);
  KRV_SET(pulse_fill);
  KRV_SET(pulse_line_width);
  KRV_SET(circle_column_count);
  KRV_SET(circle_size);
  KRV_SET(clrcle_gap_size);
  KRV_SET(rectangle_column_count);
  KRV_SET(rectangle_width);
  KRV_SET(rectangle_height);
  KRV_SET(rectangle_gap_size);
}
#undef KRV_SET

}  // namespace

void SetFigure(const UniformSetter& program, const FlatFigure& figure) {
  SetRectangle(program, figure);
  SetShapes(program, figure);
}

Picture DrawFigure(const ShaderProgram& program, const FlatFigure& figure, int width, int height,
                   GLenum format) {
  SetFigure(program, figure);
  return DrawCommon(program, figure, width, height, format);
}

}  // namespace krv::test
