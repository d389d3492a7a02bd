// `krv render --mask`: a matte in the place of the host's person mask.
#include <gmock/gmock.h>

#include <fstream>

#include "ai_filter/drawn_person.h"
#include "host/render_program.h"

namespace krv::host {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

// Shows the mask itself.
constexpr char kMaskShader[] =
    "#version 120\nuniform sampler2D mask_tex;\nuniform vec2 iResolution;\n"
    "void main() { gl_FragColor = texture2D(mask_tex, gl_FragCoord.xy / iResolution); }\n";

class RenderMask : public RenderProgramTest {
 protected:
  void SetUp() override {
    RenderProgramTest::SetUp();
    WritePackage("person", "fx.person", kMaskShader,
                 R"("input_list": ["human_segment"], "original": true, "params": [])");
    WritePackage("other", "fx.other", kMaskShader);
    person_ = " --effect fx.person --packages \"" + Path("person").string() + "\" ";
    media_.Make("clip.mp4", "-f lavfi -i color=blue:s=64x48:r=30:d=0.5 " +
                                RampSamples(48000, "stereo", 0.5) + "-c:a aac ");
    // Frame n is grey of level 40 + 10 n, at a rate that is not the clip's.
    media_.Make("matte.mkv",
                "-f lavfi -i color=black:s=32x24:r=10:d=1,format=gray,geq=lum=40+10*N -c:v ffv1 ");
  }

  std::string person_;
};

TEST_F(RenderMask, FrameNOfTheMatteBelongsToFrameNOfTheVideo) {
  for (const char* device : {"memory", "gpu"}) {
    RenderWell("@clip.mp4 --mask @matte.mkv --frames 2:5 --device " + std::string(device) +
               " -o @" + device + "/" + person_);
    const auto pictures = ReadPictures(device);
    ASSERT_EQ(pictures.size(), 3U);
    for (const auto& [frame, picture] : pictures) {
      EXPECT_NEAR(picture.Pixel(32, 24)[1], 40 + 10 * frame, 2) << device << " " << frame;
    }
  }
}

TEST_F(RenderMask, APictureIsTheMaskOfEveryFrame) {
  media_.Make("matte.png", "-f lavfi -i color=white:s=32x24 -frames:v 1 ");
  RenderWell("@clip.mp4 --mask @matte.png --frames 0:3 -o @out/" + person_);
  for (const auto& [frame, picture] : ReadPictures("out")) {
    EXPECT_EQ(picture.Pixel(32, 24)[1], 255) << frame;
  }
}

TEST_F(RenderMask, FramesWithoutAPersonAreShownAsTheyCame) {
  media_.Make("late.mkv",
              "-f lavfi -i color=black:s=32x24:r=10:d=1,format=gray,geq=lum='if(lt(N,2),0,200)' "
              "-c:v ffv1 ");
  const test::ProgramOutcome outcome =
      Render("@clip.mp4 --mask @late.mkv --frames 0:4 -o @out/" + person_);
  EXPECT_EQ(outcome.code, 0) << outcome.error_output;
  EXPECT_THAT(outcome.error_output, HasSubstr("2 of them without a person, shown as they came"));
  const auto pictures = ReadPictures("out");
  ASSERT_EQ(pictures.size(), 4U);
  for (const auto& [frame, picture] : pictures) {
    const uint8_t* pixel = picture.Pixel(32, 24);
    EXPECT_NEAR(pixel[0], frame < 2 ? 255 : 200, 3) << frame;  // the clip is blue
    EXPECT_NEAR(pixel[1], frame < 2 ? 0 : 200, 3) << frame;
  }
}

TEST_F(RenderMask, AnEmptyMatteFindsNobodyAndFails) {
  media_.Make("black.png", "-f lavfi -i color=black:s=32x24 -frames:v 1 ");
  const test::ProgramOutcome outcome = Render("@clip.mp4 --mask @black.png -o @out.mp4" + person_);
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.error_output,
              HasSubstr("nobody to follow was found in any of the 15 frames"));
}

TEST_F(RenderMask, WithoutOneTheFilterFindsThePerson) {
  cv::Mat picture = test::EmptyRoom();
  test::DrawPerson(picture, {140, 150}, 120);
  std::ofstream pixels(Path("room.bgra"), std::ios::binary);
  for (int frame = 0; frame < 3; ++frame) {
    pixels.write(reinterpret_cast<const char*>(picture.data),
                 static_cast<std::streamsize>(picture.total() * picture.elemSize()));
  }
  pixels.close();
  media_.Make("room.mkv", "-f rawvideo -pixel_format bgra -video_size 284x160 -framerate 30 -i \"" +
                              Path("room.bgra").string() + "\" " +
                              RampSamples(48000, "stereo", 0.1) + "-c:v ffv1 ");
  RenderWell("@room.mkv -o @out/" + person_);
  const auto pictures = ReadPictures("out");
  ASSERT_EQ(pictures.size(), 3U);
  for (const auto& [frame, mask] : pictures) {
    EXPECT_EQ(mask.Pixel(140, 70)[1], 255) << frame;  // the trunk
    EXPECT_EQ(mask.Pixel(60, 70)[1], 0) << frame;
  }
}

TEST_F(RenderMask, WhatCannotBeAMaskIsOneLineAndCode2) {
  const std::string other = " --effect fx.other --packages \"" + Path("other").string() + "\" ";
  const std::pair<std::string, const char*> cases[] = {
      {"--mask @missing.mkv -o @out.mp4" + person_, "missing.mkv: No such file or directory"},
      {"--mask @matte.mkv -o @matte.mkv" + person_, "matte.mkv: is an input, too"},
      {"--mask @matte.mkv -o @out.mp4" + other, "--mask: effect \"fx.other\" follows nobody"},
  };
  const auto before = media_.Files();
  for (const auto& [arguments, reason] : cases) {
    const test::ProgramOutcome outcome = Render("@clip.mp4 " + arguments);
    EXPECT_EQ(outcome.code, 2) << arguments;
    EXPECT_THAT(outcome.error_output, StartsWith("krv: ")) << arguments;
    EXPECT_THAT(outcome.error_output, HasSubstr(reason)) << arguments;
    EXPECT_EQ(media_.Files(), before) << arguments;
  }
}

}  // namespace
}  // namespace krv::host
