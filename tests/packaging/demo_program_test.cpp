// `krv demo`, as a new user runs it.
#include <chrono>
#include <thread>

#include "host/media_probe.h"
#include "media/video_reader.h"
#include "packaging/packaging_fixture.h"

namespace krv::host {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class DemoProgram : public PackagingTest {};

constexpr int64_t kFrames = 360;  // 12 s at 30 frames per second

TEST_F(DemoProgram, RendersAClipOfItsOwnAndNamesTheResult) {
  // An effect that costs next to nothing; the clip is what takes the time.
  WritePackage("red", "fx.red", "#version 120\nvoid main() { gl_FragColor = vec4(1, 0, 0, 0.9); }");
  const test::ProgramOutcome outcome =
      Run("demo -o " + Argument("movie.mp4") + " --clip " + Argument("clip.mp4") +
          " --effect fx.red --packages " + Argument("red"));
  ASSERT_EQ(outcome.code, 0) << outcome.error_output;
  EXPECT_THAT(outcome.output, StartsWith("Open "));
  EXPECT_THAT(outcome.output, HasSubstr("movie.mp4"));
  for (const char* file : {"movie.mp4", "clip.mp4"}) {
    EXPECT_EQ(ProbeStream(Path(file), StreamKind::kVideo).frames, kFrames) << file;
    EXPECT_EQ(ProbeStream(Path(file), StreamKind::kVideo).width, 1280) << file;
  }
  EXPECT_EQ(AudioBytes(Path("movie.mp4")), AudioBytes(Path("clip.mp4")));
}

TEST_F(DemoProgram, AWrongWishIsRefusedBeforeTheClipIsMade) {
  ExpectRefused("demo -o " + Argument("no/folder.mp4"), "there is no folder");
  ExpectRefused("demo -o " + Argument("movie.mp4") + " --clip " + Argument("clip.mp4") +
                    " --effect audio_visualization_barz",
                "audio_visualization_bars");
  ExpectRefused("demo -o " + Argument("movie.mp4") + " --clip " + Argument("a/../movie.mp4"),
                "is the output, too");
  for (const char* file : {"clip.mp4", "movie.mp4"}) {
    EXPECT_FALSE(std::filesystem::exists(Path(file))) << file;
  }
}

TEST_F(DemoProgram, AClipTakesNoOtherFilesPlace) {
  WriteFile(Path("mine.mp4"), "mine");
  ExpectRefused("demo -o " + Argument("movie.mp4") + " --clip " + Argument("mine.mp4"),
                "mine.mp4: exists already");
  EXPECT_EQ(ReadFile(Path("mine.mp4")), "mine");
}

TEST_F(DemoProgram, AnInterruptLeavesNothing) {
  std::filesystem::create_directory(Path("temporary"));
  const std::string temporary = Utf8(Path("temporary"));
  test::Process program(KRV_PROGRAM,
                        "demo -o " + Argument("movie.mp4") + " --clip " + Argument("clip.mp4"),
                        test::Interruptible::kYes, {{"TMPDIR", temporary}, {"TMP", temporary}});
  for (int i = 0; i < 6000 && !std::filesystem::exists(Path(".clip.part.mp4")); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  program.Interrupt();
  const test::ProgramOutcome outcome = program.Wait();
  EXPECT_EQ(outcome.code, 130) << outcome.error_output;
  EXPECT_THAT(outcome.error_output, EndsWith("krv: interrupted; nothing is written\n"));
  EXPECT_TRUE(std::filesystem::is_empty(Path("temporary")));
  for (const char* file : {"movie.mp4", "clip.mp4", ".clip.part.mp4"}) {
    EXPECT_FALSE(std::filesystem::exists(Path(file))) << file;
  }
}

}  // namespace
}  // namespace krv::host
