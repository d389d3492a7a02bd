#version 120

// A disc that fades towards its edge.
uniform vec2 iResolution;

void main() {
  float away = length(gl_FragCoord.xy - 0.5 * iResolution) / iResolution.y;
  gl_FragColor = vec4(1.0, 0.8 - away, 0.3, 0.99 * (1.0 - smoothstep(0.1, 0.45, away)));
}
