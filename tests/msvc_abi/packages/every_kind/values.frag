#version 120

// Each value that the host serves fills one column of the picture; the input frame shows through
// from the column behind them on.

uniform sampler2D background_tex;
uniform sampler2D gradient_color_tex;
uniform vec2 iResolution;
uniform float time_second;
uniform float level;
uniform int count;
uniform bool on;
uniform float color_r;
uniform float color_g;
uniform float color_b;
uniform float from_set_uniform;

vec4 Gray(float value) { return vec4(vec3(value), 1.0); }

void main() {
  int column = int(gl_FragCoord.x);
  if (column == 0) {
    gl_FragColor = Gray(level / 4.0);
  } else if (column == 1) {
    gl_FragColor = Gray(float(count) / 255.0);
  } else if (column == 2) {
    gl_FragColor = Gray(on ? 1.0 : 0.2);
  } else if (column == 3) {
    gl_FragColor = vec4(color_r, color_g, color_b, 1.0);
  } else if (column == 4) {
    gl_FragColor = vec4(texture2D(gradient_color_tex, vec2(0.25, 0.5)).rgb, 1.0);
  } else if (column == 5) {
    gl_FragColor = Gray(time_second / 5.0);
  } else if (column == 6) {
    gl_FragColor = Gray(from_set_uniform);
  } else {
    gl_FragColor = texture2D(background_tex, gl_FragCoord.xy / iResolution);
  }
}
