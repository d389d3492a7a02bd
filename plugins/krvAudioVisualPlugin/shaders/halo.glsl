
// What the two halo shaders share: a ring about the origin in the plane y = 0, seen by a camera on
// a circle about the x axis. One ray per pixel meets the plane once. Places on the plane are
// written (x, -z), and angles turn from the first towards the second.

uniform float radius;              // of the ring, scene units; 0: nothing but black
uniform int inclination_degree_x;  // tilt of the camera: 0 looks at the plane, 90 along it
uniform int inclination_degree_z;  // roll of the camera, degrees
uniform int rotate_direction;      // 1: turns backwards
uniform float rotate_speed;        // radians per second
uniform int manual_rotate;         // 1: stands still at manual_rotate_degree
uniform float manual_rotate_degree;

const float CAMERA_DISTANCE = 19.0;
const float FOCAL_LENGTH = 1.8660254037844386;  // picture heights, for 30 degrees: 0.5 / tan(15)
const float LEVEL_REACH = 3.0;                  // scene units that the full level moves a figure
const float FARTHEST = 1e9;                     // along rays that all but miss the plane

// Set by main, once per pixel.
vec3 eye = vec3(0.0);
vec3 ray = vec3(0.0);  // of length 1

// The turn of the figure, before each shader wraps it in its own way.
float turnSinceStart() {
  if (manual_rotate == 1) return radians(manual_rotate_degree);
  float turn = time_second * rotate_speed;
  return rotate_direction == 1 ? -turn : turn;
}

// A tilt of half turns is moved a little, so that the camera's up axis is never along its view.
vec3 cameraPlace() {
  float tilt = float(inclination_degree_x);
  if (floor(tilt / 180.0 + 0.5) * 180.0 == tilt) tilt += 0.01;
  float angle = radians(90.0 + tilt);
  return CAMERA_DISTANCE * vec3(0.0, -sin(angle), cos(angle));
}

// The axes (right, up, forward) of a camera that looks at the origin. Where that is nearly along
// the y axis, up and the roll go by the z axis.
mat3 getCameraVector(vec3 camera) {
  vec3 forward = normalize(-camera);
  float roll = radians(float(inclination_degree_z));
  float s = sin(roll);
  float c = cos(roll);
  vec3 up = vec3(-s, camera.z > 0.0 ? -c : c, 0.0);
  if (abs(forward.y) > 0.99) up = vec3(-s, 0.0, forward.y > 0.0 ? -c : c);
  vec3 right = normalize(cross(forward, up));
  return mat3(right, cross(right, forward), forward);
}

// Where the ring's centre is seen, pixels.
vec2 ringCentre() { return (vec2(position_x, position_y) / 50.0 - 0.5) * iResolution; }

// The direction in which a pixel is seen, of any length.
vec3 rayThrough(vec3 camera, vec2 pixel) {
  return getCameraVector(camera) * vec3(pixel - ringCentre(), FOCAL_LENGTH * iResolution.y);
}

// How far along the ray the plane is: negative behind the camera, 0 when the ray is parallel to it.
float planeDepth() {
  return ray.y != 0.0 ? clamp(-eye.y / ray.y, -FARTHEST, FARTHEST) : 0.0;
}

bool meetsPlane(float depth) { return ray.y != 0.0 && depth >= 0.0; }

// The place of the ray's point at this distance from the camera.
vec2 placeAt(float depth) { return (eye.xz + ray.xz * depth) * vec2(1.0, -1.0); }

float angleOf(vec2 place) {
  return place.x == 0.0 && place.y == 0.0 ? 0.0 : atan(place.y, place.x);
}

// From radians to degrees, 0 to 360.
float turnDegrees(float angle) { return mod(degrees(angle), 360.0); }

// Item i of n round the ring, 0 to n - 1; i may lie before the first or behind the last.
float wrapped(float i, float n) { return i - n * floor((i + 0.5) / n); }

vec2 unitVector(float angle) { return vec2(cos(angle), sin(angle)); }

// p turned by the angle of a unit vector.
vec2 turnedBy(vec2 unit, vec2 p) {
  return vec2(p.x * unit.x - p.y * unit.y, p.x * unit.y + p.y * unit.x);
}
