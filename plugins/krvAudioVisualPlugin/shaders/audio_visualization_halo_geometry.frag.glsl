
// Figures on a ring: points, an ECG trace, pulses.

float turned = 0.0;  // getRadians(), set by main once per pixel

// From a place this far from the centre, at this angle from the first point: to the nearest of the
// points at most two away.
float pointsDistance(float from_centre, float angle) {
  if (point_count <= 0) return end;
  float n = float(point_count);
  float gap = 360.0 / n;
  float reach = point_direction == 0 ? LEVEL_REACH : -LEVEL_REACH;
  float disc = point_size * 0.25;
  float touching = max(disc + EPSILON, 0.0);
  float i = floor(angle / gap) - 2.0;
  vec2 towards = unitVector(radians(i * gap - angle));
  vec2 turn = unitVector(radians(gap));
  float nearest = FARTHEST * FARTHEST;  // squared
  for (int k = 0;; k++) {
    float level = getAudioIntensity(wrapped(i, n) / n);
    vec2 offset = towards * (radius + reach * level) - vec2(from_centre, 0.0);
    nearest = min(nearest, dot(offset, offset));
    towards = turnedBy(turn, towards);
    i += 1.0;
    if (k >= 4 || nearest < touching * touching) break;
  }
  return min(end, sqrt(nearest) - disc);
}

// Looks at the 21 strokes from point `first` of the trace on, and stops inside one. `view` takes
// places to what a look along the ray leaves of them, relative to the ring's centre; `seen_eye` is
// the eye in that view. `nearest` is squared.
void followTrace(float first, mat2 view, vec2 seen_eye, inout vec2 place, inout float nearest) {
  float beats = float(ECG_count);
  float beat = floor((first + 0.5) / BEAT_POINTS);
  float point = first - beat * BEAT_POINTS;
  float level = LEVEL_REACH * getAudioIntensity(wrapped(beat, beats) / beats);
  float next_level = LEVEL_REACH * getAudioIntensity(wrapped(beat + 1.0, beats) / beats);
  float gap = radians(360.0 / (BEAT_POINTS * beats));
  vec2 turn = unitVector(gap);
  vec2 towards = unitVector(first * gap + turned);
  float inside = max(ECG_line_width * 0.1, 0.0);
  vec2 from = towards * (radius + level * ecgWeight(point));
  vec2 seen_from = view * from - seen_eye;
  for (int k = 1;; k++) {
    point += 1.0;
    if (point >= BEAT_POINTS) {
      point = 0.0;
      level = next_level;
    }
    towards = turnedBy(turn, towards);
    vec2 to = towards * (radius + level * ecgWeight(point));
    vec2 seen_to = view * to - seen_eye;
    vec2 stroke = seen_to - seen_from;
    float share = clamp(-dot(seen_from, stroke) / max(dot(stroke, stroke), 1e-30), 0.0, 1.0);
    vec2 miss = seen_from + stroke * share;
    float missed = dot(miss, miss);
    if (missed < nearest) {
      nearest = missed;
      place = mix(from, to, share);
    }
    from = to;
    seen_from = seen_to;
    if (k >= 21 || missed < inside * inside) break;
  }
}

// From the ray to the trace: to the strokes at most ten away from its place on the plane, at this
// angle; to all of them when the ray never meets the plane. Moves the depth to the nearest stroke.
float ecgDistance(float angle, inout float depth) {
  if (ECG_count <= 0) return end;
  float beats = float(ECG_count);
  vec3 across = normalize(cross(ray, vec3(ray.y, ray.z, -ray.x)));
  vec3 along = cross(ray, across);
  mat2 view = mat2(across.x, along.x, -across.z, -along.z);
  vec2 seen_eye = vec2(dot(eye, across), dot(eye, along));
  float line = ECG_line_width * 0.1;
  float farthest = max(end + line, 0.0);
  float nearest = farthest * farthest;
  vec2 place = vec2(0.0);
  bool meets = ray.y != 0.0;
  float first = meets ? floor(angle / (360.0 / (BEAT_POINTS * beats))) - 10.0 : 0.0;
  float blocks = meets ? 1.0 : min(beats, MAX_BEATS);
  for (int block = 1;; block++) {
    followTrace(first, view, seen_eye, place, nearest);
    first += BEAT_POINTS;
    if (float(block) >= blocks || (line > 0.0 && nearest < line * line)) break;
  }
  if (nearest < farthest * farthest) depth = dot(vec3(place.x, 0.0, -place.y) - eye, ray);
  return sqrt(nearest) - line;
}

