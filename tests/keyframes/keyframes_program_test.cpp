// `krv render --params` as a user runs it: each frame against the same frame with fixed values.
#include <gmock/gmock.h>

#include <fstream>

#include "host/render_program.h"
#include "support/file_system.h"
#include "utf8_path.h"

namespace krv::host {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

constexpr char kFigure[] =
    "#version 120\n"
    "uniform float level;\n"
    "void main() { gl_FragColor = vec4(level, 0.2, 0.1, 0.9); }\n";

class KeyframesProgram : public RenderProgramTest {
 protected:
  void SetUp() override {
    RenderProgramTest::SetUp();
    WritePackage("figure", "fx.figure", kFigure, R"("params": [
      {"name": "level", "type": 5, "min_value": 0, "max_value": 1, "default_value": 0.3}])");
    figure_ = " --effect fx.figure --packages \"" + Path("figure").string() + "\" ";
    media_.Make("clip.mkv",
                "-f lavfi -i color=0x203040:s=160x90:r=10:d=1 "
                "-f lavfi -i anoisesrc=c=pink:seed=1:a=0.5:r=48000:d=1 "
                "-c:v ffv1 -c:a pcm_s16le ");
  }

  std::string Keyframes(const std::string& text) {
    const auto file = media_.folder() / "params.json";
    test::WriteFile(file, text);
    return " --params \"" + Utf8(file) + "\" ";
  }

  // The frames with `moving` at a position against that position's frame with `fixed`.
  void ExpectSame(int64_t position, const std::string& moving, const std::string& fixed) {
    const std::string name = std::to_string(position);
    RenderWell("@clip.mkv -o @moving" + name + "/ " + moving);
    RenderWell("@clip.mkv --frames " + name + ":" + std::to_string(position + 1) + " -o @fixed" +
               name + "/ " + fixed);
    const auto a = ReadPictures("moving" + name);
    const auto b = ReadPictures("fixed" + name);
    ASSERT_EQ(b.size(), 1u);
    EXPECT_EQ(a.size(), 10u);
    EXPECT_TRUE(SamePicture(a.at(position), b.at(position))) << position;
    EXPECT_FALSE(SamePicture(a.at(0), b.at(position))) << position;
  }

  std::string figure_;
};

const std::string kBars = " --effect audio_visualization_bars --packages \"" KRV_PACKAGES "\" ";

TEST_F(KeyframesProgram, EachFrameGetsTheValuesOfItsTime) {
  const std::string keys = Keyframes(R"({"level": [
    {"time": 0.2, "value": 0.5, "to": "smooth"}, {"frame": 6, "value": 0.9, "to": "hold"},
    {"time": 0.8, "value": 0.1}]})");
  ExpectSame(3, keys + figure_, "--param level=0.5625" + figure_);
  ExpectSame(4, keys + figure_, "--param level=0.7" + figure_);
  ExpectSame(7, keys + figure_, "--param level=0.9" + figure_);
  ExpectSame(8, keys + figure_, "--param level=0.1" + figure_);
}

TEST_F(KeyframesProgram, TimesCountFromTheStartOfTheWholeClip) {
  const std::string keys =
      Keyframes(R"({"level": [{"frame": 0, "value": 0}, {"frame": 10, "value": 1}]})");
  RenderWell("@clip.mkv --frames 5:6 -o @part/ " + keys + figure_);
  RenderWell("@clip.mkv --frames 5:6 -o @fixed/ --param level=0.5" + figure_);
  EXPECT_TRUE(SamePicture(ReadPictures("part").at(5), ReadPictures("fixed").at(5)));
}

TEST_F(KeyframesProgram, ColoursAndGradientsMove) {
  ExpectSame(5,
             Keyframes(R"({"single_color": 1, "color": [{"frame": 0, "value": "#FF0000"},
                           {"frame": 10, "value": "#0000FF"}]})") +
                 kBars,
             "--param single_color=1 --param color=#800080" + kBars);
  ExpectSame(5,
             Keyframes(R"({"gradient_color": [
               {"frame": 0, "value": "2,16711680,0;255,100"},
               {"frame": 10, "value": [{"color": "#00FF00", "position": 50},
                                       {"color": "#0000FF", "position": 60}]}]})") +
                 kBars,
             "--param \"gradient_color=2,8421376,25;255,80\"" + kBars);
}

