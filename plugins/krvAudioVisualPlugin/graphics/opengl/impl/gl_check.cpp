#include "graphics/opengl/impl/gl_check.h"

#include <glad/gl.h>

#include <cstdio>
#include <cstring>

namespace krv::GL {
namespace {

// The part of a source path below the repository; what stands before it differs from build to
// build.
const char* InRepository(const char* path) {
  const char* start = std::strstr(path, "plugins/krvAudioVisualPlugin/");
  return start == nullptr ? path : start;
}

}  // namespace

bool CheckGl(const char* file, int line) {
  const GLenum error = glGetError();
  if (error == GL_NO_ERROR) return true;
  std::printf("GL error 0x%x at %s:%d\n", error, InRepository(file), line);
  std::fflush(stdout);
  return false;
}

bool IsLoaded() { return glad_glFinish != nullptr; }

void Finish() {
  if (IsLoaded()) glFinish();
}

}  // namespace krv::GL
