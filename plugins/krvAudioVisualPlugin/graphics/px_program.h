// Shader programs.
#pragma once

#include <memory>
#include <string>

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

// Compiles and links; an empty vertex source takes the default one, which covers the target. GLSL
// errors are printed and the program is returned all the same; null only when no program object can
// be had (no current context). GL thread.
std::shared_ptr<PXProgram> CreateProgram(std::string fragment_source, std::string vertex_source);

}  // namespace krv
