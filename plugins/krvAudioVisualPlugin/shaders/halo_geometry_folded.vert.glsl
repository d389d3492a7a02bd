
uniform float level_at_start;  // the level of item 0

// How far the gradient of the points begins before the first point's centre, degrees.
float gradientLead() {
  float side = point_direction == 0 ? 1.0 : -1.0;
  float ring = radius + radius * 0.5 * level_at_start * side;
  float edge = point_size * 0.5 + 2.5 * EPSILON;
  return 360.0 * edge / (2.0 * M_PI * ring);
}

void main() {
  paint(1.0 / 360.0, glowExponent(0.4));
  aimAtRing();
  v_turn = vec2(getRadians(), geometry_type == POINTS ? gradientLead() : 0.0);
  v_touch = glow != 0 || geometry_type == PULSES ? EPSILON : 3.5 * EPSILON;
  float seen = sight(3.5 * EPSILON, 1.5);
  vec2 radii = vec2(radius);
  if (geometry_type == POINTS) {
    separateItems(360.0 / float(point_count));
    v_corner = point_size * 0.25;
    v_height = vec2(point_direction == 0 ? LEVEL_REACH : -LEVEL_REACH, radius);
    vec2 ends = v_height.x * entry_range;
    radii += vec2(min(ends.x, ends.y), max(ends.x, ends.y));
  } else if (geometry_type == ECG) {
    separateItems(360.0 / (BEAT_POINTS * float(ECG_count)));
    v_corner = ECG_line_width * 0.1;
    v_height = vec2(LEVEL_REACH, radius);
    radii += vec2(-0.75, 1.0) * LEVEL_REACH * entry_range.y;
  } else {
    separateItems(360.0 / float(pulse_count));
    v_corner = pulse_fill ? 0.0 : 0.1 * pulse_line_width;
    v_height = vec2(LEVEL_REACH, radius);
    // As many as lie over each other may add up.
    float pulses = max(pulse_width, 0.0) * 0.1 + 2.0;
    radii += vec2(-0.02, LEVEL_REACH * entry_range.y * pulses);
    seen = sightOfLine(EPSILON);
#if FIGURE == 2
    float width = pulse_width * 0.1;
    v_pulse = vec2(width, min(width, 1.0)) * 0.5;
    v_count = float(pulse_count);
    v_spacing = (pulse_fill ? 0.001 : abs(pulse_line_width * 0.2)) * float(pulse_count) / 360.0;
#endif
  }
  seen = glow != 0 ? end : min(seen, end);
  seen = max(seen + v_corner, 0.0);
  float farthest = max(end + v_corner, 0.0);
  v_reach = vec2(seen * seen, farthest * farthest);
  setBand(radii, seen);
}
