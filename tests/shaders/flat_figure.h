// The inputs of the flat geometry shader.
#pragma once

#include "shaders/common_figure.h"

namespace krv::test {

struct FlatFigure : CommonFigure {
  int gradient_color_direction = 0;
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
