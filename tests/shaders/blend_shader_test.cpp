#include <gtest/gtest.h>

#include "shaders/builtin_shaders.h"
#include "shaders/shader_canvas.h"

namespace krv::test {
namespace {

using Texel = std::array<float, 4>;

class BlendShader : public ::testing::Test {
 protected:
  void SetUp() override {
    context_ = MakeSoftwareContext();
    ASSERT_NE(context_, nullptr);
  }

  // The left and right half of what the shader makes of a background and an effect.
  static std::array<Pixel, 2> Blend(const std::vector<Texel>& background,
                                    const std::vector<Texel>& effect, bool blend) {
    const ShaderProgram program(DefaultBlendShader());
    const RowTexture background_texture(0, background);
    const RowTexture effect_texture(1, effect);
    program.Set("background_tex", 0);
    program.Set("effect_tex", 1);
    program.Set("iResolution", 2.0f, 1.0f);
    program.Set("blend", blend);
    const Picture picture = Draw(program, 2, 1, GL_RGBA32F);
    return {picture.At(0, 0), picture.At(1, 0)};
  }

  static void ExpectPixel(const Pixel& pixel, const Pixel& expected) {
    for (size_t i = 0; i < 4; ++i) EXPECT_NEAR(pixel[i], expected[i], 1e-6) << "channel " << i;
  }

 private:
  std::unique_ptr<host::GlContext> context_;
};

const std::vector<Texel> kBackground = {{0.25f, 0.5f, 0.75f, 1}, {0.5f, 0.25f, 0, 0.5f}};

TEST_F(BlendShader, MixesAllFourChannelsByTheEffectsAlpha) {
  const auto pixels = Blend(kBackground, {{1, 0, 0.5f, 0.25f}, {0, 1, 1, 0.5f}}, true);
  ExpectPixel(pixels[0], {0.4375, 0.375, 0.6875, 0.8125});
  ExpectPixel(pixels[1], {0.25, 0.625, 0.5, 0.5});
}

TEST_F(BlendShader, AddsAnOpaqueEffectInAllFourChannels) {
  const auto pixels = Blend(kBackground, {{0.5f, 0, 0.5f, 1}, {0.25f, 0.25f, 0, 1}}, true);
  ExpectPixel(pixels[0], {0.75, 0.5, 1.25, 2});
  ExpectPixel(pixels[1], {0.75, 0.5, 0, 1.5});
}

TEST_F(BlendShader, WithoutBlendingShowsTheEffectAlone) {
  const auto pixels = Blend(kBackground, {{0.5f, 0, 0.5f, 1}, {0.25f, 0.25f, 0, 0.5f}}, false);
  ExpectPixel(pixels[0], {0.5, 0, 0.5, 1});
  ExpectPixel(pixels[1], {0.25, 0.25, 0, 0.5});
}

}  // namespace
}  // namespace krv::test
