
// The folded halo spectrum shader. Its further choices:
//
//   DIRECTION  segments grow 0 inwards, 1 outwards, 2 both ways
//   ROUND      0 pie slices, 1 capsules

varying vec3 v_inner;   // an entry's inner radius: the first times it plus the second, not below the
varying vec3 v_outer;   // third; and the outer radius, not above the third
varying vec2 v_side;    // of a slice: direction of the straight side; of a capsule: its normal
varying float v_half;   // half the angle of a segment, radians
varying float v_wrap;   // whole or half turns, degrees, that wide slices are turned by
varying vec2 v_radial;  // the part of the gradient at a radius: the first times it plus the second
