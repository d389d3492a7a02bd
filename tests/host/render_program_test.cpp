#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <nlohmann/json.hpp>
#include <string>
#include <thread>

#include "host/media_probe.h"
#include "host/render_program.h"
#include "media/audio_reader.h"
#include "media/still_source.h"
#include "media/video_reader.h"
#include "support/file_system.h"
#include "utf8_path.h"

namespace krv::host {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

// A figure of one colour, half transparent, over the whole picture.
constexpr char kFigure[] =
    "#version 120\nvoid main() {\n  gl_FragColor = vec4(1.0, 0.2, 0.0, 0.5);\n}\n";

class RenderProgram : public RenderProgramTest {
 protected:
  void SetUp() override {
    RenderProgramTest::SetUp();
    WritePackage("figure", "fx.figure", kFigure, R"("params": [
      {"name": "level", "type": 5, "min_value": 0, "max_value": 2, "default_value": 1}])");
    figure_ = " --effect fx.figure --packages \"" + Path("figure").string() + "\" ";
    media_.Make("clip.mp4", "-f lavfi -i color=blue:s=64x48:r=30:d=1 " +
                                RampSamples(48000, "stereo", 1) + "-c:a aac ");
    media_.Make("sound.wav", RampSamples(44100, "stereo", 0.5));
  }

  // Whether something is written into a file within a minute.
  static bool WaitForFile(const std::filesystem::path& file) {
    constexpr std::chrono::milliseconds kPause(50);
    for (int i = 0; i < 1200; ++i) {
      std::error_code not_there;
      const auto size = std::filesystem::file_size(file, not_there);
      if (!not_there && size > 0) return true;
      std::this_thread::sleep_for(kPause);
    }
    return false;
  }

  std::string figure_;
};

const std::string kBars = " --effect audio_visualization_bars --packages \"" KRV_PACKAGES "\" ";

TEST_F(RenderProgram, AVideoKeepsItsFramesAndItsSound) {
  RenderWell("@clip.mp4 -o @out.mp4" + figure_);
  const StreamFacts video = ProbeStream(media_.folder() / "out.mp4", StreamKind::kVideo);
  EXPECT_EQ(video.codec, "h264");
  EXPECT_EQ(video.frames, 30);
  EXPECT_EQ(video.width, 64);
  EXPECT_EQ(AudioBytes(media_.folder() / "out.mp4"), AudioBytes(media_.folder() / "clip.mp4"));
  EXPECT_THAT(media_.Files(), ElementsAre("clip.mp4", "out.mp4", "sound.wav"));
}

TEST_F(RenderProgram, FilesMayLieInFoldersOfAnyNameAndDepth) {
  const auto folder = media_.folder() / test::AwkwardFolder();
  const std::string name = Utf8(test::AwkwardFolder());
  WriteFile(folder / test::Utf8Path("ö 1.mp4"), ReadFile(media_.folder() / "clip.mp4"));
  WritePackage(name, "fx.deep", kFigure);
  RenderWell("\"@" + name + "/ö 1.mp4\" -o \"@" + name + "/音 2.mp4\" --report \"@" + name +
             "/r.json\" --effect fx.deep --packages \"" + Utf8(Path(name)) + "\"");
  const auto output = folder / test::Utf8Path("音 2.mp4");
  EXPECT_EQ(ProbeStream(output, StreamKind::kVideo).frames, 30);
  RenderWell("\"@" + name + "/音 2.mp4\" -o \"@" + name + "/frames/\" --frames 0:2 " + figure_);
  EXPECT_EQ(LoadPicture(folder / "frames" / "frame_000001.png", {}).width(), 64);
}

TEST_F(RenderProgram, TheFigureIsLaidOverTheVideo) {
  RenderWell("@clip.mp4 --frames 0:1 -o @out/" + figure_);
  const Picture picture = LoadPicture(media_.folder() / "out" / "frame_000000.png", {});
  const uint8_t* pixel = picture.Pixel(32, 24);  // half figure, half blue
  EXPECT_NEAR(pixel[0], 127, 4);
  EXPECT_NEAR(pixel[1], 26, 4);
  EXPECT_NEAR(pixel[2], 128, 4);
}

