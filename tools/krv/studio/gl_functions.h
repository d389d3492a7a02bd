// The few OpenGL functions that the window calls itself.
#pragma once

#include <SDL_opengl.h>

#include <string>

namespace krv::studio {

// Of the window's context: the host's own functions belong to the plug-in's.
struct GlFunctions {
  void(APIENTRY* GenTextures)(GLsizei, GLuint*) = nullptr;
  void(APIENTRY* DeleteTextures)(GLsizei, const GLuint*) = nullptr;
  void(APIENTRY* BindTexture)(GLenum, GLuint) = nullptr;
  void(APIENTRY* TexParameteri)(GLenum, GLenum, GLint) = nullptr;
  void(APIENTRY* TexImage2D)(GLenum, GLint, GLint, GLsizei, GLsizei, GLint, GLenum, GLenum,
                             const void*) = nullptr;
  void(APIENTRY* TexSubImage2D)(GLenum, GLint, GLint, GLint, GLsizei, GLsizei, GLenum, GLenum,
                                const void*) = nullptr;
  void(APIENTRY* PixelStorei)(GLenum, GLint) = nullptr;
  void(APIENTRY* ReadPixels)(GLint, GLint, GLsizei, GLsizei, GLenum, GLenum, void*) = nullptr;
  void(APIENTRY* Viewport)(GLint, GLint, GLsizei, GLsizei) = nullptr;
  void(APIENTRY* ClearColor)(GLfloat, GLfloat, GLfloat, GLfloat) = nullptr;
  void(APIENTRY* Clear)(GLbitfield) = nullptr;
  void(APIENTRY* Enable)(GLenum) = nullptr;
  void(APIENTRY* Disable)(GLenum) = nullptr;
  void(APIENTRY* Scissor)(GLint, GLint, GLsizei, GLsizei) = nullptr;

  // The window's context is current. False, with one line in *error, when the driver lacks one.
  bool Load(std::string* error);
};

}  // namespace krv::studio
