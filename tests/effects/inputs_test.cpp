// The input textures of a frame, and their order.
#include <gtest/gtest.h>

#include "effects/effect_fixture.h"

namespace krv::test {
namespace {

using testing::ElementsAre;

constexpr char kUnits[] =
    "uniform int background_tex; uniform int gradient_color_tex; uniform int audio_tex;";
constexpr char kUnitExpression[] =
    "vec4(float(background_tex), float(gradient_color_tex), float(audio_tex), 1.0)";
constexpr char kInputSizeError[] = "<audio_visual> Input size error";

Package BackgroundPackage() {
  return ValuePackage("texture2D(background_tex, vec2(0.5))", "uniform sampler2D background_tex;");
}

class Inputs : public EffectTest {
 protected:
  // The frame fails for its inputs, and writes nothing.
  void ExpectInputSizeError(KRVEffect& effect) {
    FillBytes(output_, 0xA5);
    const auto before = BytesOf(output_);
    EXPECT_EQ(effect.ProcessFrame(&context_), kFailed);
    EXPECT_THAT(host_.TakeErrors(), ElementsAre(kInputSizeError));
    EXPECT_EQ(BytesOf(output_), before);
  }
};

TEST_F(Inputs, BackgroundIsUnit0AndAudioUnit1) {
  EXPECT_EQ(ValueOf(kUnitExpression, kUnits), (Values{0, 0, 1, 1}));
}

TEST_F(Inputs, GradientComesBetweenBackgroundAndAudio) {
  EXPECT_EQ(ValueOf(kUnitExpression, kUnits, {Param("gradient_color", kKindText, "1,255,100")}),
            (Values{0, 1, 2, 1}));
}

TEST_F(Inputs, UnitsFollowAGradientThatAppears) {
  Package package = ValuePackage(kUnitExpression, kUnits);
  package.description["params"] = {Param("gradient_color", kKindText, "none")};
  const Instance effect = host_.Make(package);
  EXPECT_EQ(Shown(*effect), (Values{0, 0, 1, 1}));
  context_.answers["gradient_color"] = Text("1,255,100");
  EXPECT_EQ(Shown(*effect), (Values{0, 1, 2, 1}));
}

TEST_F(Inputs, EverySamplerReadsItsOwnTexture) {
  FillValues(input_, {0.25, 0.5, 0.75, 1});
  EXPECT_EQ(ValueOf("vec4(texture2D(background_tex, vec2(0.5)).r, "
                    "texture2D(gradient_color_tex, vec2(0.5)).b, "
                    "texture2D(audio_tex, vec2(0.5)).r, texture2D(audio_tex, vec2(0.5)).a)",
                    "uniform sampler2D background_tex; uniform sampler2D gradient_color_tex; "
                    "uniform sampler2D audio_tex;",
                    {Param("gradient_color", kKindText, "1,255,100")}),
            (Values{0.25, 1, 0, 1}));
}

TEST_F(Inputs, FrameWithoutClearedInputsFailsAndTheNextClearedOneWorks) {
  FillValues(input_, {0.5, 0, 0, 1});
  const Instance effect = host_.Make(BackgroundPackage());
  EXPECT_EQ(Shown(*effect), (Values{0.5, 0, 0, 1}));
  ExpectInputSizeError(*effect);
  ExpectInputSizeError(*effect);
  FillValues(input_, {0, 0.5, 0, 1});
  EXPECT_EQ(Shown(*effect), (Values{0, 0.5, 0, 1}));
}

TEST_F(Inputs, FirstFrameNeedsNoClearing) {
  const Instance effect = host_.Make(BackgroundPackage());
  EXPECT_EQ(effect->ProcessFrame(&context_), kOk);
}

TEST_F(Inputs, ReleaseClearsTheInputs) {
  const Instance effect = host_.Make(BackgroundPackage());
  EXPECT_EQ(effect->ProcessFrame(&context_), kOk);
  effect->ReleaseResources();
  EXPECT_EQ(effect->Initialize(&context_), kOk);
  EXPECT_EQ(effect->ProcessFrame(&context_), kOk);
}

TEST_F(Inputs, FrameWithoutAnInputFrameFails) {
  const Instance effect = host_.Make(BackgroundPackage());
  context_.input = nullptr;
  ExpectInputSizeError(*effect);
}

TEST_F(Inputs, FrameWhoseInputHasNoBufferFails) {
  const Instance effect = host_.Make(BackgroundPackage());
  host::MemoryFrame empty({kPixelFloat, kFrameInMemory, 4, 4, 64}, nullptr);
  context_.input = &empty;
  ExpectInputSizeError(*effect);
}

TEST_F(Inputs, FrameWhoseInputMakesNoSenseFails) {
  const Instance effect = host_.Make(BackgroundPackage());
  uint8_t pixels[64] = {};
  const FrameDescription cases[] = {{kPixel8, kFrameInMemory, 0, 4, 16},
                                    {kPixel8, kFrameInMemory, 4, -4, 16},
                                    {kPixel8, kFrameInMemory, 4, 4, 15},
                                    {7, kFrameInMemory, 4, 4, 16},
                                    {kPixel8, 1, 4, 4, 16}};
  for (const FrameDescription& description : cases) {
    host::MemoryFrame frame(description, pixels);
    context_.input = &frame;
    effect->ClearInputs();
    ExpectInputSizeError(*effect);
  }
}

TEST_F(Inputs, WhatAFailedFrameLeavesDoesNotStandInForAMissingInput) {
  const Instance effect = host_.Make(BackgroundPackage());
  context_.input = nullptr;
  ExpectInputSizeError(*effect);
  ExpectInputSizeError(*effect);
}

TEST_F(Inputs, InputOfAnotherSizeIsStretched) {
  host::MemoryFrame large(64, 32, kPixelFloat);
  FillValues(large, {0.5, 0.25, 0, 1});
  context_.input = &large;
  EXPECT_EQ(Shown(*host_.Make(BackgroundPackage())), (Values{0.5, 0.25, 0, 1}));
}

TEST_F(Inputs, MaskUniformsAreZeroWithoutAMask) {
  EXPECT_EQ(ValueOf("vec4(mask_bottom_top, mask_left_right)",
                    "uniform vec2 mask_bottom_top; uniform vec2 mask_left_right;"),
            (Values{0, 0, 0, 0}));
}

}  // namespace
}  // namespace krv::test
