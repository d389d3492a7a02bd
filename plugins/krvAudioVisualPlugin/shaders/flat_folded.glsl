
// The folded form of the flat shader draws what the other form draws. Whatever is the same for all
// pixels is worked out once for each corner of the picture and reaches the pixels in varyings;
// choices are macros, and what the items show comes in a table.
//
//   FIGURE     geometry_type
//   DIRECTION  0 from the base edge, 1 about the middle line, 2 any other
//   GLOW       0 or 1
//   COLORING   0 single colour, 1 hue circle, 2 gradient from the base up, 3 gradient across
//   SPANS      between the stops of a sorted gradient; 0 any gradient, read from its texture
//   FILL       pulse_fill, 0 or 1
//   TURNED     1 rotated about x or y
//   ENTRIES    of the table
//
// Lengths in varyings are in widths of an item, those of pulses in scene units.

#if TURNED
varying vec3 v_ray;    // along the rectangle's axes, and towards it
varying vec3 v_plane;  // the camera's place along the axes, and its height over the rectangle
#else
varying vec2 v_place;  // on the rectangle
#endif
varying float v_opacity;
varying float v_exponent;  // of the glow
varying vec3 v_color;      // the single one, or that of the first stop
varying float v_share;     // from a place to its part of the gradient or the hue circle
#if SPANS > 0
varying vec2 v_span[SPANS];    // how far over the span: the first times the place plus the second
varying vec3 v_change[SPANS];  // of the colour, over the span
#endif
varying float v_touch;   // the distance up to which the coverage is full
varying vec2 v_reach;    // from an item's core: squared distance to where it is no longer seen, and
                         // to the end of all distances
varying vec2 v_band;     // middle and half of the heights in which the figure is seen
varying vec2 v_height;   // of an entry: the first times the entry plus the second
varying float v_middle;  // height of the middle line
varying vec2 v_core;     // half size of the core, which an item's rounding surrounds; the height of
                         // a bar is to be added
varying float v_corner;  // radius of the rounding
varying float v_last;    // item
#if FIGURE == 3
varying vec3 v_pulse;  // 1 / half width, pitch, place of pulse 0
varying vec4 v_curve;  // distance of samples, width of the figure; pulses per length, their shift
varying vec2 v_first;  // how far a pulse reaches back; the table's first pulse
#endif
