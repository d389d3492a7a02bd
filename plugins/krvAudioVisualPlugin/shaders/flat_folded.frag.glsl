
#if FIGURE == 2
// From the place to the stroke that begins with item i, squared.
float strokeDistance(vec2 p, float i) {
  float from = entryAt(i) * v_height.x + v_height.y;
  float rise = entryAt(i + 1.0) * v_height.x + v_height.y - from;
  p -= vec2(i + 0.5, from);
  float share = clamp((p.x + p.y * rise) / (1.0 + rise * rise), 0.0, 1.0);
  p -= vec2(1.0, rise) * share;
  return dot(p, p);
}

// The strokes around the place, the nearest first: one that can't be nearer ends the search. In
// which order they are, mirrored about the middle of the place's cell, depends on its half.
float nearestSquared(vec2 p, bool seen) {
  float cell = floor(p.x);
  float mirror = 2.0 * cell - 1.0;
  float side = p.x - cell < 0.5 ? -1.0 : 1.0;
  float i = side < 0.0 ? cell - 1.0 : cell;
  float turn = 0.0;
  float visits = seen ? 0.0 : 9.0;
  float nearest = v_reach.x;
  for (;;) {
    float stroke = clamp(clamp(i, cell - 2.0, cell + 2.0), 0.0, v_last);
    nearest = min(nearest, strokeDistance(p, stroke));
    i = mirror - i + turn;
    turn = side - turn;
    visits += 1.0;
    float gap = max(abs(p.x - i - 1.0) - 0.5, 0.0);
    if (visits > 5.5 || gap * gap >= nearest) break;
  }
  return nearest;
}
#elif FIGURE != 3
// The vertical distance to the core of item i.
float rise(float y, float entry) {
#if FIGURE == 0
  float half_height = entry * v_height.x + v_height.y;
  float centre = DIRECTION == 0 ? half_height : v_middle;
  return abs(y - centre) - (half_height + v_core.y);
#elif FIGURE == 1
  return abs(y - (entry * v_height.x + v_height.y));
#else
  float first = DIRECTION == 0 ? v_height.y : v_height.y - entry * 0.5 * v_height.x;
  float block = clamp(floor((y - first) / v_height.x + 0.5), 0.0, entry);
  return abs(y - first - block * v_height.x) - v_core.y;
#endif
}

// The items around the place, the nearest first: one that can't be nearer ends the search.
float nearestSquared(vec2 p, bool seen) {
  float cell = floor(p.x);
  float side = p.x - cell < 0.5 ? -1.0 : 1.0;
  float farthest = seen ? 2.5 : 0.5;
  float aside = 0.0;
  float i = clamp(cell, 0.0, v_last);
  float beside = max(abs(p.x - i - 0.5) - v_core.x, 0.0);
  float nearest = v_reach.x;
  for (;;) {
    float over = max(rise(p.y, entryAt(i)), 0.0);
    nearest = min(nearest, beside * beside + over * over);
    aside = aside * side > 0.0 ? -aside : side - aside;
    i = clamp(cell + aside, 0.0, v_last);
    beside = max(abs(p.x - i - 0.5) - v_core.x, 0.0);
    if (aside * side > farthest || beside * beside >= nearest) break;
  }
  return nearest;
}
#endif

#if FIGURE == 3
void addPulses(float x, bool seen, inout float curve[5]) {
  float low = clamp(x - 2.0 * v_curve.x, 0.0, v_curve.y);
  float high = clamp(x + 2.0 * v_curve.x, 0.0, v_curve.y);
  float last = seen ? floor(high * v_curve.z + v_curve.w) : -1e9;
  float i = ceil((low - v_first.x) * v_curve.z + v_curve.w);
  for (;;) {
    float height = entryAt(clamp(i - v_first.y, 0.0, float(ENTRIES - 1))) * v_height.x;
    float from_centre = (x - v_pulse.y * i - v_pulse.z) * v_pulse.x;
    for (int k = 0; k < 5; k++) {
      float d = min(abs(from_centre + float(k - 2) * v_curve.x * v_pulse.x), 1.0);
      curve[k] += height - height * d * d * (3.0 - 2.0 * d);
    }
    i += 1.0;
    if (!(i <= last)) break;
  }
}

// Only such samples count.
bool isAcross(float x) { return x >= 0.0 && x <= v_curve.y; }

// The squared distance to the line, or to the area between base line and curve: all samples' parts
// of it begin at the base line, so together they are one piece.
float nearestSquared(vec2 p, bool seen) {
  float curve[5];
  for (int k = 0; k < 5; k++) curve[k] = 0.0;
  addPulses(p.x, seen, curve);
  float y = p.y - v_height.y;
  float nearest = v_reach.y;
#if FILL
  float low = 0.0;
  float high = 0.0;
  for (int k = 0; k < 5; k++) {
    float counted = isAcross(p.x + float(k - 2) * v_curve.x) ? curve[k] : 0.0;
    low = min(low, counted);
    high = max(high, counted);
  }
  for (int k = 0; k < 5; k++) {
    float place = y + float(k - 2) * v_curve.x;
    float over = max(max(place - high, low - place), 0.0);
    nearest = min(nearest, over * over);
  }
  bool reached = p.x + 2.0 * v_curve.x >= 0.0 && p.x - 2.0 * v_curve.x <= v_curve.y;
  if (!reached) nearest = v_reach.y;
#else
  for (int k = 0; k < 5; k++) {
    float dx = float(k - 2) * v_curve.x;
    float over = y - curve[k];
    nearest = min(nearest, isAcross(p.x + dx) ? dx * dx + over * over : v_reach.y);
  }
#endif
  return nearest;
}
#endif

float coverage(float nearness) {
#if GLOW
  return pow(nearness, v_exponent);
#elif FIGURE == 2 || FIGURE == 3
  return getLine(nearness);
#else
  return nearness * sqrt(nearness);
#endif
}

void main() {
#if TURNED
  // A plane behind the camera is met in front of it, without a figure.
  float depth = v_ray.z != 0.0 ? v_plane.z / v_ray.z : 0.0;
  vec2 p = v_plane.xy + v_ray.xy * abs(depth);
  bool meets = v_ray.z != 0.0 && depth >= 0.0;
#else
  vec2 p = v_place;
  bool meets = true;
#endif
  bool seen = meets && abs(p.y - v_band.x) < v_band.y;
  float nearest = nearestSquared(p, seen);
#if TURNED
  if (!meets) nearest = v_reach.y;
#endif
  transparent = v_opacity;
  float from_figure = max(sqrt(nearest) - v_corner, v_touch);
  fragColor = figurePixel(paintedColor(COLORING == 2 ? p.y : p.x), coverage(v_touch / from_figure));
}
