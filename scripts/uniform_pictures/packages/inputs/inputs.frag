#version 120

// Shows one of the inputs that every shader gets; `what` says which.
uniform int what;
uniform sampler2D background_tex;
uniform sampler2D audio_tex;
uniform sampler2D gradient_color_tex;
uniform int gradient_color_count;
uniform vec2 iResolution;
uniform float time_second;
uniform float audio_left_db;
uniform float audio_right_db;

vec3 grey(float value) { return vec3(clamp(value, 0.0, 1.0)); }

// A bar from the left that is as long as the value.
vec3 bar(vec2 at, float value) {
  return at.x < value && abs(at.y - 0.5) < 0.12 ? vec3(0.4, 0.8, 1.0) : vec3(0.1);
}

void main() {
  vec2 at = gl_FragCoord.xy / iResolution;
  vec3 colour = vec3(0.0);
  if (what == 0) {
    colour = texture2D(background_tex, at).rgb;
  } else if (what == 1) {
    // Above the texture itself, below its red channel as a curve.
    float level = texture2D(audio_tex, vec2(at.x, 0.5)).r;
    colour = at.y < 0.3 ? grey(level) : 1.0 - at.y < 0.7 * level ? vec3(0.4, 0.8, 1.0) : vec3(0.1);
  } else if (what == 2) {
    colour = bar(at, audio_left_db / 100.0);
  } else if (what == 3) {
    colour = bar(at, audio_right_db / 100.0);
  } else if (what == 4) {
    // A hand that turns once in ten seconds.
    vec2 from_middle = (gl_FragCoord.xy - 0.5 * iResolution) / iResolution.y;
    vec2 hand = vec2(sin(0.628319 * time_second), -cos(0.628319 * time_second));
    float along = clamp(dot(from_middle, hand), 0.0, 0.4);
    float away = min(length(from_middle - along * hand) - 0.012, abs(length(from_middle) - 0.44));
    colour = mix(vec3(0.4, 0.8, 1.0), vec3(0.1), smoothstep(0.0, 0.008, away));
  } else if (what == 5) {
    colour = vec3(at, 0.0);
  } else {
    // Above the texels' colours, below their alpha: the places of the stops.
    float texel = (floor(at.x * float(gradient_color_count)) + 0.5) / float(gradient_color_count);
    vec4 stop = texture2D(gradient_color_tex, vec2(texel, 0.5));
    colour = at.y < 0.6 ? stop.rgb : grey(stop.a);
  }
  gl_FragColor = vec4(colour, 0.99);
}
