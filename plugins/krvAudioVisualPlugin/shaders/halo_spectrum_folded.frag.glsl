
// As in the plain form, from a place this far from the centre, at this angle from the first segment.
float segmentsDistance(float from_centre, float angle, bool seen) {
  float i = floor(angle / v_gap) - 2.0;
  vec2 towards = unitVector(radians(angle - i * v_gap + v_wrap));
  vec2 back = vec2(v_step.x, -v_step.y);
  float last = seen ? i + 4.0 : i;
  float nearest = v_reach.x;
  for (;;) {
    float entry = itemEntry(i);
    float inner = max(entry * v_inner.x + v_inner.y, v_inner.z);
    float outer = min(entry * v_outer.x + v_outer.y, v_outer.z);
    vec2 p = from_centre * vec2(abs(towards.y), towards.x);
    nearest = min(nearest, ROUND == 0 ? sliceDistance(p, from_centre, inner, outer, v_side)
                                      : capsuleDistance(p, inner, outer, v_side));
    towards = turnedBy(back, towards);
    i += 1.0;
    if (i > last || nearest <= v_touch) break;
  }
  return nearest;
}

float coverage(float nearness) {
#if GLOW
  return pow(nearness, v_exponent);
#else
  return nearness * nearness;
#endif
}

void main() {
  half_filled = v_half;
  float depth = aimedDepth();
  bool meets = meetsPlane(depth);
  depth = abs(depth);
  float from_centre = length(eye + ray * depth);
  float angle = turnDegrees(angleOf(placeAt(depth)) + M_PI * 0.5 - v_turn.x);
  bool seen = meets && abs(from_centre - v_band.x) < v_band.y;
  float from_figure = segmentsDistance(from_centre, angle, seen);
  if (!meets) from_figure = end;
#if COLORING == 2
  float radial = from_centre * v_radial.x + v_radial.y;
  float place = DIRECTION == 2 ? abs(radial - 0.5) * 2.0 : radial;
#elif COLORING == 3
  float place = mod(angle - v_turn.y, 360.0);
#else
  float place = angle;
#endif
  transparent = v_opacity;
  fragColor = figurePixel(paintedColor(place), coverage(v_touch / max(from_figure, v_touch)));
}
