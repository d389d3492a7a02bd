
float itemEntry(float i) { return entryAt(clamp(i - v_first, 0.0, float(ENTRIES - 1))); }

// Sets the pixel's ray, of any length. How far along it the plane is, in its own length.
float aimedDepth() {
  eye = vec3(0.0, v_eye);
  vec2 pixel = gl_FragCoord.xy - v_centre;
  ray = v_right * pixel.x + v_down * pixel.y + v_forward;
  return planeDepth();
}
