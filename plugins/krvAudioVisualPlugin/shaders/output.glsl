
// The shaders are written with texture and fragColor; older languages know them by other names. The
// extension comes first, as OpenGL ES wants it.
#if __VERSION__ == 120 || __VERSION__ == 100
#extension GL_EXT_gpu_shader4 : enable
#define fragColor gl_FragColor
#define texture texture2D
#endif

#ifdef GL_ES
#ifdef GL_FRAGMENT_PRECISION_HIGH
precision highp float;
#else
precision mediump float;
#endif
#endif

#if __VERSION__ != 120 && __VERSION__ != 100
out vec4 fragColor;
#endif
