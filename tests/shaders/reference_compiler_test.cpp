// What the reference compiler says about the built-in shaders.
#include <gtest/gtest.h>

#include <string>

#include "shaders/builtin_shaders.h"
#include "shaders/dialects.h"
#include "support/process.h"
#include "support/scratch_folder.h"

namespace krv {
namespace {

class ReferenceCompiler : public ::testing::TestWithParam<Dialect> {
 protected:
  // It never knows the extension.
  static void ExpectSilentCompile(std::string_view source) {
    const test::ScratchFolder folder;
    const auto file = folder.Write("shader.frag", Translated(source, GetParam()));
    const test::ProgramOutcome outcome =
        test::RunProgram(KRV_GLSL_VALIDATOR, "-S frag \"" + file.string() + "\"");
    EXPECT_EQ(outcome.code, 0) << outcome.output;
    // The first line is the file's name.
    ExpectOnlyExtensionNotices(outcome.output.substr(outcome.output.find('\n') + 1), 1);
  }
};

TEST_P(ReferenceCompiler, CompilesTheFlatGeometryShaderWithoutAMessage) {
  ExpectSilentCompile(*FindBuiltinShader("audio_visualization_geometry.frag"));
}

TEST_P(ReferenceCompiler, CompilesTheBlendShaderWithoutAMessage) {
  ExpectSilentCompile(DefaultBlendShader());
}

INSTANTIATE_TEST_SUITE_P(EveryDialect, ReferenceCompiler, ::testing::ValuesIn(kDialects),
                         NameOfDialect);

}  // namespace
}  // namespace krv
