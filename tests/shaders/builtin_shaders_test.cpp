#include "shaders/builtin_shaders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "shaders/dialects.h"
#include "shaders/shader_canvas.h"

namespace krv {
namespace {

using ::testing::StartsWith;

constexpr std::string_view kFlat = "audio_visualization_geometry.frag";

TEST(BuiltinShaders, EveryFigureShaderBeginsWithItsVersionLine) {
  for (const char* name :
       {"audio_visualization_geometry.frag", "audio_visualization_halo_geometry.frag",
        "audio_visualization_halo_spectrum.frag"}) {
    const auto source = FindBuiltinShader(name);
    ASSERT_TRUE(source.has_value()) << name;
    EXPECT_THAT(*source, StartsWith("#version 120\n")) << name;
  }
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
  EXPECT_FALSE(FindBuiltinShader("audio_visualization_halo_geometry.frag ").has_value());
  EXPECT_FALSE(FindBuiltinShader("audio_visualization_halo_spectrum.vert").has_value());
}

TEST(BuiltinShaders, BlendShaderIsNoCatalogueEntry) {
  EXPECT_THAT(DefaultBlendShader(), StartsWith("#version 120\n"));
  EXPECT_FALSE(FindBuiltinShader("blend.frag").has_value());
}

class Driver : public ::testing::TestWithParam<ShaderInDialect> {};

TEST_P(Driver, CompilesEveryShaderWithoutAMessage) {
  const auto& [shader, dialect] = GetParam();
  const auto context = test::MakeSoftwareContext();
  ASSERT_NE(context, nullptr);
  const test::ShaderProgram program(Translated(shader.Source(), dialect));
  EXPECT_TRUE(program.ok());
  // It knows the extension in desktop GLSL alone.
  const bool asks = dialect.language == Language::kEs100 ||
                    (dialect.language == Language::kEs300 && shader.always_asks_for_extension);
  ExpectOnlyExtensionNotices(program.log(), asks ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(EveryDialect, Driver,
                         ::testing::Combine(::testing::ValuesIn(kCarriedShaders),
                                            ::testing::ValuesIn(kDialects)),
                         NameOfDialect);

}  // namespace
}  // namespace krv
