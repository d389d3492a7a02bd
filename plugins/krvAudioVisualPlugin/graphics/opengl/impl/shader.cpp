#include "graphics/opengl/impl/shader.h"

#include <glad/gl.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <utility>

#include "graphics/opengl/impl/gl_check.h"
#include "graphics/opengl/impl/resource_pool.h"

namespace krv::GL {

// Kept to the byte: package authors see it in error messages of their drivers.
const char* const kDefaultVertexSource =
    "  #version 120\n"
    "\n"
    "            #if __VERSION__ == 120 || __VERSION__ == 100 \n"
    "            attribute vec2 position; \n"
    "            varying vec2 tc; \n"
    "            #else\n"
    "            in vec2 position; \n"
    "            out vec2 tc;\n"
    "            #endif\n"
    "            \n"
    "            void main()\n"
    "            { \n"
    "              gl_Position = vec4(2.0 * position.x - 1.0, 2.0 * position.y - 1.0, -1.0, 1.0);\n"
    "              tc = position.xy; \n"
    "            }\n"
    "    ";

namespace {

constexpr GLsizei kLogBytes = 1024;
constexpr GLsizei kNameBytes = 128;

ShaderVarType VarTypeOf(GLenum type) {
  switch (type) {
    case GL_INT:
      return ShaderVarType::kInt;
    case GL_FLOAT:
      return ShaderVarType::kFloat;
    case GL_SAMPLER_2D:
      return ShaderVarType::kSampler2D;
    case GL_SAMPLER_3D:
      return ShaderVarType::kSampler3D;
    case GL_SAMPLER_CUBE:
      return ShaderVarType::kSamplerCube;
    case GL_FLOAT_VEC2:
      return ShaderVarType::kVec2;
    case GL_FLOAT_VEC3:
      return ShaderVarType::kVec3;
    case GL_FLOAT_VEC4:
      return ShaderVarType::kVec4;
    case GL_FLOAT_MAT2:
      return ShaderVarType::kMat2;
    case GL_FLOAT_MAT3:
      return ShaderVarType::kMat3;
    case GL_FLOAT_MAT4:
      return ShaderVarType::kMat4;
    default:
      return ShaderVarType::kOther;
  }
}

void Report(const char* stage, const char* log) {
  std::printf("Shader compiler failed (%s) : %s\n", stage, log);
  std::fflush(stdout);
}

GLuint CompileStage(GLenum stage, const std::string& source, std::span<const std::string> defines) {
  const std::vector<std::string> strings = SourceStrings(source, defines);
  std::vector<const GLchar*> pointers;
  pointers.reserve(strings.size());
  for (const std::string& text : strings) pointers.push_back(text.c_str());
  const GLuint shader = glCreateShader(stage);
  glShaderSource(shader, static_cast<GLsizei>(pointers.size()), pointers.data(), nullptr);
  glCompileShader(shader);
  return shader;
}

void CheckStage(GLuint shader, const char* label) {
  GLint compiled = GL_FALSE;
  glGetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
  if (compiled) return;
  std::array<GLchar, kLogBytes> log{};
  glGetShaderInfoLog(shader, kLogBytes, nullptr, log.data());
  Report(label, log.data());
}

bool Link(GLuint program) {
  glLinkProgram(program);
  GLint linked = GL_FALSE;
  glGetProgramiv(program, GL_LINK_STATUS, &linked);
  if (linked) return true;
  std::array<GLchar, kLogBytes> log{};
  glGetProgramInfoLog(program, kLogBytes, nullptr, log.data());
  Report("link status", log.data());
  return false;
}

using ActiveQuery = void(GLAD_API_PTR*)(GLuint, GLuint, GLsizei, GLsizei*, GLint*, GLenum*,
                                        GLchar*);
using LocationQuery = GLint(GLAD_API_PTR*)(GLuint, const GLchar*);

std::vector<ShaderVariable> ReadActive(GLuint program, GLenum count_name, ActiveQuery active,
                                       LocationQuery location) {
  GLint count = 0;
  glGetProgramiv(program, count_name, &count);
  std::vector<ShaderVariable> variables;
  for (GLint index = 0; index < count; ++index) {
    std::array<GLchar, kNameBytes> name{};
    GLint size = 0;
    GLenum type = 0;
    active(program, static_cast<GLuint>(index), kNameBytes, nullptr, &size, &type, name.data());
    variables.push_back({VarTypeOf(type), name.data(), location(program, name.data()), size});
  }
  return variables;
}

// GL reports an array as its first element.
bool IsArray(const ShaderVariable& variable, std::string_view name) {
  constexpr std::string_view kFirst = "[0]";
  const std::string_view reported = variable.name;
  return reported.size() == name.size() + kFirst.size() && reported.starts_with(name) &&
         reported.ends_with(kFirst);
}

const ShaderVariable* FindIn(const std::vector<ShaderVariable>& variables, std::string_view name) {
  for (const ShaderVariable& variable : variables) {
    if (variable.name == name || IsArray(variable, name)) return &variable;
  }
  return nullptr;
}

int32_t LocationIn(const std::vector<ShaderVariable>& variables, std::string_view name) {
  const ShaderVariable* found = FindIn(variables, name);
  return found == nullptr ? -1 : found->location;
}

// Bytes of data that a type reads; 0 for types that are not set.
size_t BytesRead(UniformType type) {
  switch (type) {
    case UniformType::kFloat:
      return sizeof(float);
    case UniformType::kByte:
      return 1;
    case UniformType::kVec2:
      return 2 * sizeof(float);
    case UniformType::kVec3:
      return 3 * sizeof(float);
    case UniformType::kVec4:
    case UniformType::kMat2:
      return 4 * sizeof(float);
    case UniformType::kMat3:
      return 9 * sizeof(float);
    case UniformType::kMat4:
      return 16 * sizeof(float);
    default:
      return 0;
  }
}

}  // namespace

std::vector<std::string> SourceStrings(const std::string& source,
                                       std::span<const std::string> defines) {
  if (defines.empty()) return {source};
  std::vector<std::string> strings;
  std::string rest = source;
  const size_t line_end = source.find('\n');
  const std::string first_line = source.substr(0, line_end);
  if (first_line.size() >= 8 && first_line.find("#version") != std::string::npos) {
    rest = line_end == std::string::npos ? std::string() : source.substr(line_end + 1);
    strings.emplace_back("#version 300 es\n");
  }
  for (const std::string& define : defines) strings.push_back("#define " + define + "\n");
  strings.push_back(std::move(rest));
  return strings;
}

std::shared_ptr<Shader> Shader::Compile(const std::string& vertex_source,
                                        const std::string& fragment_source,
                                        std::span<const std::string> defines) {
  const GLuint vertex = CompileStage(GL_VERTEX_SHADER, vertex_source, defines);
  const GLuint fragment = CompileStage(GL_FRAGMENT_SHADER, fragment_source, defines);
  std::shared_ptr<Shader> shader(new Shader);
  shader->name_ = glCreateProgram();
  shader->owner_ = ResourcePool::Instance().CurrentOwner();
  CheckStage(vertex, "vert");
  CheckStage(fragment, "frag");
  if (shader->name_ != 0) {
    glAttachShader(shader->name_, vertex);
    glAttachShader(shader->name_, fragment);
    shader->linked_ = Link(shader->name_);
    shader->ReadVariables();
  }
  glDeleteShader(vertex);
  glDeleteShader(fragment);
  CheckGl();
  return shader->name_ == 0 ? nullptr : shader;
}

Shader::~Shader() {
  if (name_ != 0 && owner_ == ResourcePool::Instance().CurrentOwner()) glDeleteProgram(name_);
}

void Shader::ReadVariables() {
  uniforms_ = ReadActive(name_, GL_ACTIVE_UNIFORMS, glGetActiveUniform, glGetUniformLocation);
  attributes_ = ReadActive(name_, GL_ACTIVE_ATTRIBUTES, glGetActiveAttrib, glGetAttribLocation);
}

int32_t Shader::AttributeLocation(std::string_view name) const {
  return LocationIn(attributes_, name);
}

int32_t Shader::UniformLocation(std::string_view name) const { return LocationIn(uniforms_, name); }

void Shader::SetInt(std::string_view name, int32_t value) const {
  if (const int32_t at = UniformLocation(name); at >= 0) glUniform1i(at, value);
}

void Shader::SetFloat(std::string_view name, float value) const {
  if (const int32_t at = UniformLocation(name); at >= 0) glUniform1f(at, value);
}

void Shader::SetFloats(std::string_view name, const float* values, int32_t count) const {
  const ShaderVariable* found = FindIn(uniforms_, name);
  if (found != nullptr) glUniform1fv(found->location, std::min(count, found->elements), values);
}

void Shader::SetVec4s(std::string_view name, const float* values, int32_t count) const {
  const ShaderVariable* found = FindIn(uniforms_, name);
  if (found != nullptr) glUniform4fv(found->location, std::min(count, found->elements), values);
}

void Shader::SetByte(std::string_view name, uint8_t value) const { SetInt(name, value); }

void Shader::SetVec2(std::string_view name, const float* value) const {
  if (const int32_t at = UniformLocation(name); at >= 0) glUniform2fv(at, 1, value);
}

void Shader::SetVec3(std::string_view name, const float* value) const {
  if (const int32_t at = UniformLocation(name); at >= 0) glUniform3fv(at, 1, value);
}

void Shader::SetVec4(std::string_view name, const float* value) const {
  if (const int32_t at = UniformLocation(name); at >= 0) glUniform4fv(at, 1, value);
}

void Shader::SetMat2(std::string_view name, const float* value) const {
  if (const int32_t at = UniformLocation(name); at >= 0) glUniformMatrix2fv(at, 1, GL_FALSE, value);
}

void Shader::SetMat3(std::string_view name, const float* value) const {
  if (const int32_t at = UniformLocation(name); at >= 0) glUniformMatrix3fv(at, 1, GL_FALSE, value);
}

void Shader::SetMat4(std::string_view name, const float* value) const {
  if (const int32_t at = UniformLocation(name); at >= 0) glUniformMatrix4fv(at, 1, GL_FALSE, value);
}

// Whether there is more than one value.
bool Shader::SetArray(const UniformValue& uniform, size_t values) const {
  const auto* floats = reinterpret_cast<const float*>(uniform.data.data());
  if (values < 2) return false;
  if (uniform.type == UniformType::kFloat) {
    SetFloats(uniform.name, floats, static_cast<int32_t>(values));
    return true;
  }
  if (uniform.type == UniformType::kVec4) {
    SetVec4s(uniform.name, floats, static_cast<int32_t>(values));
    return true;
  }
  return false;
}

void Shader::SetUniform(const UniformValue& uniform) const {
  if (uniform.name.empty() || uniform.data.empty()) return;
  const size_t size = std::min<size_t>(uniform.size, uniform.data.size());
  if (static_cast<uint32_t>(uniform.type) <= 5) {
    int32_t value = 0;
    std::memcpy(&value, uniform.data.data(), std::min(size, sizeof(value)));
    SetInt(uniform.name, value);
    return;
  }
  const size_t bytes = BytesRead(uniform.type);
  if (bytes == 0 || size < bytes) return;
  if (SetArray(uniform, size / bytes)) return;
  std::array<float, 16> floats{};
  std::memcpy(floats.data(), uniform.data.data(), bytes);
  switch (uniform.type) {
    case UniformType::kFloat:
      return SetFloat(uniform.name, floats[0]);
    case UniformType::kByte:
      return SetByte(uniform.name, std::to_integer<uint8_t>(uniform.data[0]));
    case UniformType::kVec2:
      return SetVec2(uniform.name, floats.data());
    case UniformType::kVec3:
      return SetVec3(uniform.name, floats.data());
    case UniformType::kVec4:
      return SetVec4(uniform.name, floats.data());
    case UniformType::kMat2:
      return SetMat2(uniform.name, floats.data());
    case UniformType::kMat3:
      return SetMat3(uniform.name, floats.data());
    case UniformType::kMat4:
      return SetMat4(uniform.name, floats.data());
    default:
      return;
  }
}

}  // namespace krv::GL
