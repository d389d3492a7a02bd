#version 120
#extension GL_EXT_gpu_shader4 : enable

// Shows one of the inputs that an effect gets which follows outlines; `what` says which.
uniform int what;
uniform sampler2D mask_tex;
uniform sampler2D mask_point_tex;
uniform vec2 mask_left_right;
uniform vec2 mask_bottom_top;
uniform vec2 iResolution;
uniform int points_count;
uniform int max_length;
uniform float current_point_size;
uniform float available_region_x1;
uniform float available_region_x2;
uniform float available_region_y1;
uniform float available_region_y2;

const vec3 kBlue = vec3(0.4, 0.8, 1.0);
const vec3 kYellow = vec3(1.0, 0.8, 0.3);

float segment(vec2 at, vec2 from, vec2 to) {
  vec2 along = to - from;
  float part = clamp(dot(at - from, along) / max(dot(along, along), 1e-6), 0.0, 1.0);
  return length(at - from - part * along);
}

void main() {
  vec2 at = gl_FragCoord.xy / iResolution;
  float shorter = min(iResolution.x, iResolution.y);
  float mask = texture2D(mask_tex, at).a;
  vec4 colour = vec4(vec3(mask), 0.25);
  if (what == 0) {
    colour = vec4(vec3(mask), 0.99);
  } else if (what == 1) {
    bool inside = at.x > mask_left_right.x && at.x < mask_left_right.y;
    if (inside) colour = vec4(kBlue, 0.5);
  } else if (what == 2) {
    bool inside = at.y > mask_bottom_top.x && at.y < mask_bottom_top.y;
    if (inside) colour = vec4(kBlue, 0.5);
  } else if (what == 5) {
    bool inside = at.x > available_region_x1 && at.x < available_region_x2 &&
                  at.y > available_region_y1 && at.y < available_region_y2;
    if (inside) colour = vec4(kBlue, 0.5);
  }
  if (what < 3) {
    gl_FragColor = colour;
    return;
  }
  vec2 mask_size = vec2(textureSize2D(mask_tex, 0));
  float reach = float(max_length) * shorter / min(480.0, min(mask_size.x, mask_size.y));
  float nearest = 1e6;
  float line = 1e6;
  for (int i = 0; i < points_count; i++) {
    vec4 point = texelFetch2D(mask_point_tex, ivec2(i, 0), 0);
    vec2 place = point.xy * iResolution;
    nearest = min(nearest, length(gl_FragCoord.xy - place));
    line = min(line, segment(gl_FragCoord.xy, place, place + reach * point.zw));
  }
  if (what == 4 || what == 5) {
    colour = mix(vec4(kYellow, 0.9), colour, smoothstep(0.8, 1.8, line));
  }
  float radius = what == 3 ? 0.5 * current_point_size * shorter : 2.5;
  gl_FragColor = mix(vec4(1.0, 1.0, 1.0, 0.99), colour, smoothstep(0.0, 1.0, nearest - radius));
}