TEST_F(RenderProgram, SoundAloneGetsABackground) {
  RenderWell("@sound.wav --background #204060 --size 80x60 --fps 25 -o @out.mp4" + figure_);
  const StreamFacts video = ProbeStream(media_.folder() / "out.mp4", StreamKind::kVideo);
  EXPECT_EQ(video.frames, 13);  // half a second takes 12.5 frames
  EXPECT_EQ(video.width, 80);
  EXPECT_EQ(video.height, 60);
  VideoReader reader(media_.folder() / "out.mp4");
  Picture picture;
  ASSERT_TRUE(reader.Read(&picture));
  EXPECT_NEAR(picture.Pixel(40, 30)[0], 0x30, 4);  // half of the figure's 0 and 0x60
}

TEST_F(RenderProgram, APictureCanBeTheBackground) {
  media_.Make("back.png", "-f lavfi -i color=lime:s=70x50 -frames:v 1 ");
  RenderWell("@sound.wav --background @back.png --frames 0:1 -o @out/" + figure_);
  const Picture picture = LoadPicture(media_.folder() / "out" / "frame_000000.png", {});
  EXPECT_EQ(picture.width(), 70);
  EXPECT_EQ(picture.height(), 50);
  EXPECT_NEAR(picture.Pixel(35, 25)[1], 153, 4);  // half of 51 and 255
}

TEST_F(RenderProgram, SoundAloneReplacesTheVideosOwn) {
  media_.Make("music.m4a", ClickSamples(44100, "mono", 2, 30000) + "-c:a aac ");
  RenderWell("@clip.mp4 @music.m4a -o @out.mp4" + figure_);
  const StreamFacts audio = ProbeStream(media_.folder() / "out.mp4", StreamKind::kAudio);
  EXPECT_EQ(audio.channels, 1);
  EXPECT_EQ(audio.sample_rate, 44100);
  AudioReader reader(media_.folder() / "out.mp4");
  std::vector<int16_t> samples;
  reader.Read(0, 44100, &samples);
  EXPECT_EQ(LoudestSample(samples, 1), 30000);
}

TEST_F(RenderProgram, TransparentOutputsHoldTheFigureAloneWithStraightAlpha) {
  RenderWell("@clip.mp4 --transparent --frames 0:3 -o @out/" + figure_);
  const Picture png = LoadPicture(media_.folder() / "out" / "frame_000001.png", {});
  const uint8_t* exact = png.Pixel(32, 24);
  EXPECT_EQ(exact[0], 0);
  EXPECT_EQ(exact[1], 51);
  EXPECT_EQ(exact[2], 255);
  EXPECT_NEAR(exact[3], 128, 1);
  for (const char* name : {"out.webm", "out.mov"}) {
    RenderWell(std::string("@clip.mp4 --transparent --frames 0:3 -o @") + name + figure_);
    VideoReader reader(media_.folder() / name);
    Picture picture;
    ASSERT_TRUE(reader.Read(&picture)) << name;
    const uint8_t* pixel = picture.Pixel(32, 24);
    EXPECT_NEAR(pixel[1], 51, 8) << name;
    EXPECT_NEAR(pixel[2], 255, 8) << name;
    EXPECT_NEAR(pixel[3], 128, 3) << name;
    EXPECT_EQ(ProbeStream(media_.folder() / name, StreamKind::kAudio).channels, 2) << name;
  }
}

TEST_F(RenderProgram, ARangeGivesTheFramesOfTheWhole) {
  media_.Make("test.mp4", "-f lavfi -i testsrc=s=64x48:r=30000/1001:d=8 " +
                              RampSamples(44100, "stereo", 8) + "-c:v libx264 -bf 2 -c:a aac ");
  RenderWell("@test.mp4 -o @whole/" + kBars);
  RenderWell("@test.mp4 --frames 200:205 -o @range/" + kBars);
  const auto whole = ReadPictures("whole");
  const auto range = ReadPictures("range");
  ASSERT_EQ(range.size(), 5u);
  for (const auto& [frame, picture] : range) {
    EXPECT_TRUE(SamePicture(picture, whole.at(frame))) << frame;
  }
}

TEST_F(RenderProgram, SoundOfARangeIsCutToTheSample) {
  media_.Make("click.mov", "-f lavfi -i color=s=64x48:r=30:d=2 " +
                               ClickSamples(48000, "stereo", 2, 50123) + "-c:a pcm_s16le ");
  RenderWell("@click.mov --frames 15:45 -o @out.mp4" + figure_);
  AudioReader reader(media_.folder() / "out.mp4");
  std::vector<int16_t> samples;
  EXPECT_EQ(reader.ExpectedSamples(), 48000);
  reader.Read(0, 48000, &samples);
  EXPECT_EQ(LoudestSample(samples, 2), 50123 - 15 * 1600);
}