TEST_F(KeyframesProgram, AValueOnTheCommandLineWins) {
  const std::string keys =
      Keyframes(R"({"level": [{"frame": 0, "value": 0}, {"frame": 10, "value": 1}]})");
  RenderWell("@clip.mkv --frames 5:6 -o @both/ --param level=0.8" + keys + figure_);
  RenderWell("@clip.mkv --frames 5:6 -o @fixed/ --param level=0.8" + figure_);
  EXPECT_TRUE(SamePicture(ReadPictures("both").at(5), ReadPictures("fixed").at(5)));
}

TEST_F(KeyframesProgram, AFileWithErrorsIsRefusedBeforeAnythingIsWritten) {
  const test::ProgramOutcome outcome =
      Render("@clip.mkv -o @out.mkv" + Keyframes("{\n\"lewel\": 1,\n\"level\": 2\n}") + figure_);
  EXPECT_EQ(outcome.code, 2);
  EXPECT_THAT(outcome.error_output,
              AllOf(HasSubstr("params.json:2: error: /lewel: effect \"fx.figure\" has no parameter "
                              "\"lewel\"; did you mean \"level\"?\n"),
                    HasSubstr("params.json:3: error: /level: parameter \"level\" lies between 0 "
                              "and 1; 2 does not\n")));
  EXPECT_FALSE(std::filesystem::exists(media_.folder() / "out.mkv"));
}

TEST_F(KeyframesProgram, ATextThatIsNoGradientIsRefusedWithItsLine) {
  const test::ProgramOutcome outcome = Render(
      "@clip.mkv -o @out.mkv" +
      Keyframes("{\n\"gradient_color\": [{\"time\": 0, \"value\": \"two,1,0\"}]\n}") + kBars);
  EXPECT_EQ(outcome.code, 2);
  EXPECT_THAT(outcome.error_output,
              HasSubstr("params.json:2: error: /gradient_color/0/value: give a gradient as"));
  EXPECT_FALSE(std::filesystem::exists(media_.folder() / "out.mkv"));
}

TEST_F(KeyframesProgram, TheFileIsNotWrittenOver) {
  const std::string keys = Keyframes("{}");
  const test::ProgramOutcome outcome = Render("@clip.mkv -o @params.json" + keys + figure_);
  EXPECT_EQ(outcome.code, 2);
  const test::ProgramOutcome missing =
      Render("@clip.mkv -o @out.mkv --params @missing.json" + figure_);
  EXPECT_EQ(missing.code, 2);
  EXPECT_THAT(missing.error_output, HasSubstr("missing.json"));
}

// The blocks of JSON in the guide.
std::vector<std::string> GuideExamples() {
  std::vector<std::string> examples;
  std::ifstream guide(KRV_KEYFRAMES_GUIDE);
  bool inside = false;
  for (std::string line; std::getline(guide, line);) {
    if (line.starts_with("```")) {
      inside = line == "```json";
      if (inside) examples.emplace_back();
    } else if (inside) {
      examples.back() += line + "\n";
    }
  }
  return examples;
}

TEST_F(KeyframesProgram, TheGuidesExamplesRender) {
  const auto examples = GuideExamples();
  EXPECT_EQ(examples.size(), 2u);
  for (size_t i = 0; i < examples.size(); ++i) {
    const std::string name = std::to_string(i);
    RenderWell("@clip.mkv --frames 9:10 -o @example" + name + "/ " + Keyframes(examples[i]) +
               kBars);
    RenderWell("@clip.mkv --frames 9:10 -o @plain" + name + "/ " + kBars);
    EXPECT_FALSE(
        SamePicture(ReadPictures("example" + name).at(9), ReadPictures("plain" + name).at(9)))
        << examples[i];
  }
}

}  // namespace
}  // namespace krv::host
