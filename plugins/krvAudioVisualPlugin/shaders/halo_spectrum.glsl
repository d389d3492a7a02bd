
// What the two forms of the halo spectrum shader share.

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
