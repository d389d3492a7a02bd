
// The place on the rectangle that a corner of the picture shows, or what leads each pixel to its own.
void aim(float unit) {
  vec3 ray = vec3((position * 2.0 - 1.0) * halfView(), -CAMERA_Z);
  vec3 corner = quad_corner - vec3(0.0, 0.0, CAMERA_Z);
  vec3 normal = cross(quad_right, quad_up);
  vec2 along = vec2(dot(ray, quad_right), dot(ray, quad_up)) / unit;
  vec2 camera = -vec2(dot(corner, quad_right), dot(corner, quad_up)) / unit;
#if TURNED
  v_ray = vec3(along, dot(normal, ray));
  v_plane = vec3(camera, dot(normal, corner));
#else
  v_place = camera + along * abs(dot(normal, corner) / dot(normal, ray));
#endif
}

// How far from the figure it is still seen.
float sightOfFigure() {
  if (glow != 0) return end;
  bool line = geometry_type == LINES || geometry_type == PULSES;
  return min(line ? sightOfLine(EPSILON) : sight(3.5 * EPSILON, 1.5), end);
}

// The heights between which the items' cores lie.
vec2 coreHeights(vec2 height, vec2 core) {
  vec2 ends = entry_range * height.x + height.y;
  if (geometry_type == BARS) {
    float half_height = max(max(abs(ends.x), abs(ends.y)) + core.y, 0.0);
    return DIRECTION == 0 ? vec2(-half_height, 2.0 * half_height - 2.0 * core.y)
                          : quad_height * 0.5 + vec2(-half_height, half_height);
  }
  if (geometry_type == CIRCLE_COLUMNS || geometry_type == RECTANGLE_COLUMNS) {
    vec2 blocks = (DIRECTION == 0 ? vec2(0.0, 1.0) : vec2(-0.5, 0.5)) * entry_range.y * height.x;
    return height.y + blocks + vec2(-1.0, 1.0) * abs(core.y);
  }
  if (geometry_type == PULSES) {
    // As many as lie over each other may add up.
    float pulses = 0.2 * pulse_width * float(pulse_count) + 2.0;
    return height.y + vec2(min(entry_range.x, 0.0), max(entry_range.y, 0.0)) * height.x * pulses;
  }
  return ends;
}

void shapeItems(float unit) {
  vec2 half_size = vec2(0.0);
  float corner = 0.0;
  vec2 height = vec2(quad_height, baseLine());
  if (geometry_type == BARS) {
    float least = spectrum_minimum_height * 0.01;
    half_size.x = spectrum_width * quad_width * 0.01;
    corner = half_size.x * spectrum_round;
    height = vec2(1.0 - least, least) * quad_height * 0.5;
  } else if (geometry_type == POINTS) {
    corner = point_size * quad_width * 0.005;
    half_size = vec2(corner);
  } else if (geometry_type == LINES) {
    corner = line_width * quad_width * 0.0015;
    half_size = vec2(corner);
  } else if (geometry_type == PULSES) {
    corner = pulse_fill ? 0.0 : pulse_line_width * quad_width * 0.003;
    half_size = vec2(corner);
  } else {
    bool circles = geometry_type == CIRCLE_COLUMNS;
    vec2 size = circles ? vec2(circle_size) : vec2(rectangle_width, rectangle_height);
    half_size = size * quad_width * 0.015;
    float gap = (circles ? clrcle_gap_size : rectangle_gap_size) * quad_width * 0.03;
    corner = circles ? half_size.x : 0.0;
    height = vec2(2.0 * half_size.y + gap,
                  DIRECTION == 0 ? half_size.y : quad_height * 0.5 - half_size.y);
  }
  vec2 core = half_size - corner;
  vec2 heights = coreHeights(height, core);
  float seen = max(sightOfFigure() + corner, 0.0);
  vec2 reach = vec2(seen, max(end + corner, 0.0)) / unit;
  v_reach = reach * reach;
  v_band = vec2(heights.x + heights.y, heights.y - heights.x + 2.0 * seen) * 0.5 / unit;
  v_touch = (glow != 0 || geometry_type == LINES || geometry_type == PULSES ? EPSILON
                                                                            : 3.5 * EPSILON) / unit;
  v_height = height / unit;
  v_middle = quad_height * 0.5 / unit;
  v_core = core / unit;
  v_corner = corner / unit;
  v_last = float(itemCount()) - (geometry_type == LINES ? 2.0 : 1.0);
}

#if FIGURE == 3
void shapePulses() {
  float n = float(pulse_count);
  float half_width = quad_width * 2.0 * pulse_width * 0.05;
  v_pulse = vec3(1.0 / half_width, quad_width / n, half_width - offset_x * quad_width);
  v_curve = vec4(pulse_fill ? 0.01 : pulse_line_width * 0.01, quad_width, n / quad_width,
                 offset_x * n);
  v_first = vec2(2.0 * half_width, first_entry);
}
#endif

void main() {
  placeQuad(halfView());
  float unit = geometry_type == PULSES ? 1.0 : quad_width / float(itemCount());
  aim(unit);
  paint(unit / (COLORING == 2 ? quad_height : quad_width), glowExponent(0.3));
  shapeItems(unit);
#if FIGURE == 3
  shapePulses();
#endif
}
