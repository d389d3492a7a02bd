
// Lays the effect over the frame. Where the effect is opaque it is added instead: that is how an
// effect lightens the frame.

uniform sampler2D background_tex;
uniform sampler2D effect_tex;
uniform vec2 iResolution;  // pixels
uniform bool blend;        // false: the effect alone

void main() {
  vec2 uv = gl_FragCoord.xy / iResolution;
  vec4 effect = texture(effect_tex, uv);
  vec4 background = texture(background_tex, uv);
  if (!blend) {
    fragColor = effect;
  } else if (effect.a < 1.0) {
    fragColor = mix(background, effect, effect.a);
  } else {
    fragColor = background + effect;
  }
}
