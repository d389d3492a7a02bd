// How the effect is laid over the frame.
#include <gtest/gtest.h>

#include "effects/effect_fixture.h"

namespace krv::test {
namespace {

// An effect that shows one colour everywhere; components as GLSL writes them.
Package OneColor(const std::string& color) {
  return PassPackage({Fragment("gl_FragColor = vec4(" + color + ");")});
}

void ExpectNear(const Values& shown, const Values& expected) {
  for (size_t i = 0; i < expected.size(); ++i) EXPECT_NEAR(shown[i], expected[i], 1e-3) << i;
}

class Blend : public EffectTest {
 protected:
  Blend() { FillValues(input_, {0.25, 0.5, 0.75, 1}); }
};

TEST_F(Blend, EffectBelowFullAlphaIsMixedIn) {
  const float alpha = 51 / 255.0F;
  ExpectNear(Shown(*host_.Make(OneColor("1.0, 0.0, 0.0, 51.0 / 255.0"))),
             {0.25F + 0.75F * alpha, 0.5F - 0.5F * alpha, 0.75F - 0.75F * alpha,
              1.0F - alpha + alpha * alpha});
}

TEST_F(Blend, TransparentEffectLeavesTheFrame) {
  EXPECT_EQ(Shown(*host_.Make(OneColor("1.0, 1.0, 1.0, 0.0"))), (Values{0.25, 0.5, 0.75, 1}));
}

TEST_F(Blend, OpaqueEffectIsAdded) {
  EXPECT_EQ(Shown(*host_.Make(OneColor("0.0, 1.0, 0.0, 1.0"))), (Values{0.25, 1.5, 0.75, 2}))
      << "a float frame keeps the sum";
}

TEST_F(Blend, SumInABytesFrameIsLimited) {
  host::MemoryFrame frame(4, 4, kPixel8);
  Fill(frame, {100, 50, 20, 255});
  context_.input = context_.output = &frame;
  const Instance effect = host_.Make(OneColor("1.0, 0.2, 0.0, 1.0"));
  EXPECT_EQ(ProcessFrame(*effect, context_), kOk);
  EXPECT_EQ(PixelAt(frame, 2, 2), (Rgba{255, 101, 20, 255}));
}

TEST_F(Blend, NearlyOpaqueEffectIsStillMixed) {
  ExpectNear(
      Shown(*host_.Make(OneColor("0.0, 1.0, 0.0, 254.0 / 255.0"))),
      {0.25F / 255, 1 - 0.5F / 255, 0.75F / 255, 1.0F / 255 + (254.0F / 255) * (254.0F / 255)});
}

TEST_F(Blend, WithoutBlendShowsTheEffectAlone) {
  Package package = OneColor("1.0, 0.0, 1.0, 0.0");
  package.description["without_blend"] = true;
  EXPECT_EQ(Shown(*host_.Make(package)), (Values{1, 0, 1, 0}));
  package.description["without_blend"] = false;
  EXPECT_EQ(Shown(*host_.Make(package)), (Values{0.25, 0.5, 0.75, 1}));
}

TEST_F(Blend, EmptyScriptGivesTheDefault) {
  Package package = OneColor("0.0, 1.0, 0.0, 1.0");
  package.description["blend_script"] = "";
  EXPECT_EQ(Shown(*host_.Make(package)), (Values{0.25, 1.5, 0.75, 2}));
}

TEST_F(Blend, ScriptSeesBothPicturesAndTheSwitch) {
  Package package = OneColor("1.0, 0.0, 0.0, 1.0");
  package.description["blend_script"] = "blend.glsl";
  package.files["blend.glsl"] = Fragment(
      "gl_FragColor = vec4(texture2D(effect_tex, vec2(0.5)).r, "
      "texture2D(background_tex, vec2(0.5)).g, blend ? 1.0 : 0.0, iResolution.x);",
      "uniform sampler2D background_tex; uniform sampler2D effect_tex; uniform bool blend; "
      "uniform vec2 iResolution;");
  EXPECT_EQ(Shown(*host_.Make(package)), (Values{1, 0.5, 1, 4}));
  package.description["without_blend"] = true;
  EXPECT_EQ(Shown(*host_.Make(package)), (Values{1, 0.5, 0, 4}));
}

TEST_F(Blend, UnitsAreThoseOfItsTwoTextures) {
  Package package = OneColor("0.0");
  package.description["blend_script"] = "blend.glsl";
  package.files["blend.glsl"] =
      Fragment("gl_FragColor = vec4(float(background_tex), float(effect_tex), 0.0, 1.0);",
               "uniform int background_tex; uniform int effect_tex;");
  EXPECT_EQ(Shown(*host_.Make(package)), (Values{0, 1, 0, 1}));
}

TEST_F(Blend, BackgroundIsTheInputFrameAlsoAfterSeveralPasses) {
  const std::string opaque = Fragment("gl_FragColor = vec4(1.0);");
  const std::string transparent = Fragment("gl_FragColor = vec4(1.0, 1.0, 1.0, 0.0);");
  EXPECT_EQ(Shown(*host_.Make(PassPackage({opaque, opaque, transparent}))),
            (Values{0.25, 0.5, 0.75, 1}));
}

}  // namespace
}  // namespace krv::test
