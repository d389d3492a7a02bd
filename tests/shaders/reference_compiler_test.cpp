// What the reference compiler says about the built-in shaders.
#include <gtest/gtest.h>

#include <string>

#include "shaders/dialects.h"
#include "support/process.h"
#include "support/scratch_folder.h"

namespace krv {
namespace {

class ReferenceCompiler : public ::testing::TestWithParam<ShaderInDialect> {};

TEST_P(ReferenceCompiler, CompilesEveryShaderWithoutAMessage) {
  const auto& [shader, dialect] = GetParam();
  // The uniform `round` hides a function of GLSL ES 3.00. Drivers allow that; this compiler does
  // not, and checks the rest with the uniform renamed.
  const bool hides = dialect.language == Language::kEs300;
  const std::string source =
      Translated(shader.Source(), dialect, {hides ? "round rounding" : "UNUSED"});
  const test::ScratchFolder folder;
  const auto file = folder.Write("shader.frag", source);
  const test::ProgramOutcome outcome =
      test::RunProgram(KRV_GLSL_VALIDATOR, "-S frag \"" + file.string() + "\"");
  EXPECT_EQ(outcome.code, 0) << outcome.output;
  // The first line is the file's name. The compiler never knows the extension.
  ExpectOnlyExtensionNotices(outcome.output.substr(outcome.output.find('\n') + 1), 1);
}

INSTANTIATE_TEST_SUITE_P(EveryDialect, ReferenceCompiler,
                         ::testing::Combine(::testing::ValuesIn(kCarriedShaders),
                                            ::testing::ValuesIn(kDialects)),
                         NameOfDialect);

}  // namespace
}  // namespace krv
