#version 120
#extension GL_EXT_gpu_shader4 : enable

// First pass: which points each tile of the picture is near, so that the second pass looks at those
// alone. The points are divided into 32 groups that follow each other along the outlines. The texel
// of a tile, all of them in the corner of the picture, holds a bit per group: eight in each channel.

uniform sampler2D mask_tex;        // the person
uniform sampler2D mask_point_tex;  // place as fractions of the picture, normal
uniform int points_count;
uniform float current_point_size;  // of the picture's shorter side
uniform int max_length;            // pixels of a mask whose shorter side is 480 at most
uniform vec2 iResolution;
uniform sampler2D audio_tex;  // the spectrum, in red
uniform float intensity;      // audio gain
uniform float audio_left_db;
uniform float audio_db_min;
uniform float audio_db_max;
uniform float audio_frequency_min;  // part of the spectrum shown, 0..1
uniform float audio_frequency_max;
uniform bool audio_mirror;

const float TILE = 16.0;  // pixels; as in the second pass

vec4 outlinePoint(int i) { return texelFetch2D(mask_point_tex, ivec2(i, 0), 0); }

float loudness() {
  float range = max(audio_db_max - audio_db_min, 0.001);
  float loud = clamp((audio_left_db - audio_db_min) / range, 0.0, 1.0);
  return loud * loud * (3.0 - 2.0 * loud);
}

float levelOf(int i, float gain) {
  float u = (float(i) + 0.5) / float(points_count);
  if (audio_mirror) u = 1.0 - abs(u - 0.5) * 2.0;
  u = mix(audio_frequency_min, audio_frequency_max, u);
  return clamp(texture2D(audio_tex, vec2(u, 0.0)).r * gain, 0.0, 1.0);
}

// From place to a point's stem, in pixels.
float stemDistance(vec2 place, vec4 point, float way) {
  vec2 from_base = place - point.xy * iResolution;
  return length(from_base - point.zw * clamp(dot(from_base, point.zw), 0.0, way));
}

void main() {
  gl_FragColor = vec4(0.0);
  vec2 tile = floor(gl_FragCoord.xy);
  if (points_count < 1 || any(greaterThan(tile * TILE, iResolution))) return;

  float shorter = min(iResolution.x, iResolution.y);
  vec2 mask_size = vec2(textureSize2D(mask_tex, 0));
  float reach = max(float(max_length), 0.0) * shorter / min(480.0, min(mask_size.x, mask_size.y));
  float near = current_point_size * shorter + TILE;  // more than half of a tile's diagonal
  float gain = loudness() * intensity;
  vec2 place = (tile + 0.5) * TILE;

  int group_size = (points_count + 31) / 32;
  for (int channel = 0; channel < 4; channel++) {
    float bits = 0.0;
    float bit = 1.0;
    for (int group = 8 * channel; group < 8 * channel + 8; group++) {
      int end = min((group + 1) * group_size, points_count);
      for (int i = group * group_size; i < end; i++) {
        if (stemDistance(place, outlinePoint(i), reach * levelOf(i, gain)) < near) {
          bits += bit;
          break;
        }
      }
      bit *= 2.0;
    }
    gl_FragColor[channel] = bits / 255.0;
  }
}
