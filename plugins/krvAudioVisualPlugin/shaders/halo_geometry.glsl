
// What the two forms of the halo geometry shader share.

uniform int geometry_type;
uniform int point_direction;  // 0: points move outwards with the audio, else inwards
uniform float point_size;     // radius, 0.25 scene units
uniform int point_count;

uniform int ECG_count;         // beats round the ring
uniform float ECG_line_width;  // half width, 0.1 scene units

uniform int pulse_count;
uniform float pulse_width;  // 10 % of the angle from pulse to pulse
uniform bool pulse_fill;
uniform float pulse_line_width;  // half width, 0.1 scene units

const float EPSILON = 0.001;
const float end = 100.0;

const int POINTS = 0;
const int ECG = 1;
const int PULSES = 2;

const float BEAT_POINTS = 21.0;   // of one beat of the ECG
const float MAX_BEATS = 400.0;    // that a ray along the plane looks at
const float MAX_PULSES = 4096.0;  // that reach one pixel
const int SAMPLES = 15;           // of the pulses' curve at one pixel

float getRadians() { return mod(turnSinceStart(), 2.0 * M_PI); }

// How far point 0..20 of a beat leaves the ring.
float ecgWeight(float point) {
  vec4 early = vec4(equal(vec4(point), vec4(4.0, 6.0, 8.0, 10.0)));
  vec3 late = vec3(equal(vec3(point), vec3(12.0, 14.0, 16.0)));
  return dot(early, vec4(0.35, -0.4, 1.0, -0.2)) + dot(late, vec3(0.65, -0.75, 0.15));
}
