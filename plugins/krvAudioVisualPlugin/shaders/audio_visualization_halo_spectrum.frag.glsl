
// Segments round a ring, one per part of the spectrum: pie slices or capsules.

// From a place this far from the centre, at this angle from the first segment: to the segments at
// most two away. A segment's place wraps round the ring, its level does not.
float segmentsDistance(float from_centre, float angle) {
  if (step_num <= 0) return end;
  float n = float(step_num);
  // A slice's sides count as angles of one turn: a wider slice is what it covers twice.
  float turns = round == 0 && filled > 360.0 ? floor(filled / 360.0) : 0.0;
  vec2 edge = unitVector(M_PI * (0.5 + turns) - half_filled);
  vec2 flank = vec2(sqrt(max(1.0 - half_filled * half_filled, 0.0)), -half_filled);
  vec2 limits = vec2(direction == 1 ? radius : 0.0,
                     radius * (direction == 0 ? 1.0 : direction == 1 ? 2.2 : 1.6));
  float i = floor(angle / pitch) - 2.0;
  vec2 towards = unitVector(radians(angle - i * pitch + 180.0 * turns));
  vec2 turn = unitVector(radians(-pitch));
  float nearest = end;
  for (int k = 0;; k++) {
    vec2 grown = growth * segmentLength(getAudioIntensity(i / n));
    float inner = max(radius - grown.x, limits.x);
    float outer = min(radius + grown.y, limits.y);
    vec2 p = from_centre * vec2(abs(towards.y), towards.x);
    nearest = min(nearest, round == 0 ? sliceDistance(p, from_centre, inner, outer, edge)
                                      : capsuleDistance(p, inner, outer, flank));
    towards = turnedBy(turn, towards);
    i += 1.0;
    if (k >= 4 || nearest <= EPSILON) break;
  }
  return nearest;
}

float coverage(float nearness) {
  if (glow != 0) return getGlow(nearness, 0.3);
  float edge = 1.5 * nearness;
  return min(1.0, edge * edge);
}

// Of a place this far from the centre, at this angle from the first segment.
vec3 figureColor(float from_centre, float angle) {
  if (single_color == 1) return int2rgb(color);
  if (!use_gradient_color) return hsv2rgb(angle / 360.0, 1.0, 1.0);
  if (gradient_color_direction != 0) {
    return getGradientColor(clamp(mod(angle - filled * 0.5, 360.0) / 360.0, 0.0, 1.0));
  }
  float band = max_radius - min_raduis;
  float ratio = band != 0.0 ? (from_centre - min_raduis) / band : 0.0;
  if (direction == 0) return getGradientColor(1.0 - ratio);
  return getGradientColor(direction == 1 ? ratio : abs(ratio - 0.5) * 2.0);
}

void main() {
  if (radius == 0.0) {
    fragColor = vec4(0.0, 0.0, 0.0, 1.0);
    return;
  }
  setUp();
  placeSegments();
  float depth = planeDepth();
  // A ray that misses is coloured by its point in front of the camera, off the plane.
  float from_centre = length(eye + ray * abs(depth));
  float angle = turnDegrees(angleOf(placeAt(abs(depth))) + M_PI * 0.5 - getRadians());
  float nearest = meetsPlane(depth) ? segmentsDistance(from_centre, angle) : end;
  vec3 c = figureColor(from_centre, angle);
  fragColor = figurePixel(c, coverage(EPSILON / max(EPSILON, nearest)));
}
