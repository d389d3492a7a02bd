#include "shaders/shader_canvas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>

namespace krv::test {
namespace {

constexpr std::string_view kVertexBody =
    "in vec2 position;\n"
    "void main() { gl_Position = vec4(2.0 * position - 1.0, -1.0, 1.0); }\n";

// The vertex stage must speak the fragment stage's language.
std::string VertexSource(std::string_view fragment_source) {
  const std::string version(fragment_source.substr(0, fragment_source.find('\n') + 1));
  const bool old = version == "#version 120\n" || version == "#version 100\n";
  return version + (old ? "#define in attribute\n" : "") + std::string(kVertexBody);
}

std::string ShaderLog(GLuint shader) {
  char text[4096] = "";
  glGetShaderInfoLog(shader, sizeof text, nullptr, text);
  return text;
}

GLuint Compile(GLenum stage, std::string_view source, std::string* log) {
  const GLuint shader = glCreateShader(stage);
  const char* text = source.data();
  const auto length = static_cast<GLint>(source.size());
  glShaderSource(shader, 1, &text, &length);
  glCompileShader(shader);
  *log += ShaderLog(shader);
  return shader;
}

}  // namespace

ShaderProgram::ShaderProgram(std::string_view fragment_source) : name_(glCreateProgram()) {
  const GLuint vertex = Compile(GL_VERTEX_SHADER, VertexSource(fragment_source), &log_);
  const GLuint fragment = Compile(GL_FRAGMENT_SHADER, fragment_source, &log_);
  glAttachShader(name_, vertex);
  glAttachShader(name_, fragment);
  glBindAttribLocation(name_, 0, "position");
  glLinkProgram(name_);
  char text[4096] = "";
  glGetProgramInfoLog(name_, sizeof text, nullptr, text);
  log_ += text;
  GLint linked = GL_FALSE;
  glGetProgramiv(name_, GL_LINK_STATUS, &linked);
  ok_ = linked == GL_TRUE;
  glDeleteShader(vertex);
  glDeleteShader(fragment);
}

ShaderProgram::~ShaderProgram() { glDeleteProgram(name_); }

void ShaderProgram::Set(const char* name, int value) const {
  Use();
  glUniform1i(glGetUniformLocation(name_, name), value);
}

void ShaderProgram::Set(const char* name, float value) const {
  Use();
  glUniform1f(glGetUniformLocation(name_, name), value);
}

void ShaderProgram::Set(const char* name, float x, float y) const {
  Use();
  glUniform2f(glGetUniformLocation(name_, name), x, y);
}

RowTexture::RowTexture(int unit, const std::vector<std::array<float, 4>>& texels) {
  glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
  glGenTextures(1, &name_);
  glBindTexture(GL_TEXTURE_2D, name_);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA32F, static_cast<GLsizei>(texels.size()), 1, 0, GL_RGBA,
               GL_FLOAT, texels.data());
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_MIRRORED_REPEAT);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_MIRRORED_REPEAT);
  glActiveTexture(GL_TEXTURE0);
}

RowTexture::~RowTexture() { glDeleteTextures(1, &name_); }

std::unique_ptr<host::GlContext> MakeSoftwareContext() {
  std::string error;
  auto context = host::GlContext::Create(host::GlContext::Renderer::kSoftware, &error);
  if (context == nullptr || !context->MakeCurrent()) {
    ADD_FAILURE() << "no software context: " << error;
    return nullptr;
  }
  return context;
}

Picture Draw(const ShaderProgram& program, int width, int height, GLenum format) {
  GLuint texture = 0;
  GLuint framebuffer = 0;
  glActiveTexture(GL_TEXTURE8);
  glGenTextures(1, &texture);
  glBindTexture(GL_TEXTURE_2D, texture);
  glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(format), width, height, 0, GL_RGBA, GL_FLOAT,
               nullptr);
  glGenFramebuffers(1, &framebuffer);
  glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
  glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
  glViewport(0, 0, width, height);

  static constexpr float kCorners[] = {0, 0, 1, 0, 0, 1, 1, 1};
  program.Use();
  glEnableVertexAttribArray(0);
  glVertexAttribPointer(0, 2, GL_FLOAT, GL_FALSE, 0, kCorners);
  glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);

  std::vector<float> values(static_cast<size_t>(width) * height * 4);
  glReadPixels(0, 0, width, height, GL_RGBA, GL_FLOAT, values.data());
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
  glBindFramebuffer(GL_FRAMEBUFFER, 0);
  glDeleteFramebuffers(1, &framebuffer);
  glDeleteTextures(1, &texture);

  Picture picture{width, height, std::vector<Pixel>(values.size() / 4)};
  for (size_t i = 0; i < values.size(); ++i) picture.pixels[i / 4][i % 4] = values[i];
  return picture;
}

std::string WritePpm(const Picture& picture, const std::string& name) {
  const std::string path = ::testing::TempDir() + name + ".ppm";
  std::ofstream file(path, std::ios::binary);
  file << "P6\n" << picture.width << ' ' << picture.height << "\n255\n";
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const Pixel& pixel = picture.At(x, y);
      for (int channel = 0; channel < 3; ++channel) {
        const double value = std::clamp(pixel[channel] * pixel[3], 0.0, 1.0);
        file.put(static_cast<char>(static_cast<unsigned char>(std::lround(value * 255))));
      }
    }
  }
  return path;
}

}  // namespace krv::test
