
// What the plain halo shaders share.
//
// Loops end at their last statement, as in the flat shader.

float audio_gain = 0.0;

// The level, 0..1, at u round the ring: seven samples of the spectrum, eased into each other. The
// last one is eased into the first.
float getAudioIntensity(float u) {
  u = audioCoordinate(u);
  const float width = 0.8 / 7.0;
  float left = floor(u * 7.0) / 7.0;
  float right = left + 1.0 / 7.0;
  float a = spectrum(left);
  float b = spectrum(right < 0.9 ? right : 0.0);
  float val = cubicPulse(left, width, a * a * a, u) + cubicPulse(right, width, b * b * b, u);
  return val < 0.05 ? 0.0 : smoothstep(0.0, 1.0, val * audio_gain);
}

// What main needs of the uniforms, and the pixel's ray.
void setUp() {
  transparent = alpha / 100.0;
  audio_gain = loudness() * intensity;
  eye = cameraPlace();
  ray = normalize(rayThrough(eye, gl_FragCoord.xy));
}
