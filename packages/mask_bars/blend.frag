#version 120

// Lays the bars over the frame, or what is opaque in the frame over the bars. Both have straight
// alpha, and so has the result: the frame may be a logo on nothing.

uniform sampler2D background_tex;
uniform sampler2D effect_tex;
uniform vec2 iResolution;
uniform bool blend;   // false: the bars alone
uniform bool behind;  // the opaque parts of the frame hide the bars

// As in the passes: its bars point inwards, over it.
bool isPicture() {
  float above = texture2D(background_tex, vec2(0.5, 0.0)).a;
  float below = texture2D(background_tex, vec2(0.5, 1.0)).a;
  float left = texture2D(background_tex, vec2(0.0, 0.5)).a;
  float right = texture2D(background_tex, vec2(1.0, 0.5)).a;
  return min(min(above, below), min(left, right)) > 0.5;
}

vec4 over(vec4 front, vec4 back) {
  float share = back.a * (1.0 - front.a);
  float opacity = front.a + share;
  vec3 c = opacity > 0.0 ? (front.rgb * front.a + back.rgb * share) / opacity : back.rgb;
  return vec4(c, opacity);
}

void main() {
  vec2 at = gl_FragCoord.xy / iResolution;
  vec4 bars = texture2D(effect_tex, at);
  vec4 frame = texture2D(background_tex, at);
  if (!blend) {
    gl_FragColor = bars;
  } else if (behind && !isPicture()) {
    gl_FragColor = over(frame, bars);
  } else {
    gl_FragColor = over(bars, frame);
  }
}
