#version 120
#extension GL_EXT_gpu_shader4 : enable

// Second pass: bars on the outline of what is opaque in the frame, such as a logo, or on the edge
// of a picture. Each has the level of its part of the spectrum.

uniform sampler2D background_tex;      // what the first pass says of each tile
uniform sampler2D mask_tex;            // the frame itself
uniform sampler2D mask_point_tex;      // place as fractions of the picture, normal
uniform sampler2D gradient_color_tex;  // one texel per stop: colour, position in alpha
uniform sampler2D audio_tex;           // the spectrum, in red
uniform int points_count;
uniform float current_point_size;   // of the picture's shorter side
uniform float available_region_x1;  // what points reach, fractions of the picture
uniform float available_region_x2;
uniform float available_region_y1;
uniform float available_region_y2;
uniform int max_length;  // pixels of a mask whose shorter side is 480 at most; 480 for pictures
uniform vec2 mask_left_right;  // the box of what is opaque, fractions of the picture
uniform vec2 mask_bottom_top;
uniform vec2 iResolution;
uniform float time_second;
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

const float TILE = 16.0;         // pixels; as in the first pass
const float LEAST_SIZE = 0.016;  // of a bar with its light, of the shorter side; there too
const float PICTURE_SIZE = 0.036;
const float BAR = 0.16;          // half the width of a bar, of that size

// Set by main, once per pixel.
float audio_gain = 0.0;
float reach = 0.0;  // pixels at the full level
float size = 0.0;   // of a bar's end with its light, pixels

bool picture = false;

vec3 light = vec3(0.0);  // colours by their coverage
float covered = 0.0;
float open = 1.0;  // what all bars together let through

vec4 outlinePoint(int i) { return texelFetch2D(mask_point_tex, ivec2(i, 0), 0); }

float loudness() {
  float range = max(audio_db_max - audio_db_min, 0.001);
  float loud = clamp((audio_left_db - audio_db_min) / range, 0.0, 1.0);
  return loud * loud * (3.0 - 2.0 * loud);
}

// Outlines of small parts, such as letters, have their points close together: of so many points one
// carries a bar.
int pointsPerBar(float shorter) {
  vec2 step = (outlinePoint(1).xy - outlinePoint(0).xy) * iResolution;
  return points_count < 2 ? 1 : int(ceil(min(0.01 * shorter / max(length(step), 0.1), 100.0)));
}

// Round the box from the middle below, 0 to 1 clockwise; its corners lie at equal steps.
float placeRound(vec2 at) {
  vec2 low = vec2(mask_left_right.x, mask_bottom_top.x);
  vec2 high = vec2(mask_left_right.y, mask_bottom_top.y);
  vec2 from_middle = (at - 0.5 * (low + high)) / max(high - low, vec2(1e-4));
  return from_middle == vec2(0.0) ? 0.0 : atan(-from_middle.x, from_middle.y) / 6.2831853;
}

// As in the first pass.
bool isPicture() {
  float above = texture2D(mask_tex, vec2(0.5, 0.0)).a;
  float below = texture2D(mask_tex, vec2(0.5, 1.0)).a;
  float left = texture2D(mask_tex, vec2(0.0, 0.5)).a;
  float right = texture2D(mask_tex, vec2(1.0, 0.5)).a;
  return min(min(above, below), min(left, right)) > 0.5;
}

