// Shader programs.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace krv {

namespace GL {
class Shader;
}

class PXProgram {
 public:
  // The linked program; owned by this object.
  virtual GL::Shader* shader() const = 0;
  virtual ~PXProgram() = default;
};

// The names of the 2-D samplers that the linked program reads.
std::vector<std::string> SamplerNames(const PXProgram& program);

// Compiles and links; an empty vertex source takes the default one, which covers the target. GLSL
// errors are printed and the program is returned all the same; null only when no program object can
// be had (no current context). GL thread.
std::shared_ptr<PXProgram> CreateProgram(std::string fragment_source, std::string vertex_source);

// Whether the driver took the program, so that it draws.
bool IsLinked(const PXProgram& program);

}  // namespace krv
