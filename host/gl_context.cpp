#include "gl_context.h"

#include <glad/gl.h>

namespace krv::host {
namespace {

std::string Text(GLenum name) {
  const GLubyte* value = glGetString(name);
  return value == nullptr ? std::string() : std::string(reinterpret_cast<const char*>(value));
}

}  // namespace

std::string GlContext::Description() const {
  return Text(GL_RENDERER) + ", OpenGL " + Text(GL_VERSION);
}

}  // namespace krv::host
