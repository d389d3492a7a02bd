// Frames of effects that follow a person or the picture itself, without a filter plug-in.
#include <gtest/gtest.h>

#include <utility>

#include "effects/effect_fixture.h"
#include "effects/test_mask.h"
#include "platform/process.h"
#include "support/scratch_folder.h"

namespace krv::test {
namespace {

using host::platform::OpenHandles;
using host::platform::ResidentBytes;
using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

constexpr char kInputSizeError[] = "<audio_visual> Input size error";
constexpr char kBox[] = "uniform vec2 mask_left_right; uniform vec2 mask_bottom_top;";
constexpr char kBoxExpression[] = "vec4(mask_left_right, mask_bottom_top)";
constexpr char kMask[] = "uniform sampler2D mask_tex;";

Package MaskPackage(std::string_view expression, std::string_view declarations,
                    const std::vector<std::string>& inputs) {
  Package package = ValuePackage(expression, declarations);
  package.description["input_list"] = inputs;
  return package;
}

class MaskFrames : public EffectTest {
 protected:
  // What a person effect shows of an expression.
  Values Seen(std::string_view expression, std::string_view declarations, TestMask& mask) {
    context_.person_mask = &mask;
    return Shown(*host_.Make(MaskPackage(expression, declarations, {"human_segment"})));
  }

  // Frames fail for their inputs and write nothing.
  void ExpectInputSizeErrors(KRVEffect& effect, int frames = 3) {
    FillBytes(output_, 0xA5);
    const auto before = BytesOf(output_);
    for (int i = 0; i < frames; ++i) EXPECT_EQ(ProcessFrame(effect, context_), kFailed);
    const auto errors = host_.TakeErrors();
    EXPECT_THAT(errors, SizeIs(frames));
    EXPECT_THAT(errors, Each(kInputSizeError));
    EXPECT_EQ(BytesOf(output_), before);
  }

