// A fixture that holds one built-in shader, compiled once for a test suite.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string_view>

#include "shaders/builtin_shaders.h"
#include "shaders/shader_canvas.h"

namespace krv::test {

// Base is ::testing::Test or a ::testing::TestWithParam.
template <const std::string_view& kShaderName, class Base>
class BuiltinShaderTest : public Base {
 protected:
  static void SetUpTestSuite() {
    context_ = MakeSoftwareContext();
    if (context_ != nullptr) program_ = std::make_unique<ShaderProgram>(Source());
  }

  static void TearDownTestSuite() {
    program_.reset();
    context_.reset();
  }

  void SetUp() override {
    ASSERT_NE(program_, nullptr);
    ASSERT_TRUE(program_->ok()) << program_->log();
  }

  static std::string Source() { return std::string(*FindBuiltinShader(kShaderName)); }

  static const ShaderProgram& program() { return *program_; }

 private:
  static inline std::unique_ptr<host::GlContext> context_;
  static inline std::unique_ptr<ShaderProgram> program_;
};

inline constexpr std::string_view kFlatShader = "audio_visualization_geometry.frag";
inline constexpr std::string_view kHaloGeometryShader = "audio_visualization_halo_geometry.frag";
inline constexpr std::string_view kHaloSpectrumShader = "audio_visualization_halo_spectrum.frag";

template <class Base>
using FlatShaderTest = BuiltinShaderTest<kFlatShader, Base>;
template <class Base>
using HaloGeometryShaderTest = BuiltinShaderTest<kHaloGeometryShader, Base>;
template <class Base>
using HaloSpectrumShaderTest = BuiltinShaderTest<kHaloSpectrumShader, Base>;

}  // namespace krv::test
