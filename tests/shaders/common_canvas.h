// Draws with a visualisation shader.
#pragma once

#include "shaders/common_figure.h"
#include "shaders/shader_canvas.h"

namespace krv::test {

// Sets what all visualisation shaders share and draws; what else the shader reads must be set.
Picture DrawCommon(const ShaderProgram& program, const CommonFigure& figure, int width, int height,
                   GLenum format);

}  // namespace krv::test
