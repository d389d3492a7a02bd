// Draws with a visualisation shader.
#pragma once

#include "shaders/common_figure.h"
#include "shaders/shader_canvas.h"

namespace krv::test {

inline constexpr int kAudioUnit = 0;
inline constexpr int kGradientUnit = 1;

// Sets what all visualisation shaders share, the units of the textures above among it, but not the
// picture's size.
void SetCommon(const UniformSetter& program, const CommonFigure& figure);

// Sets what all visualisation shaders share and draws; what else the shader reads must be set.
Picture DrawCommon(const ShaderProgram& program, const CommonFigure& figure, int width, int height,
                   GLenum format);

}  // namespace krv::test
