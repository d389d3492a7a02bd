#version 120

// A star of glass whose twelve spikes grow with the spectrum, and a ring of bars around it. Where
// the pixel's ray meets them is computed, not searched for.

uniform sampler2D background_tex;      // the picture, seen through the glass
uniform sampler2D gradient_color_tex;  // one texel per stop: colour, position in alpha
uniform sampler2D audio_tex;           // the spectrum, in red
uniform vec2 iResolution;
uniform float time_second;
uniform float radius;          // of the star's longest spikes; the camera is 1 away
uniform float glass;           // what the star lets through, percent
uniform float line_width;      // half the width of its edges, 0.01 scene units
uniform int spectrum_count;    // bars of the ring; 0: no ring
uniform float ring_radius;
uniform float spectrum_width;  // share of its place that a bar fills
uniform float alpha;          // opacity, percent
uniform int single_color;     // 1: color_r, color_g, color_b everywhere
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

varying vec3 ring_eye;
varying vec3 ring_ray;
varying vec3 star_eye;
varying vec3 star_ray;
varying vec3 star_light;
varying vec3 star_right;
varying vec3 star_down;

const float NEIGHBOUR = 0.4472136;  // cosine between the normals of a dodecahedron's neighbours
const float BAR_REACH = 0.3;        // of the ring, its radius
const float FAR = 1e6;

// Set by main, once per pixel.
float audio_gain = 0.0;
float loud = 0.0;
float inner = 0.0;      // from the star's centre to the faces that the spikes stand on
float pixel = 0.0;      // at distance 1
vec3 eye = vec3(0.0);   // of the star's space
vec3 ray = vec3(0.0);   // of length 1

// A part of the ray inside a spike.
struct Stretch {
  float enter;
  float leave;
  vec3 normal;     // where the ray enters
  float edge;      // from there to the nearest edge
  float far_edge;  // the same where it leaves
  float band;      // of the spike, 0..1
  float level;
};

// One normal of each pair of opposite faces.
vec3 faceNormal(int face) {
  const float A = 0.5257311;
  const float B = 0.8506508;
  if (face == 0) return vec3(0.0, A, B);
  if (face == 1) return vec3(B, 0.0, A);
  if (face == 2) return vec3(A, B, 0.0);
  if (face == 3) return vec3(0.0, A, -B);
  if (face == 4) return vec3(-B, 0.0, A);
  return vec3(A, -B, 0.0);
}

// The plane of a spike's side, not of length 1; its distance from the centre is inner * (1 + lean).
vec3 sidePlane(int neighbour, vec3 own, float lean) {
  vec3 n = faceNormal(neighbour);
  return (dot(n, own) < 0.0 ? -n : n) + lean * own;
}

float loudness() {
  float range = max(audio_db_max - audio_db_min, 0.001);
  float share = clamp((audio_left_db - audio_db_min) / range, 0.0, 1.0);
  return share * share * (3.0 - 2.0 * share);
}

