
// What the visualisation shaders share. All angles are in radians unless a name says degrees.

uniform sampler2D background_tex;      // the frame below; not read here
uniform sampler2D gradient_color_tex;  // one texel per stop: colour, position 0..1 in alpha
uniform sampler2D audio_tex;           // the spectrum, in red, lowest frequency at 0
uniform vec2 iResolution;              // pixels
uniform float time_second;             // seconds
uniform float intensity;               // audio gain
uniform float alpha;                   // opacity, percent
uniform int single_color;              // 1: color_r, color_g, color_b everywhere
uniform int color;                     // packed; the channels below are read instead
uniform float color_r;                 // 0..1
uniform float color_g;
uniform float color_b;
uniform bool use_gradient_color;       // gradient instead of the hue circle
uniform int gradient_color_count;      // stops
uniform float position_x;              // percent of the frame
uniform float position_y;
uniform int glow;                      // 0: crisp edges
uniform float glow_intensity;
uniform float audio_left_db;           // loudness of the frame
uniform float audio_right_db;
uniform float audio_db_min;            // loudness at which the figure is flat
uniform float audio_db_max;            // loudness at which it moves fully
uniform float audio_frequency_min;     // part of the spectrum shown, 0..1
uniform float audio_frequency_max;
uniform bool audio_mirror;             // highest frequency in the middle
uniform bool audio_averaging;

const float M_PI = 3.1415926535897932384626433832795;

float transparent = 1.0;  // opacity of the whole figure, set by main

// smoothstep that may fall (from > to) as well as rise. Equal edges are a step just above them.
float ramp(float from, float to, float x) {
  if (from == to) return x > from ? 1.0 : 0.0;
  float t = clamp((x - from) / (to - from), 0.0, 1.0);
  return t * t * (3.0 - 2.0 * t);
}

// A smooth bump of height h over c - w .. c + w; 0 outside, and everywhere when w is not above 0.
float cubicPulse(float c, float w, float h, float x) {
  float d = abs(x - c);
  if (d >= w) return 0.0;
  d /= w;
  return (1.0 - d * d * (3.0 - 2.0 * d)) * h;
}

vec3 hsv2rgb(float h, float s, float v) {
  vec3 p = abs(fract(vec3(h) + vec3(1.0, 2.0 / 3.0, 1.0 / 3.0)) * 6.0 - 3.0);
  return v * mix(vec3(1.0), clamp(p - 1.0, 0.0, 1.0), s);
}

// The single colour. The packed colour is not taken apart here: it arrives as channels as well.
vec3 int2rgb(int c) { return vec3(color_r, color_g, color_b); }

// Some compositors want red and blue exchanged.
vec3 channelOrder(vec3 c) {
#ifdef GOOGLE_ANGLE
  return c.bgr;
#else
  return c;
#endif
}

// The gradient at pos, 0..1; black with fewer than two stops. Stops are taken as they come: where
// none encloses pos, as in an unsorted list, it stays black too.
vec3 getGradientColor(float pos) {
  vec3 result = vec3(0.0);
  int last = gradient_color_count - 1;
  vec4 before = vec4(0.0);
  for (int i = 0;; i++) {
    float u = (float(i) + 0.5) / max(float(gradient_color_count), 1.0);
    vec4 stop = texture(gradient_color_tex, vec2(u, 0.0));
    bool enclosed = before.a <= pos && pos <= stop.a;
    bool ahead = i == 1 && pos < before.a;
    if (i > 0 && enclosed) {
      float width = stop.a - before.a;
      result = mix(before.rgb, stop.rgb, width > 0.0 ? (pos - before.a) / width : 0.0);
    } else if (ahead) {
      result = before.rgb;
    } else if (i > 0 && i == last && pos > stop.a) {
      result = stop.rgb;
    }
    if (i >= last || (i > 0 && (enclosed || ahead))) break;
    before = stop;
  }
  return channelOrder(result);
}

// Where the spectrum is read for u, the place across the figure in 0..1.
float audioCoordinate(float u) {
  if (audio_mirror) u = 1.0 - abs(u - 0.5) * 2.0;
  return (audio_frequency_max - audio_frequency_min) * u + audio_frequency_min;
}

float spectrum(float u) { return texture(audio_tex, vec2(u, 0.0)).r; }

// How far the loudness of the frame lets the figure move, 0..1.
float loudness() { return ramp(audio_db_min, audio_db_max, audio_left_db); }

// Coverage with a halo: nearness, EPSILON / distance, to this power. A smaller base reaches further.
float glowExponent(float base) { return base + ramp(1.0, 0.1, glow_intensity) * 0.4; }

float getGlow(float nearness, float base) {
  return pow(nearness, glowExponent(base));
}

// Coverage of thin lines.
float getLine(float nearness) {
  float s = smoothstep(0.0, 1.0, nearness);
  return min(1.0, pow(s, 0.8) * 20.0) + min(1.0, s * sqrt(s) * 10.0);
}

// The alpha stays below 1: an opaque pixel would be added to the frame instead of laid over it.
vec4 figurePixel(vec3 c, float coverage) {
  return vec4(channelOrder(c), clamp(transparent * coverage, 0.0, 0.99));
}