// Adds the pulses to the samples of their curve around an angle, pulse by pulse, so that the level
// of each is read once. Only the pulses that reach a sample are visited; where none does, one that
// adds nothing is. A sample knows the pulses up to the one that begins behind it.
void addPulses(float angle, float spacing, inout float curve[SAMPLES]) {
  float n = float(pulse_count);
  float gap = 360.0 / n;
  float width = gap * pulse_width * 0.1;
  float outermost_width = min(width, gap) * 0.5;
  float low = angle - 7.0 * spacing;
  float high = angle + 7.0 * spacing;
  float last = min(floor((high + width * 0.5) / gap - 0.5), ceil(high / gap));
  float first = max(ceil((low - width * 0.5) / gap - 0.5), last - MAX_PULSES);
  for (int visited = 0;; visited++) {
    float i = first + float(visited);
    float height = LEVEL_REACH * getAudioIntensity(i / n);
    float half_width = i == 0.0 || i == n - 1.0 ? outermost_width : width * 0.5;
    for (int k = 0; k < SAMPLES; k++) {
      float x = angle + float(k - 7) * spacing;
      float seen = x > (i - 1.0) * gap ? height : 0.0;
      curve[k] += cubicPulse((i + 0.5) * gap, half_width, seen, x);
    }
    if (!(i < last)) break;
  }
}

// From a place this far from the centre, at this angle, to the ring with its pulses. A filled ring
// is nearest at the highest sample.
float pulsesDistance(float from_centre, float angle) {
  if (pulse_count <= 0) return end;
  float spacing = pulse_fill ? 0.001 : abs(pulse_line_width * 0.2);
  float curve[SAMPLES];
  for (int k = 0; k < SAMPLES; k++) curve[k] = 0.0;
  addPulses(angle, spacing, curve);
  float over_ring = from_centre - radius;
  float highest = 0.0;
  float nearest = end + 0.1 * pulse_line_width;
  for (int k = 0; k < SAMPLES; k++) {
    highest = max(highest, curve[k]);
    nearest = min(nearest, abs(over_ring - curve[k]));
  }
  if (pulse_fill) return min(end, max(over_ring - highest, -0.02 - over_ring));
  return nearest - 0.1 * pulse_line_width;
}

float coverage(float nearness) {
  if (glow != 0) return getGlow(nearness, 0.4);
  if (geometry_type == PULSES) return getLine(nearness);
  float edge = 3.5 * nearness;
  return min(1.0, edge * sqrt(edge));
}

// The angle of a place on the plane, in degrees from the first point.
vec3 figureColor(float angle) {
  if (single_color == 1) return int2rgb(color);
  if (!use_gradient_color) return hsv2rgb(angle / 360.0, 1.0, 1.0);
  if (geometry_type == POINTS) {
    // The gradient begins at the first point's edge.
    float side = point_direction == 0 ? 1.0 : -1.0;
    float ring = radius + radius * 0.5 * getAudioIntensity(0.0) * side;
    float edge = point_size * 0.5 + 2.5 * EPSILON;
    angle = mod(angle + 360.0 * edge / (2.0 * M_PI * ring), 360.0);
  }
  return getGradientColor(clamp(angle / 360.0, 0.0, 1.0));
}

void main() {
  if (radius == 0.0) {
    fragColor = vec4(0.0, 0.0, 0.0, 1.0);
    return;
  }
  setUp();
  turned = getRadians();
  float depth = planeDepth();
  bool meets = meetsPlane(depth);
  depth = abs(depth);
  vec2 place = placeAt(depth);
  float angle = angleOf(place);
  float nearest = end;
  if (geometry_type == ECG) {
    nearest = ecgDistance(turnDegrees(angle - turned), depth);
    angle = angleOf(placeAt(depth));
  } else if (meets && geometry_type == POINTS) {
    nearest = pointsDistance(length(place), turnDegrees(angle + M_PI * 0.5 - turned));
  } else if (meets && geometry_type == PULSES) {
    nearest = pulsesDistance(length(place), turnDegrees(angle + turned));
  }
  vec3 c = figureColor(turnDegrees(angle + M_PI * 0.5 - turned));
  fragColor = figurePixel(c, coverage(EPSILON / max(EPSILON, nearest)));
}
