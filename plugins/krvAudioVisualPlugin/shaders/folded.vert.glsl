
attribute vec2 position;  // in the picture, 0..1

uniform vec4 stops[SPANS + 1];  // of the gradient: colour and position, 0..1
uniform vec2 entry_range;       // the least and the largest entry of the table
uniform float first_entry;      // the item that the table begins with

const float LEAST_COVERAGE = 0.0018;  // a little less than half of 1/255

void paint(float share, float exponent) {
  gl_Position = vec4(2.0 * position - 1.0, -1.0, 1.0);
  v_opacity = alpha / 100.0;
  v_exponent = exponent;
  v_share = share;
  v_color = COLORING == 0 ? int2rgb(color) : stops[0].rgb;
#if SPANS > 0
  for (int i = 0; i < SPANS; i++) {
    float width = stops[i + 1].a - stops[i].a;
    float steepness = width > 0.0 ? 1.0 / width : 1e9;  // or a step
    v_span[i] = vec2(steepness * share, -steepness * stops[i].a);
    v_change[i] = stops[i + 1].rgb - stops[i].rgb;
  }
#endif
}

// How far from a figure its coverage is too little to be seen: where coverage is the nearness to
// this power, and for lines.
float sight(float full, float power) {
  return full * pow(max(v_opacity, 1e-6) / LEAST_COVERAGE, 1.0 / power);
}

float sightOfLine(float epsilon) {
  float s = pow(LEAST_COVERAGE / (20.2 * max(v_opacity, 1e-6)), 1.25);
  return epsilon * inversesqrt(s / 3.0);
}
