
// What the two forms of the flat shader share: the rectangle in space that the figures lie on, seen
// by a camera on the z axis.

uniform float scale_x;  // of the rectangle; 0: nothing but black
uniform float scale_y;
uniform int rotate_x;  // degrees
uniform int rotate_y;
uniform int rotate_z;
uniform int gradient_color_direction;  // 0: from the base up, else left to right
uniform bool flip_x;
uniform bool flip_y;
uniform int geometry_type;
uniform int direction;   // 0: from the base edge, 1: about the middle line
uniform float offset_x;  // turns the spectrum round, in widths

uniform int spectrum_count;
uniform float spectrum_width;           // 2 % of the width
uniform float spectrum_minimum_height;  // percent of the height
uniform float spectrum_round;           // corner radius, 1: half the bar

uniform float point_size;  // radius, 0.5 % of the width
uniform int point_count;

uniform float line_width;  // 0.3 % of the width
uniform int line_count;

uniform int pulse_count;
uniform float pulse_width;  // half width, 10 % of the width
uniform bool pulse_fill;
uniform float pulse_line_width;  // half width, 0.3 % of the width

uniform int circle_column_count;
uniform float circle_size;      // radius, 1.5 % of the width
uniform float clrcle_gap_size;  // 3 % of the width

uniform int rectangle_column_count;
uniform float rectangle_width;     // half width, 1.5 % of the width
uniform float rectangle_height;    // half height, 1.5 % of the width
uniform float rectangle_gap_size;  // 3 % of the width

const float EPSILON = 0.002;
const float end = 200.0;

const int BARS = 0;
const int POINTS = 1;
const int LINES = 2;
const int PULSES = 3;
const int CIRCLE_COLUMNS = 4;
const int RECTANGLE_COLUMNS = 5;

const float CAMERA_Z = 20.0;
const float HALF_VIEW = 5.3589838486224541;  // what 30 degrees show at that distance: 20 tan(15)
const float MAX_PULSES = 4096.0;             // that reach one pixel

// The rectangle: local coordinates run along right (0..quad_width) and up (0..quad_height) from
// its corner.
vec3 quad_corner;
vec3 quad_right;
vec3 quad_up;
float quad_width;
float quad_height;

// The three degree parameters turn the rectangle about x, then y, then z.
mat3 quadRotation() {
  vec3 angle = radians(vec3(float(rotate_x), float(rotate_y), float(rotate_z)));
  vec3 s = sin(angle);
  vec3 c = cos(angle);
  vec3 right = vec3(c.y * c.z, c.y * s.z, -s.y);
  vec3 up = vec3(s.x * s.y * c.z - c.x * s.z, s.x * s.y * s.z + c.x * c.z, s.x * c.y);
  return mat3(right, up, cross(right, up));
}

// The unturned rectangle fills the view at z = 0, its corner at (-half_view.x, half_view.y) and its
// up axis towards smaller y. Flipping turns it by half a turn, that is, it changes a sign.
void placeQuad(vec2 half_view) {
  vec2 scale = vec2(flip_x ? -scale_x : scale_x, flip_y ? -scale_y : scale_y);
  vec2 corner = vec2(-half_view.x, half_view.y) * scale;
  vec2 pivot = direction == 0 ? vec2(0.0, corner.y) : vec2(0.0);  // the base edge, or the middle
  vec2 shift = (vec2(position_x, position_y) / 100.0 - 0.5) * vec2(4.0, -4.0) * half_view;
  mat3 rotation = quadRotation();
  quad_corner = rotation * vec3(corner - pivot, 0.0) + vec3(pivot + shift, 0.0);
  quad_right = scale.x < 0.0 ? -rotation[0] : rotation[0];
  quad_up = scale.y < 0.0 ? rotation[1] : -rotation[1];
  vec2 size = max(abs(scale) * half_view * 2.0, vec2(1e-12));  // a view without width has no figure
  quad_width = size.x;
  quad_height = size.y;
}

// The view's aspect ratio is rounded down to one decimal; the figure is stretched to the frame.
vec2 halfView() {
  return vec2(floor(iResolution.x / iResolution.y * 10.0) / 10.0, 1.0) * HALF_VIEW;
}

float baseLine() { return direction == 1 ? quad_height * 0.5 : 0.0; }

int itemCount() {
  if (geometry_type == BARS) return spectrum_count;
  if (geometry_type == POINTS) return point_count;
  if (geometry_type == LINES) return line_count;
  if (geometry_type == CIRCLE_COLUMNS) return circle_column_count;
  if (geometry_type == RECTANGLE_COLUMNS) return rectangle_column_count;
  return 0;
}