// Frames in memory and on the GPU are blended in different places.
TEST_F(RenderProgram, BothFormsOfFramesGiveTheSamePictureToOneStep) {
  media_.Make("test.mov", "-f lavfi -i testsrc=s=96x64:r=10:d=0.3 " +
                              RampSamples(48000, "stereo", 0.3) + "-c:a pcm_s16le ");
  RenderWell("@test.mov --device memory -o @memory/" + kBars);
  RenderWell("@test.mov --device gpu -o @gpu/" + kBars);
  const auto memory = ReadPictures("memory");
  const auto gpu = ReadPictures("gpu");
  ASSERT_EQ(memory.size(), 3u);
  for (const auto& [frame, picture] : memory) {
    EXPECT_LE(LargestDifference(picture, gpu.at(frame)), 1) << frame;
  }
}

TEST_F(RenderProgram, TheReportSaysHowLongEachStageTook) {
  RenderWell("@clip.mp4 --frames 3:13 -o @out.mp4 --report @report.json" + figure_);
  const auto report = nlohmann::json::parse(ReadFile(media_.folder() / "report.json"));
  EXPECT_EQ(report["frames"], 10);
  EXPECT_EQ(report["first_frame"], 3);
  EXPECT_EQ(report["interrupted"], false);
  EXPECT_EQ(report["video"]["width"], 64);
  EXPECT_EQ(report["audio"]["sample_rate"], 48000);
  EXPECT_THAT(report["gl_renderer"].get<std::string>(), HasSubstr("OpenGL"));
  // They overlap, but none is longer than the whole.
  for (const auto& [name, seconds] : report["stage_seconds"].items()) {
    EXPECT_GT(seconds.get<double>(), 0) << name;
    EXPECT_LE(seconds.get<double>(), report["seconds"].get<double>() * 1.001) << name;
  }
  EXPECT_NEAR(report["fps"].get<double>() * report["seconds"].get<double>(), 10, 0.01);
}

TEST_F(RenderProgram, RawFramesAreThePixelsOfThePictures) {
  media_.Make("test.mp4", "-f lavfi -i testsrc=s=70x48:r=30:d=0.2 " +
                              RampSamples(48000, "stereo", 0.2) + "-c:v libx264 -c:a aac ");
  RenderWell("@test.mp4 -o @out/" + figure_);
  RenderWell("@test.mp4 -o @out.raw" + figure_);
  std::string expected;
  for (const auto& [frame, picture] : ReadPictures("out")) {
    for (int y = 0; y < picture.height(); ++y) {
      expected.append(reinterpret_cast<const char*>(picture.Row(y)), 70 * 4);
    }
  }
  EXPECT_EQ(expected.size(), 6u * 70 * 48 * 4);
  EXPECT_TRUE(ReadFile(media_.folder() / "out.raw") == expected);
  const test::ProgramOutcome outcome = Render("@test.mp4 -o -" + figure_);
  EXPECT_EQ(outcome.code, 0) << outcome.error_output;
  EXPECT_TRUE(outcome.output == expected) << outcome.output.size();
}

TEST_F(RenderProgram, AnInterruptLeavesAPlayableFile) {
  media_.Make("long.flac", "-f lavfi -i anullsrc=d=3600 -compression_level 0 ");
  test::Process program(KRV_PROGRAM, Line("@long.flac --size 64x48 -o @out.mp4" + figure_),
                        test::Interruptible::kYes);
  EXPECT_TRUE(WaitForFile(media_.folder() / ".out.part.mp4"));
  std::this_thread::sleep_for(std::chrono::milliseconds(500));
  program.Interrupt();
  const test::ProgramOutcome outcome = program.Wait();
  EXPECT_EQ(outcome.code, 130) << outcome.error_output;
  EXPECT_THAT(outcome.error_output, StartsWith("krv: interrupted after "));
  EXPECT_GT(ProbeStream(media_.folder() / "out.mp4", StreamKind::kVideo).frames, 0);
  EXPECT_THAT(media_.Files(), ElementsAre("clip.mp4", "long.flac", "out.mp4", "sound.wav"));
}

