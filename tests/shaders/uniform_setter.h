// Takes a figure's uniforms, whatever form of the shader draws it.
#pragma once

namespace krv::test {

class UniformSetter {
 public:
  virtual ~UniformSetter() = default;

  // Set a uniform by name; names that the shader does not use are ignored.
  virtual void Set(const char* name, int value) const = 0;
  virtual void Set(const char* name, float value) const = 0;
  virtual void Set(const char* name, float x, float y) const = 0;
  void Set(const char* name, bool value) const { Set(name, static_cast<int>(value)); }
};

}  // namespace krv::test
