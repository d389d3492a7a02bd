
uniform float entries[ENTRIES];

float entryAt(float i) { return entries[int(i)]; }

// The colour at a place, of which v_share makes the part of the gradient or the hue circle.
vec3 paintedColor(float place) {
#if COLORING == 0
  return v_color;
#elif COLORING == 1
  return hsv2rgb(place * v_share, 1.0, 1.0);
#elif SPANS > 0
  vec3 c = v_color;
  for (int i = 0; i < SPANS; i++) {
    c += v_change[i] * clamp(place * v_span[i].x + v_span[i].y, 0.0, 1.0);
  }
  return channelOrder(c);
#else
  return getGradientColor(clamp(place * v_share, 0.0, 1.0));
#endif
}
