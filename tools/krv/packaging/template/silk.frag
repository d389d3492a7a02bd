#version 120

// Ribbons of light that swing with the music.
//
// This program runs once for every pixel and says in gl_FragColor what colour and alpha the pixel
// has. The first row is the picture's top. Change something, save, and look at it in `krv studio`,
// or with `krv check` and `krv render`.

// What every shader gets for each frame.
uniform sampler2D audio_tex;   // the spectrum: loudness 0..1 in red, the lowest frequency at 0
uniform float audio_left_db;   // how loud the frame is: about 50 (soft) to 90 (loud)
uniform float time_second;     // seconds since the clip's start
uniform vec2 iResolution;      // the picture's size in pixels

// The parameters of description.json, by their names. For a further one add it there and here.
uniform int ribbons;
uniform float position_y;  // percent of the picture's height, from its top
uniform float height;      // percent of the picture's height
uniform float thickness;   // percent of the picture's height
uniform float glow;        // 0..1
uniform float speed;
uniform float alpha;       // percent

// "gradient_color" arrives as a texture: a texel per stop, its colour and, in alpha, its place 0..1.
uniform sampler2D gradient_color_tex;
uniform int gradient_color_count;

vec4 gradientStop(int index) {
  float u = (float(index) + 0.5) / float(gradient_color_count);
  return texture2D(gradient_color_tex, vec2(u, 0.5));
}

// The gradient's colour at a place, 0..1.
vec3 gradient(float place) {
  vec4 before = gradientStop(0);
  for (int i = 1; i < gradient_color_count; i++) {
    vec4 next = gradientStop(i);
    if (place <= next.a) {
      float part = clamp((place - before.a) / max(next.a - before.a, 0.001), 0.0, 1.0);
      return mix(before.rgb, next.rgb, part);
    }
    before = next;
  }
  return before.rgb;
}

// How far the frame's loudness lets the ribbons swing, 0..1.
float loudness() { return smoothstep(45.0, 85.0, audio_left_db); }

// The loudness of the frequencies at a place of the spectrum, 0..1.
float spectrum(float place) { return texture2D(audio_tex, vec2(place, 0.5)).r; }

// The same, evened out over the frequencies beside it.
float smoothSpectrum(float place) {
  float sum = spectrum(place);
  sum += spectrum(place - 0.006) + spectrum(place + 0.006);
  sum += spectrum(place - 0.003) + spectrum(place + 0.003);
  return sum / 5.0;
}

// Where a ribbon is at x (0 at the left, 1 at the right): -1..1, 0 for its place of rest. `which` is
// 0 for the first ribbon and 1 for the last, `loud` the frame's loudness, `ripple` how strong the
// ribbon's small waves are.
float ribbon(float x, float which, float loud, float ripple) {
  float phase = 2.4 * which + speed * time_second;
  float wave = 0.6 * sin(5.0 * x + phase) + 0.4 * sin(9.0 * x - 1.7 * phase + 3.0 * which);
  float small_wave = sin(24.0 * x + 2.0 * phase + 6.0 * which);
  float swing = 0.15 + 0.35 * loud + 0.5 * spectrum(0.01 + 0.12 * which);
  return swing * wave + ripple * small_wave;
}

void main() {
  vec2 at = gl_FragCoord.xy / iResolution;  // 0..1, from the left and from the top
  float rest = 0.01 * position_y;
  float reach = 0.01 * height;
  float radius = max(0.005 * thickness, 0.5 / iResolution.y);  // at least half a pixel

  float ends = sin(3.14159265 * at.x);  // 0 at both sides of the picture, 1 in its middle
  float loud = loudness();
  float ripple = 0.35 * smoothSpectrum(0.2 * abs(2.0 * at.x - 1.0));

  vec3 light = vec3(0.0);
  float strength = 0.0;
  for (int i = 0; i < ribbons; i++) {
    float which = ribbons > 1 ? float(i) / float(ribbons - 1) : 0.5;
    float y = rest + reach * ends * ends * ribbon(at.x, which, loud, ripple);

    // The distance to a line that rises steeply is less than the distance straight up or down. dFdx
    // is the difference to the pixel beside.
    float rise = dFdx(y) * iResolution.y;
    float away = abs(at.y - y) / sqrt(1.0 + rise * rise);

    // A bright core, and a halo that falls off slowly.
    float core = 1.0 - smoothstep(0.6 * radius, 1.6 * radius, away);
    float fade = max(0.0, 1.0 - away / (0.05 + 0.2 * glow));
    float halo = glow * fade * fade * 1.5 * radius / (away + 1.5 * radius);
    float shine = core + halo;

    vec3 colour = gradient(clamp(0.75 * at.x + 0.25 * which, 0.0, 1.0));
    colour = mix(colour, vec3(1.0), 0.55 * core * core);  // the core is nearly white
    light += colour * shine;
    strength += shine;
  }

  // Straight colour and alpha. The alpha stays below 1: where it is exactly 1, the blend adds the
  // colour to the picture instead of laying it over.
  float opacity = 1.0 - exp(-1.6 * strength);
  gl_FragColor = vec4(light / max(strength, 0.0001), min(0.01 * alpha * opacity, 0.99));
}