  Instance PersonEffect() {
    return host_.Make(MaskPackage(kBoxExpression, kBox, {"human_segment"}));
  }
};

TEST_F(MaskFrames, TheBoxIsInFractionsOfTheMask) {
  TestMask mask(16, 8, {4, 2, 8, 5});
  EXPECT_EQ(Seen(kBoxExpression, kBox, mask), (Values{0.25, 0.75, 0.25, 0.875}));
}

TEST_F(MaskFrames, AMaskThatFillsThePictureGoesFrom0To1) {
  TestMask mask(16, 8, {0, 0, 16, 8});
  EXPECT_EQ(Seen(kBoxExpression, kBox, mask), (Values{0, 1, 0, 1}));
}

TEST_F(MaskFrames, TheMaskIsATextureInItsOwnOrderOfChannels) {
  TestMask mask(4, 4);
  mask.pixels.setTo(cv::Scalar(51, 102, 153, 204));
  const Values seen = Seen("texture2D(mask_tex, vec2(0.5))", kMask, mask);
  EXPECT_NEAR(seen[0], 0.6, 1e-6);
  EXPECT_NEAR(seen[1], 0.4, 1e-6);
  EXPECT_NEAR(seen[2], 0.2, 1e-6);
  EXPECT_NEAR(seen[3], 0.8, 1e-6);
}

TEST_F(MaskFrames, TheMasksFirstRowIsRow0) {
  TestMask mask(4, 4, {0, 0, 4, 2});
  EXPECT_EQ(Seen("vec4(texture2D(mask_tex, vec2(0.5, 0.2)).a, "
                 "texture2D(mask_tex, vec2(0.5, 0.8)).a, 0.0, 1.0)",
                 kMask, mask),
            (Values{1, 0, 0, 1}));
}

TEST_F(MaskFrames, TheMaskComesBetweenBackgroundAndGradient) {
  TestMask mask(4, 4, {0, 0, 4, 4});
  context_.person_mask = &mask;
  Package package = MaskPackage(
      "vec4(float(background_tex), float(mask_tex), float(gradient_color_tex), "
      "float(audio_tex))",
      "uniform int background_tex; uniform int mask_tex; "
      "uniform int gradient_color_tex; uniform int audio_tex;",
      {"human_segment"});
  package.description["params"] = {Param("gradient_color", kKindText, "1,255,100")};
  EXPECT_EQ(Shown(*host_.Make(package)), (Values{0, 1, 2, 3}));
}

TEST_F(MaskFrames, EachFrameHasTheMaskOfItsTime) {
  const Instance effect = PersonEffect();
  TestMask mask(16, 8, {4, 2, 8, 4});
  context_.person_mask = &mask;
  EXPECT_EQ(Shown(*effect), (Values{0.25, 0.75, 0.25, 0.75}));
  mask = TestMask(8, 16, {0, 8, 2, 8});
  EXPECT_EQ(Shown(*effect), (Values{0, 0.25, 0.5, 1}));
}

TEST_F(MaskFrames, WithTheFilterMissingEveryFrameFailsAndLeavesTheOutputAlone) {
  ExpectInputSizeErrors(*PersonEffect());
}

TEST_F(MaskFrames, AHostThatHasNoMaskForAFrameFailsThatFrameAlone) {
  const Instance effect = PersonEffect();
  TestMask mask(4, 4, {0, 0, 4, 4});
  mask.answer = 0;
  context_.person_mask = &mask;
  ExpectInputSizeErrors(*effect);
  mask.answer = 1;
  EXPECT_EQ(Shown(*effect), (Values{0, 1, 0, 1}));
}

TEST_F(MaskFrames, AFrameWithNobodyInItFailsTheSameWay) {
  const Instance effect = PersonEffect();
  TestMask mask(4, 4);
  mask.pixels.setTo(cv::Scalar(255, 255, 255, 5));
  context_.person_mask = &mask;
  ExpectInputSizeErrors(*effect);
  mask.pixels.at<cv::Vec4b>(3, 3)[3] = 6;
  EXPECT_EQ(Shown(*effect), (Values{0.75, 1, 0.75, 1}));
}

TEST_F(MaskFrames, AMaskThatMakesNoTextureFails) {
  const Instance effect = PersonEffect();
  TestMask mask(100000, 1, {0, 0, 100000, 1});  // wider than any texture
  context_.person_mask = &mask;
  ExpectInputSizeErrors(*effect);
}

TEST_F(MaskFrames, AFrameWithoutInputFailsOnceForAllReasons) {
  const Instance effect = PersonEffect();
  TestMask mask(4, 4, {0, 0, 4, 4});
  context_.person_mask = &mask;
  context_.input = nullptr;
  ExpectInputSizeErrors(*effect);
}

TEST_F(MaskFrames, PersonAndMaskTogetherFailOnEveryFrame) {
  const Instance effect = host_.Make(MaskPackage(kBoxExpression, kBox, {"human_segment", "mask"}));
  TestMask mask(4, 4, {0, 0, 4, 4});
  context_.person_mask = &mask;
  FillValues(input_, {1, 1, 1, 1});
  ExpectInputSizeErrors(*effect);
}

TEST_F(MaskFrames, TheFrameItselfCanBeTheMask) {
  host::MemoryFrame input(8, 4, kPixel8);
  const Instance effect = host_.Make(MaskPackage(kBoxExpression, kBox, {"mask"}));
  context_.input = &input;
  ExpectInputSizeErrors(*effect, 1);  // transparent throughout
  cv::Mat pixels(4, 8, CV_8UC4, input.GetPixels());
  pixels(cv::Rect(2, 1, 4, 2)).setTo(cv::Scalar(0, 0, 0, 200));
  EXPECT_EQ(Shown(*effect), (Values{0.25, 0.75, 0.25, 0.75}));
}

TEST_F(MaskFrames, AFloatFrameIsAMaskOfEightBits) {
  FillValues(input_, {0.2f, 7.0f, -1.0f, 1.0f});
  const Values seen =
      Shown(*host_.Make(MaskPackage("texture2D(mask_tex, vec2(0.5))", kMask, {"mask"})));
  EXPECT_NEAR(seen[0], 0.2, 1e-6);
  EXPECT_EQ(seen[1], 1);
  EXPECT_EQ(seen[2], 0);
  EXPECT_EQ(seen[3], 1);
}

TEST_F(MaskFrames, AFrameOnTheGpuThatIsItsOwnOutputCanBeTheMask) {
  EffectHost gpu(host::DeviceUse::kGpu);
  FillValues(input_, {0, 0, 0, 0.8f});
  const auto frame = TextureOf(input_);
  context_.input = context_.output = frame.get();
  const Instance effect =
      gpu.Make(MaskPackage("texture2D(mask_tex, vec2(0.5)).aaaa", kMask, {"mask"}));
  EXPECT_EQ(ProcessFrame(*effect, context_), kOk);
  EXPECT_NEAR(ValuesAt(*MemoryOf(*frame), 0, 0)[0], 0.8, 1e-6);
}

// What stands in the place of the filter changes nothing, and nothing is left over.
TEST_F(MaskFrames, AThousandFramesWithoutAUsableFilterKeepMemoryAndHandles) {
  const ScratchFolder folder;
  folder.Write("krvAiFilterPlugin.krv", "not a library");
  for (const std::string& plugins :
       {folder.text(), std::string("nowhere"), std::string(KRV_FILTER_WITHOUT_CREATE),
        std::string(KRV_FILTER_WITHOUT_TRANSFORM)}) {
    EffectHost host(host::DeviceUse::kMemory,
                    {.installation = "", .ai_models = "", .plugins = plugins});
    const Instance effect = host.Make(MaskPackage(kBoxExpression, kBox, {"human_segment"}));
    FillBytes(output_, 0xA5);
    const auto before = BytesOf(output_);
    const auto run = [&](int frames) {
      for (int i = 0; i < frames; ++i) ASSERT_EQ(ProcessFrame(*effect, context_), kFailed);
      EXPECT_THAT(host.TakeErrors(), AllOf(SizeIs(frames), Each(kInputSizeError)));
    };
    run(100);
    const int64_t bytes = ResidentBytes();
    const int64_t handles = OpenHandles();
    run(1000);
    EXPECT_EQ(OpenHandles(), handles) << plugins;
    EXPECT_EQ(BytesOf(output_), before) << plugins;
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    EXPECT_LT(ResidentBytes() - bytes, 1 << 20) << plugins;
#else
    EXPECT_GT(bytes, 0);
#endif
  }
}

}  // namespace
}  // namespace krv::test
