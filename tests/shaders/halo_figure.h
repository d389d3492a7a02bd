// The inputs of the two halo shaders.
#pragma once

#include "shaders/common_figure.h"

namespace krv::test {

struct HaloFigure : CommonFigure {
  float radius = 3.2f;
  int inclination_degree_x = 25, inclination_degree_z = 0;
  int rotate_direction = 0;
  float rotate_speed = 0;
  int manual_rotate = 0;
  float manual_rotate_degree = 0;
};

struct HaloGeometryFigure : HaloFigure {
  int geometry_type = 0;
  int point_direction = 0;
  float point_size = 0.7f;
  int point_count = 20;
  int ECG_count = 6;
  float ECG_line_width = 0.4f;
  int pulse_count = 16;
  float pulse_width = 8;
  bool pulse_fill = false;
  float pulse_line_width = 0.5f;
};

struct HaloSpectrumFigure : HaloFigure {
  int direction = 1;
  float gap_degree = 6;
  int step_num = 24;
  int gradient_color_direction = 0;
  float stroke_width = 5;
  int round = 0;
};

}  // namespace krv::test
