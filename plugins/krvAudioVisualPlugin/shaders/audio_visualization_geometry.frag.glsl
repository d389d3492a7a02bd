
// Flat figures on a rectangle. One ray per pixel meets the rectangle's plane once; the distance from
// there to the figure decides the coverage.
//
// Loops end at their last statement: a renderer that works on many pixels at once runs whatever
// follows a break, for all of them.

float audio_gain = 0.0;

float audioGain() {
  return loudness() * smoothstep(0.0, 1.0, intensity) *
         (1.0 + smoothstep(1.0, 3.0, intensity) * 0.5);
}

// The level, 0..1, at u across the figure.
float getAudioIntensity(float u) {
  u = audioCoordinate(u);
  // One sample as it is, or the two around u eased into each other.
  int samples = audio_averaging ? 2 : 1;
  float at = audio_averaging ? u - mod(u, 0.2) : u;
  float val = 0.0;
  for (int k = 1;; k++) {
    float level = spectrum(at);
    val += audio_averaging ? cubicPulse(at, 0.18, level, u) : level;
    if (k >= samples) break;
    at += 0.2;
  }
  return val < 0.05 ? 0.0 : smoothstep(0.0, 1.0, val * audio_gain);
}

// The same level for figures about a middle line, -0.5..0.5.
float getAudioValue(float audio_intensity) {
  float v = audio_intensity - 0.5;
  return abs(v) < 0.05 ? 0.0 : clamp(v, -0.5, 0.5);
}

// The height over the base or, about the middle line, over it or under it.
float curveHeight(float audio_intensity) {
  return quad_height * (direction == 0 ? audio_intensity : getAudioValue(audio_intensity));
}

float sdRoundBox(vec2 p, vec2 b, float r) {
  vec2 q = abs(p) - b + r;
  return min(max(q.x, q.y), 0.0) + length(max(q, 0.0)) - r;
}

// Squared distance to a segment.
float usqdLineSegment(vec2 p, vec2 a, vec2 b) {
  vec2 ab = b - a;
  vec2 d = p - a - ab * clamp(dot(p - a, ab) / max(dot(ab, ab), 1e-30), 0.0, 1.0);
  return dot(d, d);
}

// From the item before to this one.
float strokeDistance(vec2 p, float pitch, float level_before, float level) {
  p.y -= baseLine();
  vec2 from = vec2(-pitch, curveHeight(level_before));
  vec2 to = vec2(0.0, curveHeight(level));
  return sqrt(usqdLineSegment(p, from, to)) - line_width * quad_width * 0.0015;
}

// The height of the nearest block of a column. Blocks of the given half height stand gap apart;
// rounding 0.5 adds a block when more than half of it fits, 0 when all of it does.
float nearestBlock(float y, float level, float half_height, float gap, float rounding) {
  float pitch = 2.0 * half_height + gap;
  float rest = quad_height * level - 2.0 * half_height;
  float above_first = rest > 0.0 ? floor(rest / pitch + rounding) : 0.0;
  float first = half_height;
  if (direction != 0) {
    above_first = floor(above_first * 0.5) * 2.0;  // as many below the middle as above it
    first = quad_height * 0.5 - (half_height + above_first * 0.5 * pitch);
  }
  return first + pitch * clamp(floor((y - first) / pitch + 0.5), 0.0, above_first);
}

// Every item but a stroke is a rounded box; a point and a circle are nothing but corners. p is
// relative to the item's place on the base edge.
float itemDistance(vec2 p, float level) {
  vec2 half_size;
  float corner = 0.0;
  float centre;
  if (geometry_type == BARS) {
    float height = quad_height * (spectrum_minimum_height * 0.01 * (1.0 - level) + level);
    half_size = vec2(spectrum_width * quad_width * 0.01, height * 0.5);
    corner = half_size.x * spectrum_round;
    centre = direction == 0 ? half_size.y : quad_height * 0.5;
  } else if (geometry_type == POINTS) {
    half_size = vec2(point_size * quad_width * 0.005);
    corner = half_size.x;
    centre = curveHeight(level) + baseLine();
  } else {
    bool circles = geometry_type == CIRCLE_COLUMNS;
    vec2 size = circles ? vec2(circle_size) : vec2(rectangle_width, rectangle_height);
    half_size = size * quad_width * 0.015;
    float gap = (circles ? clrcle_gap_size : rectangle_gap_size) * quad_width * 0.03;
    if (2.0 * half_size.y + gap <= 0.0) return end;
    corner = circles ? half_size.x : 0.0;
    centre = nearestBlock(p.y, level, half_size.y, gap, circles ? 0.0 : 0.5);
  }
  return sdRoundBox(p - vec2(0.0, centre), half_size, corner);
}

// The level of item i of n, the spectrum turned round by offset_x.
float itemLevel(float i, float n) {
  float index = floor(mod(i + offset_x * n, n));
  return getAudioIntensity(index < n ? index / n : 0.0);
}

