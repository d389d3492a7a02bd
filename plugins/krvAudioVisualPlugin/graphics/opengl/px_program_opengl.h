// A program backed by a linked GL program.
#pragma once

#include <memory>
#include <string>

#include "graphics/opengl/impl/shader.h"
#include "graphics/px_program.h"

namespace krv {

class PXGraphics_OpenGL;

class PXProgram_OpenGL : public PXProgram {
 public:
  PXProgram_OpenGL();  // makes a device of its own; Build fails when there is none

  GL::Shader* shader() const override { return shader_.get(); }

  // Compiles and links; an empty vertex source takes the default one. False when no program object
  // can be had.
  bool Build(std::string fragment_source, std::string vertex_source);

 private:
  std::shared_ptr<PXGraphics_OpenGL> graphics_;
  std::shared_ptr<GL::Shader> shader_;
};

}  // namespace krv
