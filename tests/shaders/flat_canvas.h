// Draws a FlatFigure with the built-in flat geometry shader.
#pragma once

#include "shaders/flat_figure.h"
#include "shaders/shader_canvas.h"

namespace krv::test {

// Sets what only the flat shader reads.
void SetFigure(const UniformSetter& program, const FlatFigure& figure);

// The program must be made from that shader's source.
Picture DrawFigure(const ShaderProgram& program, const FlatFigure& figure, int width, int height,
                   GLenum format);

}  // namespace krv::test
