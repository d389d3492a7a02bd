// Draws a fragment shader over a whole texture with plain OpenGL, so that a shader is tested
// without the graphics layer that normally runs it.
#pragma once

#include <glad/gl.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "gl_context.h"
#include "shaders/uniform_setter.h"

namespace krv::test {

using Pixel = std::array<double, 4>;

// Rows in OpenGL's order, y = 0 first, which is the picture's top row.
struct Picture {
  int width = 0;
  int height = 0;
  std::vector<Pixel> pixels;

  const Pixel& At(int x, int y) const { return pixels[static_cast<size_t>(y) * width + x]; }
};

// A linked program. A context must be current for its whole life.
class ShaderProgram : public UniformSetter {
 public:
  // Compiles and links; ok() and log() tell how that went.
  explicit ShaderProgram(std::string_view fragment_source);
  ShaderProgram(const ShaderProgram&) = delete;
  ShaderProgram& operator=(const ShaderProgram&) = delete;
  ~ShaderProgram() override;

  bool ok() const { return ok_; }
  // What the compiler and linker said: empty when they had nothing to say.
  const std::string& log() const { return log_; }

  using UniformSetter::Set;
  void Set(const char* name, int value) const override;
  void Set(const char* name, float value) const override;
  void Set(const char* name, float x, float y) const override;

  void Use() const { glUseProgram(name_); }

 private:
  GLuint name_ = 0;
  bool ok_ = false;
  std::string log_;
};

// A one-row texture as the effect runtime makes them: linear, mirrored. Its texels are floats, so
// that filtering is exact. Bound to the unit while it lives.
class RowTexture {
 public:
  RowTexture(int unit, const std::vector<std::array<float, 4>>& texels);
  RowTexture(const RowTexture&) = delete;
  RowTexture& operator=(const RowTexture&) = delete;
  ~RowTexture();

 private:
  GLuint name_ = 0;
};

// A software context, current on the calling thread while the object lives; null when there is
// none, which fails the current test.
std::unique_ptr<host::GlContext> MakeSoftwareContext();

// What the program draws into a texture of this size and internal format (GL_RGBA8, GL_RGBA32F).
Picture Draw(const ShaderProgram& program, int width, int height, GLenum format);

// Writes the picture as a binary PPM (colour times alpha over black) and returns its path.
std::string WritePpm(const Picture& picture, const std::string& name);

}  // namespace krv::test
