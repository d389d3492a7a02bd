// Draws figures with the built-in halo shaders.
#pragma once

#include "shaders/halo_figure.h"
#include "shaders/shader_canvas.h"

namespace krv::test {

// Sets what the figure's shader reads besides what all of them share.
void SetFigure(const UniformSetter& program, const HaloGeometryFigure& figure);
void SetFigure(const UniformSetter& program, const HaloSpectrumFigure& figure);

// The program must be made from the source of the figure's shader.
Picture DrawFigure(const ShaderProgram& program, const HaloGeometryFigure& figure, int width,
                   int height, GLenum format);
Picture DrawFigure(const ShaderProgram& program, const HaloSpectrumFigure& figure, int width,
                   int height, GLenum format);

}  // namespace krv::test
