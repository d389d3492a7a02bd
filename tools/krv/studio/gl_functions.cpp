#include "studio/gl_functions.h"

#include <SDL.h>

namespace krv::studio {
namespace {

template <class Function>
bool Find(const char* name, Function* function, std::string* error) {
  *function = reinterpret_cast<Function>(SDL_GL_GetProcAddress(name));
  if (*function != nullptr) return true;
  *error = std::string("the OpenGL driver has no function ") + name;
  return false;
}

}  // namespace

bool GlFunctions::Load(std::string* error) {
  return Find("glGenTextures", &GenTextures, error) &&
         Find("glDeleteTextures", &DeleteTextures, error) &&
         Find("glBindTexture", &BindTexture, error) &&
         Find("glTexParameteri", &TexParameteri, error) &&
         Find("glTexImage2D", &TexImage2D, error) &&
         Find("glTexSubImage2D", &TexSubImage2D, error) &&
         Find("glPixelStorei", &PixelStorei, error) && Find("glReadPixels", &ReadPixels, error) &&
         Find("glViewport", &Viewport, error) && Find("glClearColor", &ClearColor, error) &&
         Find("glClear", &Clear, error) && Find("glEnable", &Enable, error) &&
         Find("glDisable", &Disable, error) && Find("glScissor", &Scissor, error);
}

}  // namespace krv::studio
