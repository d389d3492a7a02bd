#include "graphics/opengl/px_program_opengl.h"

#include <utility>

#include "graphics/opengl/px_graphics_opengl.h"

namespace krv {

PXProgram_OpenGL::PXProgram_OpenGL() : graphics_(CreateOpenGlGraphics()) {}

bool PXProgram_OpenGL::Build(std::string fragment_source, std::string vertex_source) {
  if (graphics_ == nullptr) return false;
  if (vertex_source.empty()) vertex_source = GL::kDefaultVertexSource;
  shader_ = graphics_->implementation()->CreateProgram(vertex_source, fragment_source);
  return shader_ != nullptr;
}

std::vector<std::string> SamplerNames(const PXProgram& program) {
  std::vector<std::string> names;
  for (const GL::ShaderVariable& variable : program.shader()->uniforms()) {
    if (variable.type == GL::ShaderVarType::kSampler2D) names.push_back(variable.name);
  }
  return names;
}

std::shared_ptr<PXProgram> CreateProgram(std::string fragment_source, std::string vertex_source) {
  auto program = std::make_shared<PXProgram_OpenGL>();
  return program->Build(std::move(fragment_source), std::move(vertex_source)) ? program : nullptr;
}

bool IsLinked(const PXProgram& program) {
  return program.shader() != nullptr && program.shader()->linked();
}

}  // namespace krv
