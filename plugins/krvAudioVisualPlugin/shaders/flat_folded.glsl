
// The folded flat shader. Its further choices:
//
//   DIRECTION  0 from the base edge, 1 about the middle line, 2 any other
//   FILL       pulse_fill, 0 or 1
//   TURNED     1 rotated about x or y
//
// Lengths in varyings are in widths of an item, those of pulses in scene units. v_reach is measured
// from an item's core.

#if TURNED
varying vec3 v_ray;    // along the rectangle's axes, and towards it
varying vec3 v_plane;  // the camera's place along the axes, and its height over the rectangle
#else
varying vec2 v_place;  // on the rectangle
#endif
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
