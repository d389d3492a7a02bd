#version 120
#extension GL_EXT_gpu_shader4 : enable

// First pass: which bars each tile of the picture is near, so that the second pass looks at those
// alone. The bars are divided into 32 groups that follow each other along the outlines. The texel
// of a tile, all of them in the corner of the picture, holds a bit per group: eight a channel.

uniform sampler2D mask_tex;        // the frame itself
uniform sampler2D mask_point_tex;  // place as fractions of the picture, normal
uniform int points_count;
uniform float current_point_size;  // of the picture's shorter side
uniform int max_length;            // pixels of a mask whose shorter side is 480 at most
uniform vec2 mask_left_right;      // the box of what is opaque, fractions of the picture
uniform vec2 mask_bottom_top;
uniform vec2 iResolution;
uniform sampler2D audio_tex;  // the spectrum, in red
uniform float intensity;      // audio gain
uniform float audio_left_db;
uniform float audio_db_min;
uniform float audio_db_max;
uniform float audio_frequency_min;  // part of the spectrum shown, 0..1
uniform float audio_frequency_max;
uniform bool audio_mirror;

const float TILE = 16.0;         // pixels; as in the second pass
const float LEAST_SIZE = 0.016;  // of a bar with its light, of the shorter side; there too

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

float levelOf(vec2 at, float gain) {
  float u = fract(placeRound(at));
  if (audio_mirror) u = 1.0 - abs(2.0 * u - 1.0);
  u = mix(audio_frequency_min, audio_frequency_max, u);
  return clamp(texture2D(audio_tex, vec2(u, 0.0)).r * gain, 0.0, 1.0);
}

// Opaque in the middle of all four sides: no shape, but a picture. Its bars stand on its edge and
// point inwards; nothing of its outlines is used, which black places would be part of.
bool isPicture() {
  float above = texture2D(mask_tex, vec2(0.5, 0.0)).a;
  float below = texture2D(mask_tex, vec2(0.5, 1.0)).a;
  float left = texture2D(mask_tex, vec2(0.0, 0.5)).a;
  float right = texture2D(mask_tex, vec2(1.0, 0.5)).a;
  return min(min(above, below), min(left, right)) > 0.5;
}

// From place to a bar, in pixels.
float barDistance(vec2 place, vec4 point, float way) {
  vec2 from_base = place - point.xy * iResolution;
  return length(from_base - point.zw * clamp(dot(from_base, point.zw), 0.0, way));
}

void main() {
  gl_FragColor = vec4(0.0);
  vec2 tile = floor(gl_FragCoord.xy);
  if (points_count < 1 || any(greaterThan(tile * TILE, iResolution)) || isPicture()) return;

  float shorter = min(iResolution.x, iResolution.y);
  vec2 mask_size = vec2(textureSize2D(mask_tex, 0));
  float reach = max(float(max_length), 0.0) * shorter / min(480.0, min(mask_size.x, mask_size.y));
  int every = pointsPerBar(shorter);
  // A bar with its light, and more than half of a tile's diagonal.
  float near = max(current_point_size, LEAST_SIZE) * shorter + TILE;
  float gain = loudness() * intensity;
  vec2 place = (tile + 0.5) * TILE;

  int group_size = (points_count + 31) / 32;
  for (int channel = 0; channel < 4; channel++) {
    float bits = 0.0;
    float bit = 1.0;
    for (int group = 8 * channel; group < 8 * channel + 8; group++) {
      int end = min((group + 1) * group_size, points_count);
      int first = (group * group_size + every - 1) / every * every;
      for (int i = first; i < end; i += every) {
        vec4 point = outlinePoint(i);
        if (barDistance(place, point, reach * levelOf(point.xy, gain)) < near) {
          bits += bit;
          break;
        }
      }
      bit *= 2.0;
    }
    gl_FragColor[channel] = bits / 255.0;
  }
}
