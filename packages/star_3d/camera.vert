#version 120

// Covers the picture with the triangle and gives each place its ray. Spaces: the ring's lies in its
// plane y = 0 and is the camera's world, tilted; the star's turns within it.

attribute vec3 position;

uniform mat4 model_mat;  // all zeros while the effect is blended: nothing sets them there
uniform mat4 view_mat;
uniform mat4 projection_mat;
uniform vec2 iResolution;
uniform float time_second;
uniform float position_x;  // percent of the picture
uniform float position_y;
uniform int inclination_degree_x;
uniform int inclination_degree_z;
uniform int rotate_direction;  // 1: turns backwards
uniform float rotate_speed;    // radians per second
uniform int manual_rotate;     // 1: stands still at manual_rotate_degree
uniform float manual_rotate_degree;

varying vec3 ring_eye;
varying vec3 ring_ray;  // of any length
varying vec3 star_eye;
varying vec3 star_ray;
varying vec3 star_light;  // towards the light; the same everywhere, as the next two
varying vec3 star_right;  // the picture's axes
varying vec3 star_down;

mat3 turnX(float angle) {
  float s = sin(angle);
  float c = cos(angle);
  return mat3(1.0, 0.0, 0.0, 0.0, c, s, 0.0, -s, c);
}

mat3 turnY(float angle) {
  float s = sin(angle);
  float c = cos(angle);
  return mat3(c, 0.0, -s, 0.0, 1.0, 0.0, s, 0.0, c);
}

mat3 turnZ(float angle) {
  float s = sin(angle);
  float c = cos(angle);
  return mat3(c, s, 0.0, -s, c, 0.0, 0.0, 0.0, 1.0);
}

float turn() {
  if (manual_rotate == 1) return radians(manual_rotate_degree);
  return rotate_direction == 1 ? -time_second * rotate_speed : time_second * rotate_speed;
}

void main() {
  ring_eye = ring_ray = star_eye = star_ray = vec3(0.0);
  star_light = star_right = star_down = vec3(0.0);
  if (projection_mat[2].w == 0.0) {
    // The blend draws the unit square without a camera.
    gl_Position = vec4(2.0 * position.xy - 1.0, 0.0, 1.0);
    return;
  }
  vec2 place = vec2(8.0 * position.x, 4.0 * position.y + 1.0);
  gl_Position = vec4(place, 0.0, 1.0);

  // The picture's shorter side spans the camera's view; its y axis points down, as the picture's.
  vec2 centre = vec2(position_x, position_y) / 50.0 - 1.0;
  vec2 seen = (place - centre) * iResolution / min(iResolution.x, iResolution.y);
  vec3 ray = vec3(seen.x / projection_mat[0].x, seen.y / projection_mat[1].y, -1.0);

  // A vector before a matrix is multiplied by the transposed matrix, the inverse of a rotation.
  mat4 model_view = view_mat * model_mat;
  mat3 camera = mat3(model_view);
  mat3 ring = turnX(radians(float(inclination_degree_x))) *
              turnZ(radians(float(inclination_degree_z)));
  ring_eye = -model_view[3].xyz * camera * ring;
  ring_ray = ray * camera * ring;
  mat3 star = turnY(turn()) * turnX(0.6 * turn());
  star_eye = ring_eye * star;
  star_ray = ring_ray * star;
  mat3 to_star = ring * star;
  star_light = vec3(-0.45, -0.7, 0.55) * camera * to_star;
  star_right = vec3(1.0, 0.0, 0.0) * camera * to_star;
  star_down = vec3(0.0, 1.0, 0.0) * camera * to_star;
}
