// Where passes are drawn, at what size, and what they read.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "effects/effect_fixture.h"

namespace krv::test {
namespace {

using testing::ElementsAre;

constexpr char kBackground[] = "uniform sampler2D background_tex;";

// The resolution, a byte per channel, width first.
constexpr char kResolutionBody[] =
    "gl_FragColor = vec4(floor(iResolution.x / 256.0), mod(iResolution.x, 256.0), "
    "floor(iResolution.y / 256.0), mod(iResolution.y, 256.0)) / 255.0;";

std::string AddsTo(const std::string& value) {
  return Fragment("gl_FragColor = texture2D(background_tex, vec2(0.5)) + " + value + ";",
                  kBackground);
}

class Passes : public EffectTest {
 protected:
  // The size at which the pass of an effect draws into an output of another size.
  std::pair<int, int> PassSize(int32_t width, int32_t height, const nlohmann::json& more) {
    Package package = PassPackage({Fragment(kResolutionBody, "uniform vec2 iResolution;")});
    package.description["without_blend"] = true;
    package.description.update(more);
    const Instance effect = host_.Make(package);
    host::MemoryFrame frame(width, height, kPixel8);
    context_.input = context_.output = &frame;
    EXPECT_EQ(ProcessFrame(*effect, context_), kOk);
    const Rgba shown = PixelAt(frame, width / 2, height / 2);
    return {shown.red * 256 + shown.green, shown.blue * 256 + shown.alpha};
  }
};

TEST_F(Passes, ShorterSideAtTheLimitDrawsAtFullSize) {
  EXPECT_EQ(PassSize(400, 320, {{"quality", "low"}}), std::pair(400, 320));
  EXPECT_EQ(PassSize(480, 600, {{"quality", "medium"}}), std::pair(480, 600));
  EXPECT_EQ(PassSize(800, 720, {{"quality", "high"}}), std::pair(800, 720));
}

TEST_F(Passes, ShorterSideAboveTheLimitIsScaled) {
  EXPECT_EQ(PassSize(642, 321, {{"quality", "low"}}), std::pair(640, 320));
  EXPECT_EQ(PassSize(1920, 1080, nlohmann::json::object()), std::pair(853, 480));
  EXPECT_EQ(PassSize(1080, 1920, {{"quality", "no such"}}), std::pair(480, 853));
  EXPECT_EQ(PassSize(1442, 721, {{"quality", "high"}}), std::pair(1440, 720));
}

TEST_F(Passes, OriginalDrawsAtTheSizeOfTheOutput) {
  EXPECT_EQ(PassSize(642, 400, {{"quality", "low"}, {"original", true}}), std::pair(642, 400));
}

TEST_F(Passes, BlendDrawsAtTheSizeOfTheOutput) {
  EXPECT_EQ(PassSize(642, 400, {{"quality", "low"}, {"blend_script", "pass0.glsl"}}),
            std::pair(642, 400));
}

TEST_F(Passes, OriginalMakesNoEffectTextureAndBlendsNothing) {
  FillValues(input_, {0.5, 0.5, 0.5, 1});
  Package package = PassPackage({Fragment("gl_FragColor = vec4(0.25, 0.0, 0.0, 0.5);")});
  package.description["original"] = true;
  const Instance effect = host_.Make(package);
  EXPECT_EQ(Shown(*effect), (Values{0.25, 0, 0, 0.5}));
  EXPECT_EQ(host_.services().LiveFrameCount(), 0u);
}

TEST_F(Passes, EffectTextureIsReusedUntilItsSizeChanges) {
  const Instance effect = host_.Make(PassPackage({Fragment("gl_FragColor = vec4(0.0);")}));
  EXPECT_EQ(ProcessFrame(*effect, context_), kOk);
  host_.StartWithout({kImageBufferSuiteName});
  EXPECT_EQ(ProcessFrame(*effect, context_), kOk) << "the texture was made again";
}

TEST_F(Passes, EffectTextureThatCannotBeMadeFailsTheFrame) {
  const Instance effect = host_.Make(PassPackage({Fragment("gl_FragColor = vec4(0.0);")}));
  EXPECT_EQ(ProcessFrame(*effect, context_), kOk);
  host_.StartWithout({kImageBufferSuiteName});
  host::MemoryFrame larger(8, 8, kPixel8);
  FillBytes(larger, 0xA5);
  const auto before = BytesOf(larger);
  context_.output = &larger;
  EXPECT_EQ(ProcessFrame(*effect, context_), kFailed);
  EXPECT_THAT(host_.TakeErrors(), ElementsAre("<audio_visual> Effect texture is null."));
  EXPECT_EQ(BytesOf(larger), before);

  context_.output = &output_;
  EXPECT_EQ(ProcessFrame(*effect, context_), kFailed) << "the texture of the old size was kept";
  host_.StartWithout({});
  EXPECT_EQ(ProcessFrame(*effect, context_), kOk);
}

TEST_F(Passes, OnlyPassReadsTheInputFrame) {
  FillValues(input_, {0.25, 0, 0, 0.5});
  Package package = PassPackage({AddsTo("vec4(0.0, 0.5, 0.0, 0.0)")});
  package.description["original"] = true;
  EXPECT_EQ(Shown(*host_.Make(package)), (Values{0.25, 0.5, 0, 0.5}));
}

TEST_F(Passes, EachLaterPassReadsTheEarlierResult) {
  FillValues(input_, {0, 0, 0, 0});
  Package package =
      PassPackage({AddsTo("vec4(1.0, 0.0, 0.0, 0.0)"), AddsTo("vec4(0.0, 1.0, 0.0, 0.0)"),
                   AddsTo("vec4(0.0, 0.0, 1.0, 0.0)"), AddsTo("vec4(0.0, 0.0, 0.0, 1.0)")});
  for (const bool original : {false, true}) {
    package.description["original"] = original;
    package.description["without_blend"] = true;
    EXPECT_EQ(Shown(*host_.Make(package)), (Values{1, 1, 1, 1})) << "original: " << original;
  }
}

TEST_F(Passes, ResultsBetweenPassesKeepTheValuesOfAFloatOutput) {
  FillValues(input_, {0, 0, 0, 0});
  Package package =
      PassPackage({AddsTo("vec4(1000.0, -2.0, 0.4, 0.6)"), AddsTo("vec4(-1.0, 1.0, 0.0, 0.0)")});
  package.description["original"] = true;
  const Instance effect = host_.Make(package);
  EXPECT_EQ(Shown(*effect), (Values{999, -1, 0.4F, 0.6F}));

  host::MemoryFrame bytes(4, 4, kPixel8);
  context_.output = &bytes;
  EXPECT_EQ(ProcessFrame(*effect, context_), kOk);
  EXPECT_EQ(PixelAt(bytes, 0, 0), (Rgba{0, 255, 102, 153})) << "limited between the passes";
  context_.output = &output_;
  EXPECT_EQ(Shown(*effect), (Values{999, -1, 0.4F, 0.6F}));
}

TEST_F(Passes, EarlierResultIsReplacedAndNotDrawnOver) {
  Package package =
      PassPackage({Fragment("gl_FragColor = vec4(1.0, 0.0, 0.0, 1.0);"), Fragment("discard;")});
  package.description["original"] = true;
  EXPECT_EQ(Shown(*host_.Make(package)), (Values{0, 1, 0, 0}));
}

TEST_F(Passes, LaterPassesKeepTheOtherInputs) {
  const std::string shows_units = Fragment(
      "gl_FragColor = vec4(texture2D(gradient_color_tex, vec2(0.5)).b, "
      "texture2D(audio_tex, vec2(0.5)).a, float(gradient_color_count), 1.0);",
      "uniform sampler2D gradient_color_tex; uniform sampler2D audio_tex; "
      "uniform int gradient_color_count;");
  Package package = PassPackage({AddsTo("vec4(0.5)"), shows_units});
  package.description["original"] = true;
  package.description["params"] = {Param("gradient_color", kKindText, "1,255,100")};
  EXPECT_EQ(Shown(*host_.Make(package)), (Values{1, 1, 1, 1}));
}

TEST_F(Passes, SizeChangesReachTheResultsBetweenPasses) {
  Package package = PassPackage({Fragment(kResolutionBody, "uniform vec2 iResolution;"),
                                 AddsTo("vec4(0.0)"), AddsTo("vec4(0.0)")});
  package.description["original"] = true;
  const Instance effect = host_.Make(package);
  for (const int32_t size : {16, 3, 40, 3}) {
    host::MemoryFrame frame(size, size + 1, kPixel8);
    context_.input = context_.output = &frame;
    EXPECT_EQ(ProcessFrame(*effect, context_), kOk);
    EXPECT_EQ(PixelAt(frame, 0, 0), (Rgba{0, size, 0, size + 1}));
  }
}

}  // namespace
}  // namespace krv::test
