// The inputs that all visualisation shaders share, as one value: uniforms under their own names,
// and the contents of the textures.
#pragma once

#include <array>
#include <vector>

namespace krv::test {

struct CommonFigure {
  // Red of the spectrum texture's texels, lowest frequency first.
  std::vector<float> spectrum = {0.9f};
  // Colour and position of each gradient stop, all 0..1.
  std::vector<std::array<float, 4>> gradient = {{1, 0, 0, 0}, {0, 0, 1, 1}};

  float time_second = 0, intensity = 1, alpha = 100;
  int single_color = 1, color = 0xff8000;
  float color_r = 1, color_g = 0.5f, color_b = 0;
  bool use_gradient_color = false;
  int gradient_color_count = 2;
  float position_x = 50, position_y = 50;
  int glow = 0;
  float glow_intensity = 0.5f;
  float audio_left_db = 100, audio_right_db = 100, audio_db_min = 60, audio_db_max = 90;
  float audio_frequency_min = 0, audio_frequency_max = 1;
  bool audio_mirror = false, audio_averaging = false;
};

// Loud lows falling towards quiet highs, with a peak: no two neighbours alike.
inline std::vector<float> MusicalSpectrum() {
  return {0.93f, 0.81f, 0.88f, 0.62f, 0.71f, 0.55f, 0.67f, 0.83f,
          0.49f, 0.57f, 0.38f, 0.46f, 0.31f, 0.22f, 0.13f, 0.021f};
}

// Three stops, the outer ones away from the ends.
inline void UseGradient(CommonFigure& figure) {
  figure.single_color = 0;
  figure.use_gradient_color = true;
  figure.gradient = {{1, 0, 0.2f, 0.15f}, {0.1f, 0.9f, 0, 0.5f}, {0, 0.3f, 1, 0.8f}};
  figure.gradient_color_count = 3;
  figure.glow = 1;
}

}  // namespace krv::test