// Figures of n items in a row: those at most two away from the pixel are looked at. A line's item
// is the stroke to the next vertex, so one vertex more than strokes is needed.
float rowDistance(vec2 p) {
  bool strokes = geometry_type == LINES;
  float n = float(itemCount());
  float last = strokes ? n - 2.0 : n - 1.0;
  if (last < 0.0) return end;
  float pitch = quad_width / n;
  float cell = floor(p.x / pitch);
  float from = clamp(cell - 2.0, 0.0, last);
  float to = clamp(cell + 2.0, 0.0, last) + (strokes ? 1.0 : 0.0);
  float nearest = end;
  float level_before = 0.0;
  for (int k = 0; k < 6; k++) {
    float i = from + float(k);
    float level = itemLevel(i, n);
    vec2 local = vec2(p.x - (i + 0.5) * pitch, p.y);
    if (!strokes) nearest = min(nearest, itemDistance(local, level));
    if (strokes && k > 0) nearest = min(nearest, strokeDistance(local, pitch, level_before, level));
    level_before = level;
    if (i >= to || nearest <= EPSILON) break;
  }
  return nearest;
}

// The sum of the pulses at five places around p, added up pulse by pulse so that each one's level
// is read once. Only the pulses that reach one of the places are visited; where none does, one that
// adds nothing is.
void addPulses(float x, float spacing, inout float curve[5]) {
  float n = float(pulse_count);
  float half_width = quad_width * 2.0 * pulse_width * 0.05;
  float pitch = quad_width / n;
  float shift = half_width - offset_x * quad_width;
  float low = clamp(x - 2.0 * abs(spacing), 0.0, quad_width);
  float high = clamp(x + 2.0 * abs(spacing), 0.0, quad_width);
  float last = floor((high / quad_width + offset_x) * n);
  float first = ceil(((low - 2.0 * half_width) / quad_width + offset_x) * n);
  first = max(first, last - MAX_PULSES);
  for (int visited = 0;; visited++) {
    float i = first + float(visited);
    float height = curveHeight(getAudioIntensity(i / n));
    float centre = pitch * i + shift;
    for (int k = 0; k < 5; k++) {
      curve[k] += cubicPulse(centre, half_width, height, x + float(k - 2) * spacing);
    }
    if (!(i < last)) break;
  }
}

// From a sample at height y to the area between the base line and the curve, both heights over it.
float fillDistance(float y, float curve) {
  float side = curve < 0.0 ? -1.0 : 1.0;
  return max(0.0, max(side * (y - curve), -side * y));
}

// Pulses are looked at in a small neighbourhood of the pixel: 5 places along the curve, for filled
// pulses 5 x 5 places, the nearest of which counts.
float pulsesDistance(vec2 p) {
  if (pulse_count <= 0) return end;
  float spacing = pulse_fill ? 0.01 : pulse_line_width * 0.01;
  float curve[5];
  for (int k = 0; k < 5; k++) curve[k] = 0.0;
  addPulses(p.x, spacing, curve);
  float line = pulse_line_width * quad_width * 0.003;
  float y = p.y - baseLine();
  float nearest = end;
  for (int k = 0; k < 5; k++) {
    float dx = float(k - 2) * spacing;
    if (p.x + dx < 0.0 || p.x + dx > quad_width) continue;
    if (pulse_fill) {
      for (int m = -2; m <= 2; m++) {
        nearest = min(nearest, fillDistance(y + float(m) * spacing, curve[k]));
      }
    } else {
      nearest = min(nearest, length(vec2(dx, y - curve[k])) - line);
    }
  }
  return nearest;
}

float figureDistance(vec2 p) { return geometry_type == PULSES ? pulsesDistance(p) : rowDistance(p); }

// Where the ray from eye meets the rectangle's plane, in local coordinates, and in z the distance
// from there to the figure. A plane behind the camera is met in front of it, without a figure.
vec3 raymarch(vec3 eye, vec3 ray) {
  vec3 normal = cross(quad_right, quad_up);
  float slope = dot(normal, ray);
  float t = slope != 0.0 ? dot(normal, quad_corner - eye) / slope : 0.0;
  vec3 hit = eye + ray * abs(t) - quad_corner;
  vec2 p = vec2(dot(hit, quad_right), dot(hit, quad_up));
  float nearest = slope != 0.0 && t >= 0.0 ? figureDistance(p) : end;
  return vec3(p, max(EPSILON, nearest));
}

float coverage(float nearness) {
  if (glow != 0) return getGlow(nearness, 0.3);
  if (geometry_type == LINES || geometry_type == PULSES) return getLine(nearness);
  float edge = 3.5 * nearness;
  return min(1.0, edge * sqrt(edge));
}

vec3 figureColor(vec2 p) {
  if (single_color == 1) return int2rgb(color);
  float across = p.x / quad_width;
  if (!use_gradient_color) return hsv2rgb(across, 1.0, 1.0);
  float ratio = gradient_color_direction == 0 ? p.y / quad_height : across;
  return getGradientColor(clamp(ratio, 0.0, 1.0));
}

void main() {
  if (scale_x == 0.0 || scale_y == 0.0) {
    fragColor = vec4(0.0, 0.0, 0.0, 1.0);
    return;
  }
  transparent = alpha / 100.0;
  audio_gain = audioGain();
  vec2 half_view = halfView();
  placeQuad(half_view);
  vec2 aim = (gl_FragCoord.xy / iResolution * 2.0 - 1.0) * half_view;
  vec3 found = raymarch(vec3(0.0, 0.0, CAMERA_Z), vec3(aim, -CAMERA_Z));
  fragColor = figurePixel(figureColor(found.xy), coverage(EPSILON / found.z));
}
