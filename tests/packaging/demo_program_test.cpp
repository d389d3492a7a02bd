// `krv demo`, as a new user runs it.
#include "packaging/packaging_fixture.h"

#include "host/media_probe.h"
#include "media/video_reader.h"

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

TEST_F(DemoProgram, AWrongWishIsRefused) {
  ExpectRefused("demo -o " + Argument("no/folder.mp4"), "there is no folder");
  ExpectRefused("demo -o " + Argument("movie.mp4") + " --effect audio_visualization_barz",
                "audio_visualization_bars");
}

}  // namespace
}  // namespace krv::host
