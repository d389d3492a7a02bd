
// The folded halo geometry shader. One more choice:
//
//   FILL       pulse_fill, 0 or 1

varying vec2 v_height;   // an entry's radius, or that of the trace: the first times it plus the second
varying float v_corner;  // radius of a point, half width of a line
#if FIGURE == 2
varying vec2 v_pulse;  // half width of a pulse and of the outermost, in gaps
varying float v_spacing;  // of the samples, in gaps
varying float v_count;    // of pulses
#endif
