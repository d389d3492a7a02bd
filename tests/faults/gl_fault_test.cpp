// Frames and instances that the OpenGL driver lets down.
#include <glad/gl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "effects/effect_host.h"
#include "faults/gl_faults.h"

namespace krv::test {
namespace {

constexpr int kMostCalls = 200;  // more than a frame or an initialise makes of any kind

class GlFaults : public testing::TestWithParam<GlFault> {
 protected:
  GlFaults() {
    // A driver that fails is no fault of the product's.
    glDisable(GL_DEBUG_OUTPUT);
    context_.input = &input_;
    context_.output = &output_;
    FillWithPattern(input_);
  }

  static Package TwoPasses() {
    const std::string wave = Fragment("gl_FragColor = vec4(gl_FragCoord.x / 9.0, 0.2, 0.7, 0.5);");
    const std::string copy =
        Fragment("gl_FragColor = texture2D(background_tex, gl_FragCoord.xy / iResolution);",
                 "uniform sampler2D background_tex; uniform vec2 iResolution;");
    Package package = PassPackage({wave, copy});
    package.description["params"] = {Param("gradient_color", kKindText, "1,255,100")};
    return package;
  }

  // The same with a blend of its own, so that the driver lays the effect over the frame.
  static Package TwoPassesAndABlend() {
    Package package = TwoPasses();
    package.description["blend_script"] = "blend.frag";
    package.files["blend.frag"] =
        Fragment("gl_FragColor = texture2D(effect_tex, gl_FragCoord.xy / iResolution);",
                 "uniform sampler2D effect_tex; uniform vec2 iResolution;");
    return package;
  }

  int32_t Frame(KRVEffect& effect) {
    FillBytes(output_, 0xab);
    return ProcessFrame(effect, context_);
  }

  std::vector<uint8_t> Picture(KRVEffect& effect) {
    EXPECT_EQ(Frame(effect), kOk);
    return BytesOf(output_);
  }

  EffectHost host_;
  host::MemoryFrame input_{9, 6, kPixel8};
  host::MemoryFrame output_{9, 6, kPixel8};
  TestContext context_;
};

std::string NameOf(const testing::TestParamInfo<GlFault>& info) {
  return testing::PrintToString(info.param);
}

using GlFrameFaults = GlFaults;

// The fault strikes each of the calls that a frame makes, one frame after the other.
TEST_P(GlFrameFaults, FailTheFrameLeaveTheOutputAndPassWithTheNextFrame) {
  int struck_at_all = 0;
  for (const Package& package : {TwoPasses(), TwoPassesAndABlend()}) {
    const Instance sound = host_.Make(package);
    const std::vector<uint8_t> expected = Picture(*sound);
    int struck = 0;
    for (; struck < kMostCalls; ++struck) {
      // A new instance: what an earlier frame has made, a later one need not ask for.
      const Instance effect = host_.Make(package);
      int32_t code = kOk;
      {
        const ScopedGlFault fault(GetParam(), struck);
        code = Frame(*effect);
        if (!fault.has_struck()) break;
      }
      EXPECT_EQ(code, kFailed) << "at call " << struck;
      EXPECT_THAT(BytesOf(output_), testing::Each(0xab)) << "at call " << struck;
      EXPECT_EQ(Picture(*effect), expected) << "after the fault at call " << struck;
      effect->ReleaseResources();
    }
    EXPECT_LT(struck, kMostCalls);
    struck_at_all += struck;
  }
  EXPECT_GT(struck_at_all, 0) << "no frame makes such a call";
}

INSTANTIATE_TEST_SUITE_P(Driver, GlFrameFaults,
                         testing::Values(GlFault::kNoTextureName, GlFault::kNoBufferName,
                                         GlFault::kNoFramebufferName, GlFault::kIncomplete,
                                         GlFault::kNoPixels, GlFault::kNoMapping),
                         NameOf);

using GlInitialiseFaults = GlFaults;

TEST_P(GlInitialiseFaults, DoNotOutliveTheInitialiseAfter) {
  const Instance sound = host_.Make(TwoPasses());
  const std::vector<uint8_t> expected = Picture(*sound);
  const std::string name = host_.Register(TwoPasses());
  int struck = 0;
  for (; struck < kMostCalls; ++struck) {
    const Instance effect = host_.Create(name);
    {
      const ScopedGlFault fault(GetParam(), struck);
      effect->Initialize(&context_);
      if (!fault.has_struck()) break;
    }
    Frame(*effect);  // whatever it draws, the process lives
    effect->ReleaseResources();
    ASSERT_EQ(effect->Initialize(&context_), kOk) << "after the fault at call " << struck;
    EXPECT_EQ(Picture(*effect), expected) << "after the fault at call " << struck;
    effect->ReleaseResources();
  }
  EXPECT_GT(struck, 0) << "no initialise makes such a call";
  EXPECT_LT(struck, kMostCalls);
}

INSTANTIATE_TEST_SUITE_P(Driver, GlInitialiseFaults,
                         testing::Values(GlFault::kNoProgramName, GlFault::kNoShaderName), NameOf);

class GlProgramFaults : public GlFaults {};

TEST_F(GlProgramFaults, BlendWithoutAProgramNameFailsWithItsLine) {
  const Instance effect = host_.Create(host_.Register(TwoPasses()));
  const ScopedGlFault fault(GlFault::kNoProgramName, 0);
  EXPECT_EQ(effect->Initialize(&context_), kFailed);
  EXPECT_THAT(host_.TakeErrors(),
              testing::ElementsAre("<audio_visual> Create blend program error : default"));
}

TEST_F(GlProgramFaults, PassWithoutAProgramNameFailsWithItsLine) {
  const Instance effect = host_.Create(host_.Register(TwoPasses()));
  const ScopedGlFault fault(GlFault::kNoProgramName, 2);
  EXPECT_EQ(effect->Initialize(&context_), kFailed);
  EXPECT_THAT(host_.TakeErrors(), testing::ElementsAre("<audio_visual> Create program error : " +
                                                       host_.folder().text() + "\\pass1.glsl"));
}

}  // namespace
}  // namespace krv::test
