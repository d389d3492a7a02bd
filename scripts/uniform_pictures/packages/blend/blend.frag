#version 120

// Shows what a blend shader reads; `what` says which.
uniform int what;
uniform sampler2D background_tex;
uniform sampler2D effect_tex;
uniform vec2 iResolution;
uniform bool blend;

void main() {
  vec2 at = gl_FragCoord.xy / iResolution;
  vec4 figure = texture2D(effect_tex, at);
  vec4 picture = texture2D(background_tex, at);
  if (what == 0) {
    gl_FragColor = vec4(figure.rgb, 1.0);
  } else if (what == 1) {
    gl_FragColor = vec4(vec3(figure.a), 1.0);
  } else if (what == 2) {
    gl_FragColor = picture;
  } else {
    gl_FragColor = blend ? mix(picture, figure, figure.a) : figure;
  }
}
