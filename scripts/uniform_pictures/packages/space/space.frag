#version 120

varying vec3 shade;

void main() { gl_FragColor = vec4(shade.xy, 1.0, 0.9); }
