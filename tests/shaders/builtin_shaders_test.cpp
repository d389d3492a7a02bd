#include "shaders/builtin_shaders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "shaders/dialects.h"
#include "shaders/shader_canvas.h"

namespace krv {
namespace {

using ::testing::StartsWith;

constexpr std::string_view kFlat = "audio_visualization_geometry.frag";

TEST(BuiltinShaders, FlatGeometryShaderBeginsWithItsVersionLine) {
  const auto source = FindBuiltinShader(kFlat);
  ASSERT_TRUE(source.has_value());
  EXPECT_THAT(*source, StartsWith("#version 120\n"));
}

TEST(BuiltinShaders, LookupAnswersTheSameTextEveryTime) {
  EXPECT_EQ(FindBuiltinShader(kFlat)->data(), FindBuiltinShader(kFlat)->data());
}

TEST(BuiltinShaders, UnknownNameFindsNothing) {
  EXPECT_FALSE(FindBuiltinShader("no_such.frag").has_value());
  EXPECT_FALSE(FindBuiltinShader("").has_value());
}

TEST(BuiltinShaders, OnlyTheExactFileNameFindsAShader) {
  EXPECT_FALSE(FindBuiltinShader("Audio_visualization_geometry.frag").has_value());
  EXPECT_FALSE(FindBuiltinShader("shaders/audio_visualization_geometry.frag").has_value());
  EXPECT_FALSE(FindBuiltinShader("audio_visualization_geometry").has_value());
}

TEST(BuiltinShaders, BlendShaderIsNoCatalogueEntry) {
  EXPECT_THAT(DefaultBlendShader(), StartsWith("#version 120\n"));
  EXPECT_FALSE(FindBuiltinShader("blend.frag").has_value());
}

class Driver : public ::testing::TestWithParam<Dialect> {
 protected:
  // It knows the extension in desktop GLSL alone.
  static void ExpectSilentCompile(std::string_view source) {
    const auto context = test::MakeSoftwareContext();
    ASSERT_NE(context, nullptr);
    const test::ShaderProgram program(Translated(source, GetParam()));
    EXPECT_TRUE(program.ok());
    ExpectOnlyExtensionNotices(program.log(), GetParam().driver_knows_extension ? 0 : 1);
  }
};

TEST_P(Driver, CompilesTheFlatGeometryShaderWithoutAMessage) {
  ExpectSilentCompile(*FindBuiltinShader(kFlat));
}

TEST_P(Driver, CompilesTheBlendShaderWithoutAMessage) { ExpectSilentCompile(DefaultBlendShader()); }

INSTANTIATE_TEST_SUITE_P(EveryDialect, Driver, ::testing::ValuesIn(kDialects), NameOfDialect);

}  // namespace
}  // namespace krv
