
// Segments round a ring, one per part of the spectrum: pie slices or capsules.

uniform int direction;                 // segments grow 0: inwards, 1: outwards, else both ways
uniform float gap_degree;              // between two segments
uniform int step_num;                  // segments
uniform int gradient_color_direction;  // 0: along the radius, else round the ring
uniform float stroke_width;            // least length of a segment, 0.02 scene units
uniform int round;                     // 0: pie slices, 1: capsules; hides ES 3.00's function
uniform float round_radius;            // not read

const float EPSILON = 0.01;
const float end = 100.0;

// What all segments have in common; set by main, once per pixel.
float pitch = 0.0;        // degrees from segment to segment
float filled = 0.0;       // degrees of a segment
float half_filled = 0.0;  // half of it, radians
vec2 growth = vec2(0.0);  // share of its length by which a segment grows inwards and outwards
float max_radius = 0.0;   // the band that the segments may fill
float min_raduis = 0.0;

// The turn is in radians although it is cut at 360: it jumps once in 57 turns.
float getRadians() { return mod(turnSinceStart(), 360.0); }

float segmentLength(float level) { return (radius + LEVEL_REACH) * level + 0.02 * stroke_width; }

void placeSegments() {
  pitch = 360.0 / max(float(step_num), 1.0);
  filled = pitch - (gap_degree < pitch ? gap_degree : pitch - 0.1);
  half_filled = radians(filled) * 0.5;
  growth = direction == 0 ? vec2(1.0, 0.0) : direction == 1 ? vec2(0.0, 1.0) : vec2(0.5);
  vec2 longest = growth * segmentLength(1.0);
  max_radius = min(radius + longest.y, radius + 3.0);
  min_raduis = direction == 0 ? 0.0 : direction == 1 ? radius : max(radius - longest.x, 0.0);
  if (round == 1) {
    float cap = max_radius * half_filled;
    max_radius += cap;
    min_raduis -= cap;
  }
}

// From p to a pie slice about the y axis, without the disc that a slice of radius `inner` fills; 0
// inside. The edge is the direction of the slice's straight side.
float sliceDistance(vec2 p, float from_centre, float inner, float outer, vec2 edge) {
  float along = dot(p, edge);
  float beside = edge.y * p.x - edge.x * p.y;
  float side = beside > 0.0 ? length(vec2(beside, along - clamp(along, 0.0, outer))) : 0.0;
  return max(side, max(0.0, max(from_centre - outer, inner - from_centre)));
}

// From p to the hull of two circles on the y axis, at inner and outer, whose radii grow with that
// distance; none when one circle holds the other. The flank is the normal of the hull's side.
float capsuleDistance(vec2 p, float inner, float outer, vec2 flank) {
  float size = outer - inner;
  float inner_cap = inner * half_filled;
  float outer_cap = outer * half_filled;
  if (size < 0.0 || outer_cap > size + inner_cap) return end;
  p.y -= inner;
  float along = dot(p, vec2(-flank.y, flank.x));
  if (along > flank.x * size) return length(p - vec2(0.0, size)) - outer_cap;
  return (along < 0.0 || size == 0.0 ? length(p) : dot(p, flank)) - inner_cap;
}

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