TEST_F(RenderProgram, WhatCannotBeRenderedIsOneLineAndCode2AndLeavesNoFile) {
  media_.Make("silent.mp4", "-f lavfi -i color=s=64x48:d=0.2 ");
  media_.Make("picture.png", "-f lavfi -i color=s=64x48 -frames:v 1 ");
  WriteFile(media_.folder() / "text.mp4", "not a movie");
  const auto before = media_.Files();
  const std::string out = " -o @out.mp4";
  const std::pair<std::string, const char*> cases[] = {
      {"@clip.mp4" + figure_, "--output"},
      {"-o @out.mp4" + figure_, "INPUT"},
      {"@clip.mp4 -o @out.mp4", "--effect"},
      {"@missing.mp4" + out + figure_, "missing.mp4: No such file or directory"},
      {"@text.mp4" + out + figure_, "text.mp4: "},
      {"@silent.mp4" + out + figure_, "silent.mp4: has no sound"},
      {"@picture.png" + out + figure_, "picture.png: is a picture"},
      {"@clip.mp4 @silent.mp4" + out + figure_, "silent.mp4: only one input with video"},
      {"@sound.wav @sound.wav" + out + figure_, "only one input with sound alone"},
      {"@clip.mp4" + out + " --effect fx.figur --packages " + Path("figure").string(),
       "did you mean \"fx.figure\""},
      {"@clip.mp4" + out + figure_ + "--param levle=1", "levle"},
      {"@clip.mp4" + out + figure_ + "--param level=3", "level"},
      {"@clip.mp4" + out + figure_ + "--param level=x", "level"},
      {"@clip.mp4" + out + figure_ + "--param level", "level"},
      {"@clip.mp4 -o @out.avi" + figure_, "out.avi: unknown kind of output"},
      {"@clip.mp4 -o @out.png" + figure_, "out.png: the name of a PNG sequence"},
      {"@clip.mp4 --transparent" + out + figure_, ".mp4 has no transparency; use .webm"},
      {"@clip.mp4 -o @none/out.mp4" + figure_, "there is no folder"},
      {"@clip.mp4 -o @clip.mp4" + figure_, "clip.mp4: is an input, too"},
      {"@clip.mp4 --frames 5" + out + figure_, "--frames 5: give A:B"},
      {"@clip.mp4 --frames 5:5" + out + figure_, "--frames 5:5: give A:B"},
      {"@clip.mp4 --frames x:5" + out + figure_, "--frames x:5: give A:B"},
      {"@clip.mp4 --frames 100:" + out + figure_, "the input has no frame 100"},
      {"@clip.mp4 --fps 0" + out + figure_, "--fps 0: "},
      {"@clip.mp4 --fps fast" + out + figure_, "--fps fast: "},
      {"@clip.mp4 --size 10x10" + out + figure_, "--size 10x10: "},
      {"@clip.mp4 --size 64x48" + out + figure_, "--size is for sound alone"},
      {"@clip.mp4 --background #000000" + out + figure_, "--background is for sound alone"},
      {"@sound.wav --background #00" + out + figure_, "--background #00: "},
      {"@sound.wav --background @none.png" + out + figure_, "none.png: No such file"},
      {"@sound.wav --background @text.mp4" + out + figure_, "text.mp4: "},
      {"@clip.mp4 --device disk" + out + figure_, "--device disk: "},
      {"@clip.mp4 --crf 52" + out + figure_, "--crf 52: "},
      {"@clip.mp4 --crf x" + out + figure_, "--crf"},
      {"@clip.mp4 --preset quick" + out + figure_, "--preset quick: "},
      {"@clip.mp4 --report @none/r.json" + out + figure_, "there is no folder"},
      {"@clip.mp4 --report @" + out + figure_, "is a folder"},
      {"@clip.mp4 -o \"\"" + figure_, "the output has no name"},
      {"@clip.mp4 --loud" + out + figure_, "--loud"},
  };
  for (const auto& [arguments, reason] : cases) {
    const test::ProgramOutcome outcome = Render(arguments);
    EXPECT_EQ(outcome.code, 2) << arguments;
    EXPECT_THAT(outcome.error_output, StartsWith("krv: ")) << arguments;
    EXPECT_THAT(outcome.error_output, HasSubstr(reason)) << arguments;
    EXPECT_EQ(std::count(outcome.error_output.begin(), outcome.error_output.end(), '\n'), 1)
        << outcome.error_output;
    EXPECT_EQ(media_.Files(), before) << arguments;
  }
}

}  // namespace
}  // namespace krv::host
