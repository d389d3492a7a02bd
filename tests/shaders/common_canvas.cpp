#include "shaders/common_canvas.h"

namespace krv::test {

void SetCommon(const UniformSetter& program, const CommonFigure& f) {
#define KRV_SET(name) program.Set(#name, f.name)
  program.Set("audio_tex", kAudioUnit);
  program.Set("gradient_color_tex", kGradientUnit);
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
#undef KRV_SET
}

namespace {

std::vector<std::array<float, 4>> Texels(const std::vector<float>& spectrum) {
  std::vector<std::array<float, 4>> texels;
  for (const float level : spectrum) texels.push_back({level, 0, 0, 1});
  return texels;
}

}  // namespace

Picture DrawCommon(const ShaderProgram& program, const CommonFigure& figure, int width, int height,
                   GLenum format) {
  SetCommon(program, figure);
  program.Set("iResolution", static_cast<float>(width), static_cast<float>(height));
  const RowTexture audio(kAudioUnit, Texels(figure.spectrum));
  const RowTexture gradient(kGradientUnit, figure.gradient);
  return Draw(program, width, height, format);
}

}  // namespace krv::test
