// The parameter "gradient_color" from its text to what shaders see.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "effects/effect_fixture.h"

namespace krv::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kRainbow[] = "3,16711680,0;65280,50;255,100";
constexpr char kUniforms[] =
    "uniform sampler2D gradient_color_tex; uniform int gradient_color_count; uniform float column;";

class GradientFrames : public EffectTest {
 protected:
  // Shows the gradient's texel `column` of 3, or its count where `column` is -1.
  static Package Gradient(const std::string& text = kRainbow) {
    Package package = ValuePackage(
        "column < 0.0 ? vec4(float(gradient_color_count)) : "
        "texture2D(gradient_color_tex, vec2((column + 0.5) / 3.0, 0.5))",
        kUniforms);
    package.description["params"] = {Param("gradient_color", kKindText, text),
                                     Param("column", kKindFloat, 0)};
    return package;
  }

  Rgba Texel(KRVEffect& effect, float column) {
    context_.answers["column"] = Float(column);
    const Values shown = Shown(effect);
    const auto byte = [](float value) { return static_cast<int>(std::lround(value * 255)); };
    return {byte(shown[0]), byte(shown[1]), byte(shown[2]), byte(shown[3])};
  }
  float Count(KRVEffect& effect) {
    context_.answers["column"] = Float(-1);
    return Shown(effect)[0];
  }

  // A frame with this text fails; what was logged.
  std::vector<std::string> ErrorsOf(const char* text) {
    const Instance effect = host_.Make(Gradient());
    context_.answers["gradient_color"] = Text(text);
    FillBytes(output_, 0xA5);
    const auto before = BytesOf(output_);
    EXPECT_EQ(ProcessFrame(*effect, context_), kFailed);
    EXPECT_EQ(BytesOf(output_), before);
    return host_.TakeErrors();
  }
};

TEST_F(GradientFrames, ShaderSeesRedGreenBlueAndPosition) {
  const Instance effect = host_.Make(Gradient());
  EXPECT_EQ(Texel(*effect, 0), (Rgba{255, 0, 0, 0}));
  EXPECT_EQ(Texel(*effect, 1), (Rgba{0, 255, 0, 127}));
  EXPECT_EQ(Texel(*effect, 2), (Rgba{0, 0, 255, 255}));
}

TEST_F(GradientFrames, CountIsTheTextures) {
  const Instance effect = host_.Make(Gradient());
  EXPECT_EQ(Count(*effect), 3);
}

TEST_F(GradientFrames, AnsweredTextTakesThePlaceOfTheDefault) {
  const Instance effect = host_.Make(Gradient());
  EXPECT_EQ(Count(*effect), 3);
  context_.answers["gradient_color"] = Text("1,255,100");
  EXPECT_EQ(Count(*effect), 1);
  EXPECT_EQ(Texel(*effect, 0), (Rgba{0, 0, 255, 255}));
  context_.answers.erase("gradient_color");
  EXPECT_EQ(Count(*effect), 3);
}

TEST_F(GradientFrames, TextWithoutACommaKeepsTheEarlierGradient) {
  const Instance effect = host_.Make(Gradient());
  EXPECT_EQ(Count(*effect), 3);
  for (const char* text : {"", "2", "none;at;all"}) {
    context_.answers["gradient_color"] = Text(text);
    EXPECT_EQ(Count(*effect), 3) << text;
    EXPECT_EQ(Texel(*effect, 2), (Rgba{0, 0, 255, 255})) << text;
  }
}

TEST_F(GradientFrames, CountThatNoTextureHasKeepsTheEarlierGradient) {
  const Instance effect = host_.Make(Gradient());
  EXPECT_EQ(Count(*effect), 3);
  for (const char* text : {"0,255,0", "-2,255,0", "2000000000,255,0"}) {
    context_.answers["gradient_color"] = Text(text);
    EXPECT_EQ(Count(*effect), 3) << text;
  }
}

TEST_F(GradientFrames, AnswerThatIsNoTextLeavesTheDefault) {
  const Instance effect = host_.Make(Gradient());
  context_.answers["gradient_color"] = Int(1);
  EXPECT_EQ(Count(*effect), 3);
  context_.answers["gradient_color"] = Text(nullptr);
  EXPECT_EQ(Count(*effect), 3);
}

TEST_F(GradientFrames, WithoutAGradientThereIsNoGradientTexture) {
  const Instance effect = host_.Make(Gradient("none"));
  EXPECT_EQ(Count(*effect), 0);
  EXPECT_THAT(host_.TakeErrors(), IsEmpty());
}

TEST_F(GradientFrames, EntriesBeyondTheCountAreDropped) {
  const Instance effect = host_.Make(Gradient("1,255,100;65280,50"));
  EXPECT_EQ(Count(*effect), 1);
  EXPECT_EQ(Texel(*effect, 2), (Rgba{0, 0, 255, 255}));
}

TEST_F(GradientFrames, EntryWithoutACommaIsSkipped) {
  const Instance effect = host_.Make(Gradient("3,16711680,0;nothing;65280,50;255,100"));
  EXPECT_EQ(Texel(*effect, 1), (Rgba{0, 255, 0, 127}));
  EXPECT_EQ(Texel(*effect, 2), (Rgba{0, 0, 255, 255}));
}

TEST_F(GradientFrames, NumberThatDoesNotParseFailsTheFrameWithOneLine) {
  EXPECT_THAT(ErrorsOf("three,255,0"), ElementsAre("<audio_visual> invalid stoi argument"));
  EXPECT_THAT(ErrorsOf("1,red,0"), ElementsAre("<audio_visual> invalid stoi argument"));
  EXPECT_THAT(ErrorsOf("99999999999,255,0"),
              ElementsAre("<audio_visual> stoi argument out of range"));
  EXPECT_THAT(ErrorsOf("1,255,middle"), ElementsAre("<audio_visual> invalid stof argument"));
  EXPECT_THAT(ErrorsOf("1,255,1e99"), ElementsAre("<audio_visual> stof argument out of range"));
}

TEST_F(GradientFrames, FrameAfterAFailedTextShowsTheEarlierGradient) {
  const Instance effect = host_.Make(Gradient());
  EXPECT_EQ(Count(*effect), 3);
  context_.answers["gradient_color"] = Text("x,255,0");
  EXPECT_EQ(ProcessFrame(*effect, context_), kFailed);
  context_.answers["gradient_color"] = Text("none");
  EXPECT_EQ(Count(*effect), 3);
}

TEST_F(GradientFrames, TextItselfIsNoUniform) {
  EXPECT_EQ(ValueOf("vec4(gradient_color)", "uniform float gradient_color;",
                    {Param("gradient_color", kKindFloat, 5)})[0],
            0);
}

TEST_F(GradientFrames, GradientComesBackAfterRelease) {
  const Instance effect = host_.Make(Gradient());
  EXPECT_EQ(Count(*effect), 3);
  effect->ReleaseResources();
  EXPECT_EQ(effect->Initialize(&context_), kOk);
  EXPECT_EQ(Count(*effect), 3);
  EXPECT_EQ(Texel(*effect, 0), (Rgba{255, 0, 0, 0}));
}

TEST_F(GradientFrames, CountReachesPassesThatAreYoungerThanTheTexture) {
  const Instance effect = host_.Create(host_.Register(Gradient()));
  EXPECT_EQ(effect->ApplyParameters(&context_), kOk);
  EXPECT_EQ(effect->Initialize(&context_), kOk);
  EXPECT_EQ(Count(*effect), 3);
}

}  // namespace
}  // namespace krv::test
