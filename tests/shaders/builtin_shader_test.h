// A fixture that holds one built-in shader in both its forms, made once for a test suite.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string_view>

#include "shaders/builtin_shaders.h"
#include "shaders/folded_canvas.h"
#include "shaders/shader_canvas.h"

namespace krv::test {

// Base is ::testing::Test or a ::testing::TestWithParam.
template <const std::string_view& kShaderName, class Base>
class BuiltinShaderTest : public Base {
 protected:
  static void SetUpTestSuite() {
    context_ = MakeSoftwareContext();
    if (context_ == nullptr) return;
    program_ = std::make_unique<ShaderProgram>(Source());
    folded_ = std::make_unique<FoldedCanvas>(kShaderName);
  }

  static void TearDownTestSuite() {
    folded_.reset();
    program_.reset();
    context_.reset();
  }

  void SetUp() override {
    ASSERT_NE(program_, nullptr);
    ASSERT_TRUE(program_->ok()) << program_->log();
  }

  static std::string Source() { return std::string(*FindBuiltinShader(kShaderName)); }

  static const ShaderProgram& program() { return *program_; }
  static FoldedCanvas& folded() { return *folded_; }

 private:
  static inline std::unique_ptr<host::GlContext> context_;
  static inline std::unique_ptr<ShaderProgram> program_;
  static inline std::unique_ptr<FoldedCanvas> folded_;
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
