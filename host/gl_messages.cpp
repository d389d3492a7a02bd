#include "gl_messages.h"

#include <glad/gl.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace krv::host {
namespace {

enum class Wish { kNothing, kPrint, kFatal };

Wish ReadWish() {
  const char* value = std::getenv("KRV_GL_MESSAGES");
  const std::string_view wish = value == nullptr ? "" : value;
  if (wish == "fatal") return Wish::kFatal;
  return wish == "print" ? Wish::kPrint : Wish::kNothing;
}

Wish WishOfProcess() {
  static const Wish wish = ReadWish();
  return wish;
}

const char* TypeName(GLenum type) {
  switch (type) {
    case GL_DEBUG_TYPE_ERROR:
      return "error";
    case GL_DEBUG_TYPE_UNDEFINED_BEHAVIOR:
      return "undefined behaviour";
    case GL_DEBUG_TYPE_DEPRECATED_BEHAVIOR:
      return "deprecated";
    case GL_DEBUG_TYPE_PORTABILITY:
      return "portability";
    case GL_DEBUG_TYPE_PERFORMANCE:
      return "performance";
    default:
      return "message";
  }
}

// A shader that does not compile is its author's fault, and reported elsewhere.
bool IsFault(GLenum source, GLenum type, GLenum severity) {
  if (source == GL_DEBUG_SOURCE_SHADER_COMPILER) return false;
  return type == GL_DEBUG_TYPE_ERROR || type == GL_DEBUG_TYPE_UNDEFINED_BEHAVIOR ||
         severity == GL_DEBUG_SEVERITY_HIGH;
}

void GLAD_API_PTR Report(GLenum source, GLenum type, GLuint /*id*/, GLenum severity, GLsizei length,
                         const GLchar* message, const void* /*user*/) {
  const bool fatal = WishOfProcess() == Wish::kFatal;
  if (fatal ? !IsFault(source, type, severity) : severity == GL_DEBUG_SEVERITY_NOTIFICATION) return;
  std::fprintf(stderr, "OpenGL, %s: %.*s\n", TypeName(type), length, message);
  if (fatal) std::abort();
}

}  // namespace

bool WantsGlMessages() { return WishOfProcess() != Wish::kNothing; }

void WatchGlMessages() {
  if (!WantsGlMessages() || glad_glDebugMessageCallback == nullptr) return;
  glEnable(GL_DEBUG_OUTPUT);
  glEnable(GL_DEBUG_OUTPUT_SYNCHRONOUS);  // a debugger then shows the call
  glDebugMessageCallback(Report, nullptr);
}

}  // namespace krv::host
