#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <dlfcn.h>

#include "platform/platform.h"

namespace example {

std::vector<std::string> Arguments(int argc, char** argv) { return {argv + 1, argv + argc}; }

void* LoadLibraryFile(const std::string& path) {
  // A name without a folder would be looked for among the system's libraries.
  const std::string file = path.find('/') == std::string::npos ? "./" + path : path;
  return dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
}

void* FindFunction(void* library, const char* name) { return dlsym(library, name); }

bool MakeGlContextCurrent() {
  EGLDisplay display =
      eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
  if (!eglInitialize(display, nullptr, nullptr) || !eglBindAPI(EGL_OPENGL_API)) return false;
  // Without a wish for a core profile, drivers give the compatibility profile.
  EGLContext context = eglCreateContext(display, EGL_NO_CONFIG_KHR, EGL_NO_CONTEXT, nullptr);
  return eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context) == EGL_TRUE;
}

}  // namespace example
