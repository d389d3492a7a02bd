
// The folded form of a shader draws what the plain form draws. Whatever is the same for all pixels
// is worked out once for each corner of the picture and reaches the pixels in varyings; choices are
// macros, and what the items show comes in a table.
//
//   FIGURE     geometry_type
//   GLOW       0 or 1
//   COLORING   0 single colour, 1 hue circle, 2 gradient in direction 0, 3 gradient in any other
//   SPANS      between the stops of a sorted gradient; 0 any gradient, read from its texture
//   ENTRIES    of the table

varying float v_opacity;
varying float v_exponent;  // of the glow
varying vec3 v_color;      // the single one, or that of the first stop
varying float v_share;     // from a place to its part of the gradient or the hue circle
#if SPANS > 0
varying vec2 v_span[SPANS];    // how far over the span: the first times the place plus the second
varying vec3 v_change[SPANS];  // of the colour, over the span
#endif
varying float v_touch;  // the distance up to which the coverage is full
varying vec2 v_reach;   // the squared distance at which nothing is seen any more, and the largest one
varying vec2 v_band;    // middle and half of the heights or radii where the figure is seen
