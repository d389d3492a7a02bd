
void main() {
  paint(COLORING == 2 ? 1.0 : 1.0 / 360.0, glowExponent(0.3));
  aimAtRing();
  placeSegments();
  separateItems(pitch);

  // A slice's sides count as angles of one turn: a wider slice is what it covers twice.
  float turns = round == 0 && filled > 360.0 ? floor(filled / 360.0) : 0.0;
  v_half = half_filled;
  v_wrap = 180.0 * turns;
  v_side = round == 0 ? unitVector(M_PI * (0.5 + turns) - half_filled)
                      : vec2(sqrt(max(1.0 - half_filled * half_filled, 0.0)), -half_filled);
  vec2 size = vec2(radius + LEVEL_REACH, 0.02 * stroke_width);
  v_inner = vec3(-size.x * growth.x, radius - size.y * growth.x, direction == 1 ? radius : 0.0);
  v_outer = vec3(size * growth.y + vec2(0.0, radius),
                 radius * (direction == 0 ? 1.0 : direction == 1 ? 2.2 : 1.6));

  v_turn = vec2(getRadians(), filled * 0.5);
  float band = max_radius - min_raduis;
  v_radial = band != 0.0 ? vec2(1.0, -min_raduis) / band : vec2(0.0);
  if (gradient_color_direction == 0 && direction == 0) v_radial = vec2(0.0, 1.0) - v_radial;

  float seen = glow != 0 ? end : min(sight(1.5 * EPSILON, 2.0), end);
  v_touch = glow != 0 ? EPSILON : 1.5 * EPSILON;
  v_reach = vec2(seen, end);
  vec2 inner = v_inner.x * entry_range + v_inner.y;
  vec2 outer = v_outer.x * entry_range + v_outer.y;
  vec2 radii = vec2(max(min(inner.x, inner.y), v_inner.z), min(max(outer.x, outer.y), v_outer.z));
  float caps = round == 0 ? 0.0 : abs(half_filled);
  setBand(vec2(min(radii.x, radii.y), max(radii.x, radii.y)) +
              vec2(-1.0, 1.0) * caps * max(abs(radii.x), abs(radii.y)), seen);
}
