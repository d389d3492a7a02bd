// The inputs of the flat geometry shader, as one value: its uniforms under their own names, and the
// contents of its textures.
#pragma once

#include <array>
#include <vector>

namespace krv::test {

struct FlatFigure {
  // Red of the spectrum texture's texels, lowest frequency first.
  std::vector<float> spectrum = {0.9f};
  // Colour and position of each gradient stop, all 0..1.
  std::vector<std::array<float, 4>> gradient = {{1, 0, 0, 0}, {0, 0, 1, 1}};

  float time_second = 0, intensity = 1, alpha = 100;
  int single_color = 1, color = 0xff8000;
  float color_r = 1, color_g = 0.5f, color_b = 0;
  bool use_gradient_color = false;
  int gradient_color_count = 2, gradient_color_direction = 0;
  float position_x = 50, position_y = 50;
  int glow = 0;
  float glow_intensity = 0.5f;
  float audio_left_db = 100, audio_right_db = 100, audio_db_min = 60, audio_db_max = 90;
  float audio_frequency_min = 0, audio_frequency_max = 1;
  bool audio_mirror = false, audio_averaging = false;
  float scale_x = 1, scale_y = 1;
  int rotate_x = 0, rotate_y = 0, rotate_z = 0;
  bool flip_x = false, flip_y = false;
  int geometry_type = 0, direction = 0;
  float offset_x = 0;

  int spectrum_count = 12;
  float spectrum_width = 2, spectrum_minimum_height = 2, spectrum_round = 0;
  float point_size = 3;
  int point_count = 12;
  float line_width = 3;
  int line_count = 12;
  int pulse_count = 6;
  float pulse_width = 0.8f;
  bool pulse_fill = false;
  float pulse_line_width = 1;
  int circle_column_count = 9;
  float circle_size = 1, clrcle_gap_size = 0.5f;
  int rectangle_column_count = 9;
  float rectangle_width = 2, rectangle_height = 1, rectangle_gap_size = 0.5f;
};

}  // namespace krv::test