float levelAt(float u) {
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

// outwards: 0 at the centre or foot, 1 at the tip. band: 0 for the lowest frequency.
vec3 figureColor(float outwards, float band) {
  if (single_color == 1) return vec3(color_r, color_g, color_b);
  if (!use_gradient_color) {
    return hueColor(0.65 * band + 0.2 * outwards + time_second * color_speed);
  }
  return gradientColor(gradient_color_direction == 1 ? band : outwards);
}

// From a place on the side of that normal, along it, to the nearest edge of the side.
float edgeDistance(int face, vec3 own, float lean, vec3 normal, vec3 at) {
  float nearest = (dot(own, at) - inner) / max(length(cross(own, normal)), 0.01);
  for (int i = 0; i < 6; i++) {
    if (i == face) continue;
    vec3 plane = sidePlane(i, own, lean);
    float sine = length(cross(plane, normal));
    float below = inner * (1.0 + lean) - dot(plane, at);
    if (sine > 0.001) nearest = min(nearest, below / sine);
  }
  return nearest;
}

// The ray within the spike on a face: between the five sides, beyond the face. A side goes through
// an edge of the face and the tip: the neighbour's plane, turned about that edge by adding the
// face's plane `lean` times.
Stretch insideSpike(int face, float side) {
  Stretch s;
  s.enter = -FAR;
  s.leave = FAR;
  s.band = (float(face) + (side > 0.0 ? 0.0 : 6.0)) / 11.0;
  s.level = levelAt(s.band);
  vec3 own = side * faceNormal(face);
  float height = mix(1.25, 1.0 / NEIGHBOUR, s.level);  // of the tip, 1: on the face
  float lean = (1.0 - height * NEIGHBOUR) / (height - 1.0);
  s.normal = own;
  vec3 out_normal = own;
  float own_along = dot(own, ray);
  float at_face = (inner - dot(own, eye)) / (abs(own_along) > 1e-6 ? own_along : 1e-6);
  if (own_along > 0.0) s.enter = at_face;
  if (own_along <= 0.0) s.leave = at_face;
  for (int i = 0; i < 6; i++) {
    if (i == face) continue;
    vec3 plane = sidePlane(i, own, lean);
    float away = dot(plane, eye) - inner * (1.0 + lean);
    float along = dot(plane, ray);
    float t = -away / (abs(along) > 1e-6 ? along : 1e-6);
    if (along < 0.0 && t > s.enter) {
      s.enter = t;
      s.normal = plane;
    } else if (along >= 0.0 && t < s.leave) {
      s.leave = t;
      out_normal = plane;
    }
  }
  s.normal = normalize(s.normal);
  s.edge = edgeDistance(face, own, lean, s.normal, eye + ray * s.enter);
  s.far_edge = FAR;
  if (out_normal != own) {
    s.far_edge = edgeDistance(face, own, lean, normalize(out_normal), eye + ray * s.leave);
  }
  return s;
}

float edgeLight(float from_edge, float distance) {
  float width = 0.01 * line_width;
  return 1.0 - smoothstep(width, width + 1.5 * pixel * distance, from_edge);
}

// Colour and opacity of the star where the ray enters it. thickness: of what the ray passes.
// heart: how much of that lies between the spikes' feet, 1: the diameter.
vec4 surface(Stretch s, float thickness, float heart) {
  vec3 at = eye + ray * s.enter;
  float outwards = clamp(length(at) / (inner / NEIGHBOUR), 0.0, 1.0);
  vec3 own = figureColor(outwards, s.band);
  vec3 light = normalize(star_light);
  float facing = max(-dot(s.normal, ray), 0.0);
  float lit = 0.25 + 0.75 * max(dot(s.normal, light), 0.0);
  float shine = pow(max(dot(reflect(ray, s.normal), light), 0.0), 24.0);
  float rim = pow(1.0 - facing, 3.0);

  vec2 bent = 0.12 * vec2(dot(s.normal, star_right), dot(s.normal, star_down));
  vec4 through = texture2D(background_tex, gl_FragCoord.xy / iResolution - bent);
  float clear = clamp(glass / 100.0, 0.0, 1.0);
  vec3 body = own * lit * (0.7 + 0.9 * s.level * outwards);
  vec3 c = mix(body, through.rgb * mix(vec3(1.0), own, 0.55) + 0.25 * body, clear * through.a);
  float line = max(edgeLight(s.edge, s.enter), 0.35 * clear * edgeLight(s.far_edge, s.leave));
  float own_light = 0.5 * rim + line * (0.5 + 0.8 * s.level) + clear * (0.1 + 0.6 * loud) * heart;
  c += own * own_light + vec3(0.9 * shine + 0.15 * rim + 0.25 * line);
  float opacity = mix(1.0, max(through.a, 0.55), clear);
  return vec4(min(c, 1.0), opacity * clamp(thickness / (2.0 * pixel * s.enter), 0.0, 1.0));
}

// The ring where the ray of this direction meets its plane: bars, the lowest frequency nearest to
// the camera.
vec4 ringColor(vec3 direction, float begin) {
  const float TURN = 6.2831853;
  vec2 at = ring_eye.xz + direction.xz * begin;
  float size = max(ring_radius, 0.001);
  float beyond = length(at) - size;
  float count = float(spectrum_count);
  float place = (atan(at.x, at.y) / TURN + 0.5) * count;
  float u = abs(2.0 * (floor(place) + 0.5) / count - 1.0);
  float band = 1.0 - min(u, 1.0);
  float level = levelAt(band);

  float beside = (fract(place) - 0.5) * TURN * length(at) / count;
  float half_width = 0.5 * spectrum_width * TURN * size / count;
  float reach = BAR_REACH * size;
  float from_bar = length(vec2(beside, beyond - clamp(beyond, 0.0, reach * level))) - half_width;
  float soft = 0.5 * pixel * begin / max(abs(direction.y), 0.2);
  float body = half_width > 0.0 ? 1.0 - smoothstep(-soft, soft, from_bar) : 0.0;
  float halo = 0.0;
  if (glow != 0) {
    float near = clamp(1.0 - max(from_bar, 0.0) / (0.06 * size), 0.0, 1.0);
    halo = glow_intensity * near * near * near * (0.2 + 0.8 * level);
  }
  vec3 c = mix(figureColor(clamp(beyond / reach, 0.0, 1.0), band), vec3(1.0), 0.35 * body * level);
  return vec4(c, clamp(body * (0.6 + 0.4 * level) + halo, 0.0, 1.0));
}

// Lays what is behind under what is in front; straight alpha.
vec4 under(vec4 front, vec4 behind) {
  float share = behind.a * (1.0 - front.a);
  float opacity = front.a + share;
  vec3 c = opacity > 0.0 ? (front.rgb * front.a + behind.rgb * share) / opacity : front.rgb;
  return vec4(c, opacity);
}

// The star, and the distance at which it begins. A spike lies behind all planes of the
// dodecahedron's faces but its own. So a ray can meet only the one on the plane that it enters
// last, and the one on the plane that it leaves first.
vec4 starColor(inout float star_begin) {
  float enter = -FAR;
  float leave = FAR;
  float enter_side = 1.0;
  float leave_side = 1.0;
  int enter_face = 0;
  int leave_face = 0;
  for (int i = 0; i < 6; i++) {
    vec3 normal = faceNormal(i);
    float along = dot(normal, ray);
    float side = along < 0.0 ? 1.0 : -1.0;  // the one of the two faces that the ray enters through
    float away = side * dot(normal, eye);
    float slope = max(abs(along), 1e-6);
    if ((away - inner) / slope > enter) {
      enter = (away - inner) / slope;
      enter_face = i;
      enter_side = side;
    }
    if ((away + inner) / slope < leave) {
      leave = (away + inner) / slope;
      leave_face = i;
      leave_side = -side;
    }
  }
  Stretch near = insideSpike(enter_face, enter_side);
  Stretch far = insideSpike(leave_face, leave_side);
  bool meets_far = far.leave > far.enter;
  bool joined = enter < leave;  // by the dodecahedron between them
  vec4 result = vec4(0.0);
  if (near.leave > near.enter) {
    float end = joined && meets_far ? max(near.leave, far.leave) : near.leave;
    float heart = clamp(0.5 * (leave - enter) / inner, 0.0, 1.0);
    result = surface(near, end - near.enter, heart * heart);
    star_begin = near.enter;
  }
  if (meets_far && !joined) {
    result = under(result, surface(far, far.leave - far.enter, 0.0));
    star_begin = min(star_begin, far.enter);
  }
  return result;
}

void main() {
  loud = loudness();
  audio_gain = loud * intensity;
  pixel = 2.0 / min(iResolution.x, iResolution.y);
  eye = star_eye;
  ray = normalize(star_ray);
  float size = max(radius, 0.001);
  inner = size * NEIGHBOUR * (0.9 + 0.1 * loud);

  vec4 result = vec4(0.0);
  float star_begin = FAR;
  float miss = length(eye - ray * dot(eye, ray));  // from the star's centre to the ray
  if (miss < size) result = starColor(star_begin);
  if (glow != 0) {
    float near = clamp(1.0 - (miss - 0.4 * size) / (0.9 * size), 0.0, 1.0);
    float light = clamp(glow_intensity * (0.15 + 0.6 * loud) * near * near * near, 0.0, 1.0);
    result = under(result, vec4(figureColor(0.6, 0.1), light));
  }
  vec3 direction = normalize(ring_ray);
  if (spectrum_count > 0 && abs(direction.y) > 1e-4) {
    float begin = -ring_eye.y / direction.y;
    if (begin > 0.02) {
      vec4 bars = ringColor(direction, begin);
      result = begin < star_begin ? under(bars, result) : under(result, bars);
    }
  }
  // Below 1: an opaque pixel would be added to the frame instead of laid over it.
  gl_FragColor = vec4(result.rgb, clamp(result.a * alpha / 100.0, 0.0, 0.99));
}
