// Programs without a current OpenGL context: no program object can be had.
#include "effects/program_builder.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "effects/logging_host.h"
#include "support/scratch_folder.h"

namespace krv {
namespace {

class ProgramBuilder : public testing::Test {
 protected:
  // The only log line of a build that has to fail.
  host::LogLine LineOfFailedBuild(nlohmann::json description) {
    description["effect_type"] = "audio_visualization";
    const auto path = folder_.Write("description.json", description.dump());
    EffectDescription loaded;
    EXPECT_EQ(loaded.LoadDescription(path.string()), kOk);
    EffectPrograms programs;
    EXPECT_FALSE(BuildPrograms(loaded, programs));
    const auto log = host_.TakeLog();
    EXPECT_EQ(log.size(), 1u);
    return log.empty() ? host::LogLine{} : log.front();
  }

  test::LoggingHost host_;
  test::ScratchFolder folder_;
};

TEST_F(ProgramBuilder, BlendProgramThatCannotBeHadIsLoggedWithItsFile) {
  folder_.Write("blend.glsl", "void main() {}");
  const host::LogLine line = LineOfFailedBuild({{"blend_script", "blend.glsl"}});
  EXPECT_EQ(line.level, kLogError);
  EXPECT_EQ(line.text,
            "<audio_visual> Create blend program error : " + folder_.text() + "\\blend.glsl");
}

TEST_F(ProgramBuilder, DefaultBlendProgramThatCannotBeHadIsLogged) {
  EXPECT_EQ(LineOfFailedBuild({}).text, "<audio_visual> Create blend program error : default");
  EXPECT_EQ(LineOfFailedBuild({{"blend_script", ""}}).text,
            "<audio_visual> Create blend program error : default");
}

}  // namespace
}  // namespace krv
