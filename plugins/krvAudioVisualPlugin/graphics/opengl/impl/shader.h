// GL::Shader: one linked GL program with the tables of its active attributes and uniforms.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "graphics/uniform_value.h"

namespace krv::GL {

// Describes a variable; setting one goes by the UniformType of the value instead.
enum class ShaderVarType : uint32_t {
  kOther = 0,
  kInt = 2,
  kFloat = 3,
  kSampler2D = 5,
  kSampler3D = 6,
  kSamplerCube = 7,
  kVec2 = 8,
  kVec3 = 9,
  kVec4 = 10,
  kMat2 = 11,
  kMat3 = 12,
  kMat4 = 13,
};

struct ShaderVariable {
  ShaderVarType type;
  std::string name;  // at most 127 characters
  int32_t location;
  int32_t elements;  // 1 unless it is an array, whose name is that of its first element: "u[0]"
};

// The vertex source for programs that bring none: covers the target and passes the position in the
// unit square on as `tc`.
extern const char* const kDefaultVertexSource;

// The strings that make up one stage's source. Without defines: the source as it is. With defines:
// "#version 300 es\n" in place of a version line (and only then), a "#define" line each, the rest.
std::vector<std::string> SourceStrings(const std::string& source,
                                       std::span<const std::string> defines);

// All operations need the GL context current in which the program was made, except destruction:
// where another context or none is current, the program is left to end with its own.
class Shader {
 public:
  // Compiles and links. Failures are printed to standard output ("Shader compiler failed (vert) :
  // ",
  // "(frag)", "(link status)" and the driver's log), and the program is returned all the same. Null
  // when GL gives no program object.
  static std::shared_ptr<Shader> Compile(const std::string& vertex_source,
                                         const std::string& fragment_source,
                                         std::span<const std::string> defines);

  Shader(const Shader&) = delete;
  Shader& operator=(const Shader&) = delete;
  ~Shader();

  uint32_t name() const { return name_; }
  bool linked() const { return linked_; }
  const std::vector<ShaderVariable>& attributes() const { return attributes_; }
  const std::vector<ShaderVariable>& uniforms() const { return uniforms_; }

  // The location of an active variable of exactly that name, or of an array of it; else -1.
  int32_t AttributeLocation(std::string_view name) const;
  int32_t UniformLocation(std::string_view name) const;

  // Setters for the program in use: a name that the program lacks makes no GL call. Floats: 2, 3, 4
  // for vectors; 4, 9, 16 for matrices, column by column.
  void SetInt(std::string_view name, int32_t value) const;
  void SetFloat(std::string_view name, float value) const;
  // Set the first `count` elements of an array, or as many as it has; count is 1 at least.
  void SetFloats(std::string_view name, const float* values, int32_t count) const;
  void SetVec4s(std::string_view name, const float* values, int32_t count) const;
  void SetByte(std::string_view name, uint8_t value) const;
  void SetVec2(std::string_view name, const float* value) const;
  void SetVec3(std::string_view name, const float* value) const;
  void SetVec4(std::string_view name, const float* value) const;
  void SetMat2(std::string_view name, const float* value) const;
  void SetMat3(std::string_view name, const float* value) const;
  void SetMat4(std::string_view name, const float* value) const;

  // Sets one uniform of a draw by its type. An entry without a name, without data, with data too
  // short for its type or of a type that is not set is ignored. Floats and 4-vectors with data for
  // several values set as many elements of an array.
  void SetUniform(const UniformValue& uniform) const;

 private:
  Shader() = default;
  bool SetArray(const UniformValue& uniform, size_t values) const;
  void ReadVariables();

  uint32_t name_ = 0;
  uint64_t owner_ = 0;  // the context it lives in, as the pool counts contexts
  bool linked_ = false;
  std::vector<ShaderVariable> uniforms_;
  std::vector<ShaderVariable> attributes_;
};

}  // namespace krv::GL
