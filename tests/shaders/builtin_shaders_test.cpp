#include "shaders/builtin_shaders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

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

// The languages a source must compile in, each with and without the macro that exchanges red and
// blue.
struct Dialect {
  const char* name;
  const char* head;
};

void PrintTo(const Dialect& dialect, std::ostream* out) { *out << dialect.name; }

class EveryDialect : public ::testing::TestWithParam<Dialect> {
 protected:
  static std::string Translated(std::string_view source) {
    return GetParam().head + std::string(source.substr(source.find('\n') + 1));
  }

  static void ExpectSilentCompile(std::string_view source) {
    const auto context = test::MakeSoftwareContext();
    ASSERT_NE(context, nullptr);
    const test::ShaderProgram program(Translated(source));
    EXPECT_TRUE(program.ok());
    EXPECT_EQ(program.log(), "");
  }
};

TEST_P(EveryDialect, CompilesTheFlatGeometryShaderWithoutAMessage) {
  ExpectSilentCompile(*FindBuiltinShader(kFlat));
}

TEST_P(EveryDialect, CompilesTheBlendShaderWithoutAMessage) {
  ExpectSilentCompile(DefaultBlendShader());
}

INSTANTIATE_TEST_SUITE_P(
    BuiltinShaders, EveryDialect,
    ::testing::Values(Dialect{"Glsl120", "#version 120\n"},
                      Dialect{"Glsl120Angle", "#version 120\n#define GOOGLE_ANGLE\n"},
                      Dialect{"GlslEs300", "#version 300 es\n"},
                      Dialect{"GlslEs300Angle", "#version 300 es\n#define GOOGLE_ANGLE\n"}),
    [](const auto& dialect) { return dialect.param.name; });

}  // namespace
}  // namespace krv
