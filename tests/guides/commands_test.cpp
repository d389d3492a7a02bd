// The commands of the guides, run in order as a reader runs them, in a folder with the files that
// the guide shows. What a guide says that a command prints is what it prints.
#include <gmock/gmock.h>

#include "guides/guide_text.h"
#include "support/file_system.h"
#include "support/process.h"
#include "support/scratch_folder.h"

namespace krv::test {
namespace {

class GuideCommands : public ::testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    Make("clip.mp4",
         "-f lavfi -i testsrc2=s=160x90:r=25:d=1 "
         "-f lavfi -i anoisesrc=c=pink:seed=1:a=0.5:r=48000:d=1 -pix_fmt yuv420p -c:a aac");
    Make("matte.png", "-f lavfi -i color=white:s=60x60,pad=160:90:50:30 -frames:v 1");
  }

  void Make(const std::string& file, const std::string& arguments) {
    const ProgramOutcome outcome = RunProgram(
        KRV_FFMPEG, "-v error " + arguments + " \"" + folder_.text() + "/" + file + "\"");
    ASSERT_EQ(outcome.code, 0) << outcome.error_output;
  }

  // Both outputs in one.
  ProgramOutcome RunShell(const std::string& commands) {
    const auto script = scripts_.Write("commands.sh", "exec 2>&1\ncd '" + folder_.text() +
                                                          "'\nexport KRV_BUILD='" KRV_BUILD_FOLDER
                                                          "'\nexport PATH=\"$KRV_BUILD:$PATH\"\n" +
                                                          commands);
    return RunProgram("sh", "-e \"" + script.string() + "\"");
  }

  ScratchFolder folder_;
  ScratchFolder scripts_;
};

TEST_P(GuideCommands, DoWhatTheGuideSays) {
  const Guide guide(KRV_SOURCES "/docs/" + std::string(GetParam()) + ".md");
  const auto& blocks = guide.blocks();
  int runs = 0;
  for (size_t i = 0; i < blocks.size(); ++i) {
    if (!blocks[i].file.empty()) folder_.Write(blocks[i].file, blocks[i].text);
    if (blocks[i].language != "sh") continue;
    ++runs;
    const ProgramOutcome outcome = RunShell(blocks[i].text);
    const bool shows_output = i + 1 < blocks.size() && blocks[i + 1].language == "text";
    if (shows_output) {
      EXPECT_EQ(outcome.output, blocks[i + 1].text) << PlaceIn(guide, blocks[i].line);
    } else {
      EXPECT_EQ(outcome.code, 0) << PlaceIn(guide, blocks[i].line) << "\n" << outcome.output;
    }
  }
  EXPECT_GT(runs, 0);
}

INSTANTIATE_TEST_SUITE_P(Guides, GuideCommands,
                         ::testing::Values("package-authors", "shaders", "debugging", "keyframes",
                                           "host-makers"),
                         [](const auto& guide) {
                           std::string name = guide.param;
                           std::erase(name, '-');
                           return name;
                         });

// Commands in a guide that the list above leaves out would never be run.
TEST(GuideCommandsList, HoldsEveryGuideWithCommands) {
  int guides = 0;
  for (const Guide& guide : AllGuides()) {
    for (const GuideBlock& block : guide.blocks()) {
      if (block.language != "sh") continue;
      ++guides;
      break;
    }
  }
  EXPECT_EQ(guides, 5);
}

}  // namespace
}  // namespace krv::test
