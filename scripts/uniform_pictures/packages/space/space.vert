#version 120

// Draws the triangle through none, some or all of the matrices; `what` says which.
attribute vec3 position;
uniform int what;
uniform mat4 model_mat;
uniform mat4 view_mat;
uniform mat4 projection_mat;
uniform vec2 iResolution;
varying vec3 shade;

void main() {
  shade = position + 0.5;
  if (projection_mat[2].w == 0.0) {  // the blend
    gl_Position = vec4(2.0 * position.xy - 1.0, 0.0, 1.0);
    return;
  }
  vec4 place = model_mat * vec4(position, 1.0);
  if (what > 0) place = view_mat * place;
  if (what > 1) place = projection_mat * place;
  gl_Position = vec4(place.xy * vec2(iResolution.y / iResolution.x, 1.0), 0.0, place.w);
}
