
#ifdef GL_ES
#ifdef GL_FRAGMENT_PRECISION_HIGH
precision highp float;
#else
precision mediump float;
#endif
#endif

#if __VERSION__ == 120 || __VERSION__ == 100
#extension GL_EXT_gpu_shader4 : enable
#define fragColor gl_FragColor
#define texture texture2D
#else
out vec4 fragColor;
#endif
