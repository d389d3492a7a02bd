
#if FIGURE == 0
// From a place this far from the centre, at this angle from the first point, to the centres of the
// points at most two away.
float nearestSquared(float from_centre, float angle, bool seen) {
  float i = floor(angle / v_gap) - 2.0;
  vec2 towards = unitVector(radians(i * v_gap - angle));
  float last = seen ? i + 4.0 : i;
  float inside = max(v_corner + v_touch, 0.0);
  float nearest = v_reach.x;
  for (;;) {
    vec2 offset = towards * (itemEntry(i) * v_height.x + v_height.y) - vec2(from_centre, 0.0);
    nearest = min(nearest, dot(offset, offset));
    towards = turnedBy(v_step, towards);
    i += 1.0;
    if (i > last || nearest < inside * inside) break;
  }
  return nearest;
}
#elif FIGURE == 1
// As in the plain form, but for the beats' levels.
float traceDistance(float angle, inout float depth, bool seen) {
  vec3 across = normalize(cross(ray, vec3(ray.y, ray.z, -ray.x)));
  vec3 along = cross(ray, across);
  mat2 view = mat2(across.x, along.x, -across.z, -along.z);
  vec2 seen_eye = vec2(dot(eye, across), dot(eye, along));
  float inside = max(v_corner, 0.0);
  float nearest = v_reach.y;
  vec2 place = vec2(0.0);
  float first = floor(angle / v_gap) - 10.0;
  float beat = floor((first + 0.5) / BEAT_POINTS);
  float point = first - beat * BEAT_POINTS;
  float level = v_height.x * itemEntry(beat);
  float next_level = v_height.x * itemEntry(beat + 1.0);
  vec2 towards = unitVector(radians(first * v_gap) + v_turn.x);
  vec2 from = towards * (v_height.y + level * ecgWeight(point));
  vec2 seen_from = view * from - seen_eye;
  float visits = seen ? 0.0 : 21.0;
  for (;;) {
    point += 1.0;
    bool next = point >= BEAT_POINTS;
    point = next ? 0.0 : point;
    level = next ? next_level : level;
    towards = turnedBy(v_step, towards);
    vec2 to = towards * (v_height.y + level * ecgWeight(point));
    vec2 seen_to = view * to - seen_eye;
    vec2 stroke = seen_to - seen_from;
    float share = clamp(-dot(seen_from, stroke) / max(dot(stroke, stroke), 1e-30), 0.0, 1.0);
    vec2 miss = seen_from + stroke * share;
    float missed = dot(miss, miss);
    place = missed < nearest ? mix(from, to, share) : place;
    nearest = min(nearest, missed);
    from = to;
    seen_from = seen_to;
    visits += 1.0;
    if (visits > 20.5 || missed < inside * inside) break;
  }
  if (nearest < v_reach.y) depth = dot(vec3(place.x, 0.0, -place.y) - eye, ray);
  return sqrt(nearest) - v_corner;
}
#else
// As in the plain form, with angles in gaps.
void addPulses(float angle, bool seen, inout float curve[SAMPLES]) {
  float low = angle - 7.0 * v_spacing;
  float high = angle + 7.0 * v_spacing;
  float last = min(floor(high + v_pulse.x - 0.5), ceil(high));
  float i = ceil(low - v_pulse.x - 0.5);
  last = seen ? last : i;
  for (;;) {
    float height = itemEntry(i) * v_height.x;
    float half_width = i == 0.0 || i == v_count - 1.0 ? v_pulse.y : v_pulse.x;
    float steepness = 1.0 / half_width;
    for (int k = 0; k < SAMPLES; k++) {
      float x = angle + float(k - 7) * v_spacing;
      float known = x > i - 1.0 ? height : 0.0;
      float d = min(abs(x - i - 0.5) * steepness, 1.0);
      curve[k] += known - known * d * d * (3.0 - 2.0 * d);
    }
    i += 1.0;
    if (!(i <= last)) break;
  }
}

float pulsesDistance(float from_centre, float angle, bool seen) {
  float curve[SAMPLES];
  for (int k = 0; k < SAMPLES; k++) curve[k] = 0.0;
  addPulses(angle, seen, curve);
  float over_ring = from_centre - v_height.y;
  float highest = 0.0;
  float nearest = end + v_corner;
  for (int k = 0; k < SAMPLES; k++) {
    highest = max(highest, curve[k]);
    nearest = min(nearest, abs(over_ring - curve[k]));
  }
#if FILL
  return min(end, max(over_ring - highest, -0.02 - over_ring));
#else
  return nearest - v_corner;
#endif
}
#endif

float coverage(float nearness) {
#if GLOW
  return pow(nearness, v_exponent);
#elif FIGURE == 2
  return getLine(nearness);
#else
  return nearness * sqrt(nearness);
#endif
}

void main() {
  float depth = aimedDepth();
  bool meets = meetsPlane(depth);
#if FIGURE == 1
  float shorter = inversesqrt(dot(ray, ray));
  depth /= shorter;
  ray *= shorter;
#endif
  depth = abs(depth);
  vec2 place = placeAt(depth);
  float angle = angleOf(place);
  float from_centre = length(place);
  float beside_band = abs(from_centre - v_band.x) - v_band.y;
#if FIGURE == 1
  // A ray passes nearer to things on the plane than its own place there is. Colours are those of the
  // nearest stroke, however far it is.
  bool seen = COLORING != 0 || !meets || beside_band * abs(ray.y) < sqrt(v_reach.x);
  float from_figure = traceDistance(turnDegrees(angle - v_turn.x), depth, seen);
#if COLORING != 0
  angle = angleOf(placeAt(depth));
#endif
#else
  bool seen = meets && beside_band < 0.0;
#if FIGURE == 0
  float on_figure = turnDegrees(angle + M_PI * 0.5 - v_turn.x);
  float from_figure = sqrt(nearestSquared(from_centre, on_figure, seen)) - v_corner;
#else
  float on_figure = turnDegrees(angle + v_turn.x) / v_gap;
  float from_figure = pulsesDistance(from_centre, on_figure, seen);
#endif
  if (!meets) from_figure = end;
#endif
  float along = turnDegrees(angle + M_PI * 0.5 - v_turn.x);
#if FIGURE == 0 && COLORING == 2
  along = mod(along + v_turn.y, 360.0);
#endif
  transparent = v_opacity;
  fragColor = figurePixel(paintedColor(along), coverage(v_touch / max(from_figure, v_touch)));
}
