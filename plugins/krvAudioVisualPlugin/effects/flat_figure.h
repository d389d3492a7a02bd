// Sizes of the flat shader's figures, as its uniforms say them. Formulas as in shaders/flat.glsl.
#pragma once

namespace krv {

class DrawUniforms;

enum FlatFigure : int {
  kBars,
  kPoints,
  kLines,
  kPulses,
  kCircleColumns,
  kRectangleColumns,
  kFlatFigures,
};

inline bool IsColumns(int figure) {
  return figure == kCircleColumns || figure == kRectangleColumns;
}

// What is seen to either side of the middle of the picture, in scene units.
struct HalfView {
  float x;
  float y;
};
HalfView HalfViewOf(DrawUniforms& uniforms);

// Of the rectangle that the figures lie in, in scene units.
struct QuadSize {
  float width;
  float height;
};
QuadSize SizeOfQuad(DrawUniforms& uniforms);

// Of one column, in scene units.
struct Blocks {
  float half_height;
  float pitch;
  float rounding;
  float quad_height;
};
Blocks BlocksOf(int figure, DrawUniforms& uniforms);

}  // namespace krv