// band: 0 for the lowest frequency shown.
float levelAt(float band) {
  float u = mix(audio_frequency_min, audio_frequency_max, band);
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

// u: round the outline. outwards: from the bar's foot, 1 where the longest end.
vec3 barColor(float u, float band, float outwards) {
  if (single_color == 1) return vec3(color_r, color_g, color_b);
  if (!use_gradient_color) return hueColor(u + time_second * color_speed);
  return gradientColor(gradient_color_direction == 1 ? band : outwards);
}

void addBar(vec4 point) {
  float u = fract(placeRound(point.xy));
  float band = audio_mirror ? 1.0 - abs(2.0 * u - 1.0) : u;
  float level = levelAt(band);
  vec2 base = point.xy * iResolution;
  float way = reach * level;
  if (picture) {
    // Shorter towards the corners, so that the bars of two sides do not cross.
    vec2 room = min(base, iResolution - base);
    way = min(way, 0.8 * (point.z != 0.0 ? room.y : room.x));
  }
  vec2 from_base = gl_FragCoord.xy - base;
  float along = clamp(dot(from_base, point.zw), 0.0, way);
  float from_bar = length(from_base - point.zw * along);
  if (from_bar > size) return;

  float half_width = BAR * size;
  float soft = min(0.75, half_width);
  float body = 1.0 - smoothstep(half_width - soft, half_width + soft, from_bar);
  float halo = 0.0;
  if (glow != 0) {
    float near = clamp(1.0 - from_bar / size, 0.0, 1.0);
    halo = glow_intensity * near * near * near * (0.25 + 0.75 * level);
  }
  float outwards = reach > 0.0 ? clamp(along / reach, 0.0, 1.0) : 0.0;
  vec3 c = mix(barColor(u, band, outwards), vec3(1.0), 0.25 * body * level);
  float coverage = clamp(body * (0.75 + 0.25 * level) + halo, 0.0, 1.0);
  light += c * coverage;
  covered += coverage;
  open *= 1.0 - coverage;
}

void addNearBars(vec4 groups, int every) {
  int group_size = (points_count + 31) / 32;
  for (int channel = 0; channel < 4; channel++) {
    int first = 8 * channel * group_size;
    for (int bits = int(groups[channel]); bits != 0; bits >>= 1) {
      int end = (bits & 1) == 1 ? min(first + group_size, points_count) : first;
      int start = (first + every - 1) / every * every;
      for (int i = start; i < end; i += every) addBar(outlinePoint(i));
      first += group_size;
    }
  }
}

// The bars of a picture's side that starts at corner and runs along the unit vector: the one beside
// the pixel and its neighbours.
void addSideBars(vec2 corner, vec2 run, vec2 inwards, float side_length) {
  vec2 from_corner = gl_FragCoord.xy - corner;
  if (dot(from_corner, inwards) > reach + size) return;
  float step = side_length / max(floor(side_length / (0.7 * size)), 1.0);
  float middle = floor(dot(from_corner, run) / step) + 0.5;
  for (int i = -1; i <= 1; i++) {
    float place = (middle + float(i)) * step;
    if (place < 0.0 || place > side_length) continue;
    addBar(vec4((corner + run * place) / iResolution, inwards));
  }
}

void addPictureBars() {
  addSideBars(vec2(0.0), vec2(1.0, 0.0), vec2(0.0, 1.0), iResolution.x);
  addSideBars(vec2(0.0), vec2(0.0, 1.0), vec2(1.0, 0.0), iResolution.y);
  addSideBars(vec2(0.0, iResolution.y), vec2(1.0, 0.0), vec2(0.0, -1.0), iResolution.x);
  addSideBars(vec2(iResolution.x, 0.0), vec2(0.0, 1.0), vec2(-1.0, 0.0), iResolution.y);
}

void addOutlineBars(float shorter) {
  vec2 at = gl_FragCoord.xy / iResolution;
  vec2 low = vec2(available_region_x1, available_region_y1);
  vec2 high = vec2(available_region_x2, available_region_y2);
  vec2 outside = max(low - at, at - high) * iResolution;
  if (points_count < 1 || max(outside.x, outside.y) > size) return;
  vec2 tile = floor(gl_FragCoord.xy / TILE);
  vec4 groups = floor(texture2D(background_tex, (tile + 0.5) / iResolution) * 255.0 + 0.5);
  if (groups == vec4(0.0)) return;
  addNearBars(groups, pointsPerBar(shorter));
}

void main() {
  gl_FragColor = vec4(0.0);
  float shorter = min(iResolution.x, iResolution.y);
  picture = isPicture();
  vec2 mask_size = picture ? vec2(480.0) : vec2(textureSize2D(mask_tex, 0));
  reach = max(float(max_length), 0.0) * shorter / min(480.0, min(mask_size.x, mask_size.y));
  size = (picture ? PICTURE_SIZE : max(current_point_size, LEAST_SIZE)) * shorter;
  audio_gain = loudness() * intensity;

  if (picture) {
    addPictureBars();
  } else {
    addOutlineBars(shorter);
  }
  if (covered <= 0.0) return;
  gl_FragColor = vec4(light / covered, clamp((1.0 - open) * alpha / 100.0, 0.0, 1.0));
}
