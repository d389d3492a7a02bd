#include "shaders/builtin_shaders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "shaders/shader_canvas.h"

namespace krv {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
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
  bool driver_knows_extension = true;
};

void PrintTo(const Dialect& dialect, std::ostream* out) { *out << dialect.name; }

class EveryDialect : public ::testing::TestWithParam<Dialect> {
 protected:
  static std::string Translated(std::string_view source) {
    return GetParam().head + std::string(source.substr(source.find('\n') + 1));
  }

  // The driver and the reference compiler must have nothing to say, except that they do not know
  // the extension: the reference compiler never does, the driver only knows it in desktop GLSL.
  static void ExpectSilentCompile(std::string_view source) {
    const auto context = test::MakeSoftwareContext();
    ASSERT_NE(context, nullptr);
    const test::ShaderProgram program(Translated(source));
    EXPECT_TRUE(program.ok());
    std::istringstream driver_log(program.log());
    ExpectOnlyExtensionNotices(driver_log, GetParam().driver_knows_extension ? 0 : 1);

    std::string test = ::testing::UnitTest::GetInstance()->current_test_info()->name();
    std::replace(test.begin(), test.end(), '/', '_');
    const std::string path = ::testing::TempDir() + "krv_" + test + ".frag";
    std::ofstream(path) << Translated(source);
    const std::string command = KRV_GLSL_VALIDATOR " -S frag " + path + " > " + path + ".log";
    EXPECT_EQ(std::system(command.c_str()), 0);
    std::ifstream validator_log(path + ".log");
    std::string heading;
    std::getline(validator_log, heading);
    ExpectOnlyExtensionNotices(validator_log, 1);
  }

  static void ExpectOnlyExtensionNotices(std::istream& log, int allowed) {
    int notices = 0;
    for (std::string line; std::getline(log, line);) {
      if (line.empty()) continue;
      EXPECT_THAT(line, AllOf(HasSubstr("GL_EXT_gpu_shader4"), HasSubstr("supported")));
      ++notices;
    }
    EXPECT_LE(notices, allowed);
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
                      Dialect{"GlslEs100", "#version 100\n", false},
                      Dialect{"GlslEs300", "#version 300 es\n"},
                      Dialect{"GlslEs300Angle", "#version 300 es\n#define GOOGLE_ANGLE\n"}),
    [](const auto& dialect) { return dialect.param.name; });

}  // namespace
}  // namespace krv
