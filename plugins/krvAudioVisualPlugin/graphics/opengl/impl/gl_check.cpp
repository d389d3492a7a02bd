#include "graphics/opengl/impl/gl_check.h"

#include <glad/gl.h>

#include <cstdio>

namespace krv::GL {

bool CheckGl(std::source_location where) {
  const GLenum error = glGetError();
  if (error == GL_NO_ERROR) return true;
  std::printf("GL error 0x%x at %s:%d\n", error, where.file_name(), static_cast<int>(where.line()));
  std::fflush(stdout);
  return false;
}

}  // namespace krv::GL
