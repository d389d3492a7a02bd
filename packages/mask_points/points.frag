#version 120
#extension GL_EXT_gpu_shader4 : enable

// Second pass: points on the outline of a person, each with the level of its part of the spectrum.
// The louder, the farther it moves out, on a thin stem.

uniform sampler2D background_tex;      // what the first pass says of each tile
uniform sampler2D mask_tex;            // the person
uniform sampler2D mask_point_tex;      // place as fractions of the picture, normal
uniform sampler2D gradient_color_tex;  // one texel per stop: colour, position in alpha
uniform sampler2D audio_tex;           // the spectrum, in red
uniform int points_count;
uniform float current_point_size;   // of the picture's shorter side
uniform float available_region_x1;  // what points reach, fractions of the picture
uniform float available_region_x2;
uniform float available_region_y1;
uniform float available_region_y2;
uniform int max_length;  // pixels of a mask whose shorter side is 480 at most
uniform vec2 iResolution;
uniform float time_second;
uniform bool behind;        // the person hides what is in front of it
uniform float alpha;        // opacity, percent
uniform int single_color;   // 1: color_r, color_g, color_b everywhere
uniform float color_r;
uniform float color_g;
uniform float color_b;
uniform float color_speed;  // turns of the hue circle per second
uniform bool use_gradient_color;
uniform int gradient_color_count;
uniform int gradient_color_direction;  // 0: round the outline, 1: outwards
uniform int glow;
uniform float glow_intensity;
uniform float intensity;  // audio gain
uniform float audio_left_db;
uniform float audio_db_min;
uniform float audio_db_max;
uniform float audio_frequency_min;  // part of the spectrum shown, 0..1
uniform float audio_frequency_max;
uniform bool audio_mirror;

const float TILE = 16.0;  // pixels; as in the first pass
const float DOT = 0.2;    // radius of a point, of its size; the rest is for its light

// Set by main, once per pixel.
float audio_gain = 0.0;
float reach = 0.0;  // pixels at the full level
float size = 0.0;   // of a point with its light, pixels
float dot_radius = 0.0;

vec3 light = vec3(0.0);  // colours by their coverage
float covered = 0.0;
float open = 1.0;  // what all points together let through

vec4 outlinePoint(int i) { return texelFetch2D(mask_point_tex, ivec2(i, 0), 0); }

float loudness() {
  float range = max(audio_db_max - audio_db_min, 0.001);
  float loud = clamp((audio_left_db - audio_db_min) / range, 0.0, 1.0);
  return loud * loud * (3.0 - 2.0 * loud);
}

float levelAt(float u) {
  if (audio_mirror) u = 1.0 - abs(u - 0.5) * 2.0;
  u = mix(audio_frequency_min, audio_frequency_max, u);
  return clamp(texture2D(audio_tex, vec2(u, 0.0)).r * audio_gain, 0.0, 1.0);
}

vec3 hueColor(float hue) {
  vec3 p = abs(fract(vec3(hue) + vec3(1.0, 2.0 / 3.0, 1.0 / 3.0)) * 6.0 - 3.0);
  return mix(vec3(1.0), clamp(p - 1.0, 0.0, 1.0), 0.85);
}

vec3 gradientColor(float place) {
  float count = max(float(gradient_color_count), 1.0);
  vec4 before = texture2D(gradient_color_tex, vec2(0.5 / count, 0.5));
  vec3 result = before.rgb;
  for (int i = 1; i < gradient_color_count; i++) {
    vec4 stop = texture2D(gradient_color_tex, vec2((float(i) + 0.5) / count, 0.5));
    float width = max(stop.a - before.a, 1e-4);
    result = mix(result, stop.rgb, clamp((place - before.a) / width, 0.0, 1.0));
    before = stop;
  }
  return result;
}

vec3 pointColor(float u, float level) {
  if (single_color == 1) return vec3(color_r, color_g, color_b);
  if (!use_gradient_color) return hueColor(u + time_second * color_speed);
  return gradientColor(gradient_color_direction == 1 ? level : 1.0 - abs(u - 0.5) * 2.0);
}

void addPoint(vec4 point, float u) {
  float level = levelAt(u);
  vec2 from_base = gl_FragCoord.xy - point.xy * iResolution;
  float way = reach * level;
  float from_tip = length(from_base - point.zw * way);
  float along = clamp(dot(from_base, point.zw), 0.0, way);
  float from_stem = length(from_base - point.zw * along);
  if (min(from_tip, from_stem) > size) return;

  float radius = dot_radius * (0.7 + 0.5 * level);
  float body = 1.0 - smoothstep(radius - 0.75, radius + 0.75, from_tip);
  float share = way > 0.0 ? along / way : 0.0;
  float stem_radius = max(0.3 * radius * share, 0.35);
  float stem = 0.75 * share * (1.0 - smoothstep(stem_radius - 0.5, stem_radius + 0.75, from_stem));
  float halo = 0.0;
  if (glow != 0) {
    float near = clamp(1.0 - from_tip / size, 0.0, 1.0);
    float beside = clamp(1.0 - from_stem / size, 0.0, 1.0) * share;
    halo = near * near * near + 0.35 * beside * beside * beside;
    halo *= glow_intensity * (0.35 + 0.65 * level);
  }
  vec3 c = mix(pointColor(u, level), vec3(1.0), 0.45 * body * level);
  float coverage = clamp(max(body, stem) * (0.55 + 0.45 * level) + halo, 0.0, 1.0);
  light += c * coverage;
  covered += coverage;
  open *= 1.0 - coverage;
}

void addNearPoints(vec4 groups) {
  int group_size = (points_count + 31) / 32;
  for (int channel = 0; channel < 4; channel++) {
    int first = 8 * channel * group_size;
    for (int bits = int(groups[channel]); bits != 0; bits >>= 1) {
      int end = (bits & 1) == 1 ? min(first + group_size, points_count) : first;
      for (int i = first; i < end; i++) {
        addPoint(outlinePoint(i), (float(i) + 0.5) / float(points_count));
      }
      first += group_size;
    }
  }
}

void main() {
  gl_FragColor = vec4(0.0);
  vec2 at = gl_FragCoord.xy / iResolution;
  vec2 low = vec2(available_region_x1, available_region_y1);
  vec2 high = vec2(available_region_x2, available_region_y2);
  if (points_count < 1 || any(lessThan(at, low)) || any(greaterThan(at, high))) return;
  vec2 tile = floor(gl_FragCoord.xy / TILE);
  vec4 groups = floor(texture2D(background_tex, (tile + 0.5) / iResolution) * 255.0 + 0.5);
  if (groups == vec4(0.0)) return;

  float shorter = min(iResolution.x, iResolution.y);
  vec2 mask_size = vec2(textureSize2D(mask_tex, 0));
  reach = max(float(max_length), 0.0) * shorter / min(480.0, min(mask_size.x, mask_size.y));
  size = current_point_size * shorter;
  dot_radius = DOT * size;
  audio_gain = loudness() * intensity;

  addNearPoints(groups);
  if (covered <= 0.0) return;
  float person = behind ? smoothstep(0.2, 0.8, texture2D(mask_tex, at).a) : 0.0;
  // Below 1: an opaque pixel would be added to the frame instead of laid over it.
  float opacity = (1.0 - open) * (1.0 - person) * alpha / 100.0;
  gl_FragColor = vec4(light / covered, clamp(opacity, 0.0, 0.99));
}
