#include "graphics/gl_names.h"

#include <glad/gl.h>

#include <ostream>

namespace krv::test {

GlNames GlNames::Alive(uint32_t bound) {
  GlNames alive;
  for (GLuint name = 1; name < bound; ++name) {
    alive.textures += glIsTexture(name);
    alive.buffers += glIsBuffer(name);
    alive.framebuffers += glIsFramebuffer(name);
    alive.vertex_arrays += glIsVertexArray(name);
    alive.programs += glIsProgram(name);
    alive.shaders += glIsShader(name);
  }
  return alive;
}

std::ostream& operator<<(std::ostream& out, const GlNames& names) {
  return out << names.textures << " textures, " << names.buffers << " buffers, "
             << names.framebuffers << " framebuffers, " << names.vertex_arrays << " vertex arrays, "
             << names.programs << " programs, " << names.shaders << " shaders";
}

}  // namespace krv::test
