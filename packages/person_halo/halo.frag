#version 120
#extension GL_EXT_gpu_shader4 : enable

// A ring of light around a person, behind them, with rays that shoot out with the spectrum.

uniform sampler2D mask_tex;            // the person
uniform sampler2D gradient_color_tex;  // one texel per stop: colour, position in alpha
uniform sampler2D audio_tex;           // the spectrum, in red
uniform vec2 mask_left_right;          // the person's box, fractions of the picture
uniform vec2 mask_bottom_top;          // its upper edge, then its lower one
uniform vec2 iResolution;
uniform float time_second;
uniform float radius;           // of the ring, percent of the box's half size
uniform float reach;            // of the longest rays, percent of the ring's radius
uniform float line_width;       // of the ring, percent of its radius
uniform int spectrum_count;     // rays
uniform float spectrum_width;   // share of its place that a ray fills
uniform float feather;          // softness of the person's edge, percent of the shorter side
uniform float position_x;       // of the ring's centre, percent of the box
uniform float position_y;       // from its upper edge down
uniform int rotate_direction;   // 1: turns backwards
uniform float rotate_speed;     // radians per second
uniform float alpha;            // opacity, percent
uniform int single_color;       // 1: color_r, color_g, color_b everywhere
uniform float color_r;
uniform float color_g;
uniform float color_b;
uniform float color_speed;  // turns of the hue circle per second
uniform bool use_gradient_color;
uniform int gradient_color_count;
uniform int gradient_color_direction;  // 0: outwards, 1: from low frequencies to high ones
uniform int glow;
uniform float glow_intensity;
uniform float intensity;  // audio gain
uniform float audio_left_db;
uniform float audio_db_min;
uniform float audio_db_max;
uniform float audio_frequency_min;  // part of the spectrum shown, 0..1
uniform float audio_frequency_max;
uniform bool audio_mirror;

const float TURN = 6.2831853;

float loudness() {
  float range = max(audio_db_max - audio_db_min, 0.001);
  float share = clamp((audio_left_db - audio_db_min) / range, 0.0, 1.0);
  return share * share * (3.0 - 2.0 * share);
}

// u: 0 at the top, growing clockwise to 1.
float bandAt(float u) { return audio_mirror ? 1.0 - abs(2.0 * u - 1.0) : u; }

float levelAt(float band, float gain) {
  float u = mix(audio_frequency_min, audio_frequency_max, band);
  return clamp(texture2D(audio_tex, vec2(u, 0.0)).r * gain, 0.0, 1.0);
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

vec3 lightColor(float outwards, float u) {
  if (single_color == 1) return vec3(color_r, color_g, color_b);
  if (!use_gradient_color) return hueColor(u + time_second * color_speed);
  return gradientColor(gradient_color_direction == 1 ? bandAt(u) : outwards);
}

// How much of a place the person hides. Masks are small and their edges are steps: the average over
// a disc makes them smooth. A little light falls onto the edge, rather than a dark seam beside it.
float personAt(vec2 pixel) {
  vec2 mask_size = vec2(textureSize2D(mask_tex, 0));
  float shorter = min(iResolution.x, iResolution.y);
  float texel = shorter / min(mask_size.x, mask_size.y);
  float disc = max(0.01 * feather * shorter, 1.2 * texel);
  float sum = texture2D(mask_tex, pixel / iResolution).a;
  float weights = 1.0;
  for (int i = 1; i < 24; i++) {
    float out_share = sqrt(float(i) / 24.0);
    float angle = 2.3999632 * float(i);  // the golden angle: even over the disc
    vec2 at = pixel + disc * out_share * vec2(cos(angle), sin(angle));
    float weight = 1.0 - 0.7 * out_share;
    sum += weight * texture2D(mask_tex, at / iResolution).a;
    weights += weight;
  }
  return smoothstep(0.35, 0.85, sum / weights);
}

// Coverage of the ring and its rays at a place this far from the centre and this far round it;
// pixel: the size of one. Lengths are in radii of the ring.
float lightAt(float from_centre, float u, float loud, float pixel) {
  float count = max(float(spectrum_count), 1.0);
  float place = u * count;
  float ray_u = (floor(place) + 0.5) / count;
  float level = levelAt(bandAt(ray_u), loud * intensity);
  float beyond = from_centre - 1.0;

  float half_line = 0.005 * line_width * (1.0 + 0.8 * loud);
  float line = 1.0 - smoothstep(half_line - 0.5 * pixel, half_line + pixel, abs(beyond));
  float longest = max(0.01 * reach * level, 1e-4);
  float along = clamp(beyond / longest, 0.0, 1.0);
  float half_ray = 0.5 * spectrum_width * (1.0 - along) * TURN / count;
  float beside = abs(fract(place) - 0.5) * TURN / count * from_centre;
  float soft = max(0.5 * half_ray, pixel);
  float ray = 1.0 - smoothstep(max(half_ray - soft, 0.0), half_ray + soft, beside);
  ray *= beyond > 0.0 ? 1.0 - along * along : 0.0;

  float halo = 0.0;
  if (glow != 0) {
    float range = beyond < 0.0 ? 0.3 : 0.22 + 0.6 * level * 0.01 * reach;
    float near = clamp(1.0 - abs(beyond) / range, 0.0, 1.0);
    halo = glow_intensity * near * near * near * (0.35 + 0.65 * loud);
  }
  return 1.0 - (1.0 - line) * (1.0 - ray) * (1.0 - clamp(halo, 0.0, 1.0));
}

void main() {
  gl_FragColor = vec4(0.0);
  vec2 low = vec2(mask_left_right.x, mask_bottom_top.x) * iResolution;
  vec2 size = vec2(mask_left_right.y, mask_bottom_top.y) * iResolution - low;
  vec2 centre = low + size * vec2(position_x, position_y) / 100.0;
  float ring = 0.005 * radius * sqrt(max(size.x * size.y, 0.0));
  if (ring < 1.0) return;
  vec2 from_centre = (gl_FragCoord.xy - centre) / ring;
  float distance = length(from_centre);
  if (distance > 1.3 + 0.02 * reach) return;

  float loud = loudness();
  float turn = time_second * rotate_speed * (rotate_direction == 1 ? -1.0 : 1.0);
  float angle = distance > 0.0 ? atan(from_centre.x, -from_centre.y) : 0.0;
  float u = fract((angle - turn) / TURN);
  float light = lightAt(distance, u, loud, 1.0 / ring);
  if (light <= 0.002) return;
  vec3 c = lightColor(clamp(abs(distance - 1.0) / max(0.006 * reach, 0.01), 0.0, 1.0), u);
  float white = clamp(1.0 - abs(distance - 1.0) / (0.012 * line_width + 1e-4), 0.0, 1.0);
  c = mix(c, vec3(1.0), 0.75 * white);
  float opacity = light * (1.0 - personAt(gl_FragCoord.xy)) * alpha / 100.0;
  // Below 1: an opaque pixel would be added to the frame instead of laid over it.
  gl_FragColor = vec4(c, clamp(opacity, 0.0, 0.99));
}
