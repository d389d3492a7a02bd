#include "shaders/flat_canvas.h"

#include <algorithm>

namespace krv::test {
namespace {

constexpr int kAudioUnit = 0;
constexpr int kGradientUnit = 1;

void SetCommon(const ShaderProgram& program, const FlatFigure& f) {
  program.Set("audio_tex", kAudioUnit);
  program.Set("gradient_color_tex", kGradientUnit);
#define KRV_SET(name) program.Set(#name, f.name)
  KRV_SET(time_second);
  KRV_SET(intensity);
  KRV_SET(alpha);
  KRV_SET(single_color);
  KRV_SET(color);
  KRV_SET(color_r);
  KRV_SET(color_g);
  KRV_SET(color_b);
  KRV_SET(use_gradient_color);
  KRV_SET(gradient_color_count);
  KRV_SET(gradient_color_direction);
  KRV_SET(position_x);
  KRV_SET(position_y);
  KRV_SET(glow);
  KRV_SET(glow_intensity);
  KRV_SET(audio_left_db);
  KRV_SET(audio_right_db);
  KRV_SET(audio_db_min);
  KRV_SET(audio_db_max);
  KRV_SET(audio_frequency_min);
  KRV_SET(audio_frequency_max);
  KRV_SET(audio_mirror);
  KRV_SET(audio_averaging);
}

void SetRectangle(const ShaderProgram& program, const FlatFigure& f) {
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
}

void SetShapes(const ShaderProgram& program, const FlatFigure& f) {
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

std::vector<std::array<float, 4>> Texels(const std::vector<float>& spectrum) {
  std::vector<std::array<float, 4>> texels;
  for (const float level : spectrum) texels.push_back({level, 0, 0, 1});
  return texels;
}

}  // namespace

Picture DrawFigure(const ShaderProgram& program, const FlatFigure& figure, int width, int height,
                   GLenum format) {
  SetCommon(program, figure);
  SetRectangle(program, figure);
  SetShapes(program, figure);
  program.Set("iResolution", static_cast<float>(width), static_cast<float>(height));
  const RowTexture audio(kAudioUnit, Texels(figure.spectrum));
  const RowTexture gradient(kGradientUnit, figure.gradient);
  return Draw(program, width, height, format);
}

}  // namespace krv::test
