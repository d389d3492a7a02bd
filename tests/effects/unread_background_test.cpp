// Frames in memory reach the GPU only where a pass reads them; whoever reads them sees them.
#include <glad/gl.h>
#include <gtest/gtest.h>

#include "effects/effect_fixture.h"

namespace krv::test {
namespace {

constexpr Values kBelow = {0.25, 0.5, 0.75, 1};

// A pass that shows what a sampler of that name reads, alone.
Package ShowsSampler(const std::string& name) {
  Package package = PassPackage({Fragment("gl_FragColor = texture2D(" + name + ", vec2(0.5));",
                                          "uniform sampler2D " + name + ";")});
  package.description["without_blend"] = true;
  return package;
}

// A figure of a built-in shader.
Package BuiltinFigure(const std::string& shader, const nlohmann::json& params) {
  Package package;
  package.description["opengl_frag"] = {shader};
  package.description["quality"] = "low";
  package.description["params"] = params;
  return package;
}

class UnreadBackground : public EffectTest {
 protected:
  UnreadBackground() { FillValues(input_, kBelow); }

  // Whether frames of this package are uploaded. They are larger than what an effect is drawn in,
  // so no other texture has their size.
  bool Uploads(const Package& package) {
    host::MemoryFrame frame(640, 400, kPixel8);
    context_.input = context_.output = &frame;
    const Instance effect = host_.Make(package);
    EXPECT_EQ(ProcessFrame(*effect, context_), kOk);
    bool found = false;
    for (GLuint name = 1; name < 1000; ++name) {
      if (glIsTexture(name) == GL_FALSE) continue;
      GLint width = 0;
      glBindTexture(GL_TEXTURE_2D, name);
      glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
      found = found || width == 640;
    }
    glBindTexture(GL_TEXTURE_2D, 0);
    effect->ReleaseResources();
    return found;
  }

  void ExpectBelow(const Values& shown) {
    for (size_t i = 0; i < shown.size(); ++i) EXPECT_NEAR(shown[i], kBelow[i], 1 / 255.0) << i;
  }
};

TEST_F(UnreadBackground, IsThereForThePassThatReadsIt) {
  ExpectBelow(Shown(*host_.Make(ShowsSampler("background_tex"))));
}

TEST_F(UnreadBackground, IsWhatASamplerReadsThatIsNotSet) {
  ExpectBelow(Shown(*host_.Make(ShowsSampler("somewhere"))));
}

TEST_F(UnreadBackground, IsWhatASamplerReadsThatTheHostSetsToTheFirstUnit) {
  const Instance effect = host_.Make(ShowsSampler("somewhere"));
  ParameterValue unit = Int(1);
  effect->SetUniform("somewhere", &unit);
  EXPECT_NE(Shown(*effect)[0], kBelow[0]) << "the spectrum of silence";
  unit = Int(0);
  effect->SetUniform("somewhere", &unit);
  ExpectBelow(Shown(*effect));
}

TEST_F(UnreadBackground, IsTheFrameAtHandEveryTime) {
  const Instance effect = host_.Make(ShowsSampler("background_tex"));
  ExpectBelow(Shown(*effect));
  FillValues(input_, {1, 0, 0, 1});
  EXPECT_NEAR(Shown(*effect)[0], 1, 1 / 255.0);
}

TEST_F(UnreadBackground, OfAnotherSizeOrTypeIsTheFrameAtHand) {
  const Instance effect = host_.Make(ShowsSampler("background_tex"));
  ExpectBelow(Shown(*effect));
  for (const int32_t type : {kPixel8, kPixel16, kPixelFloat}) {
    for (const int32_t width : {8, 5}) {
      host::MemoryFrame input(width, 3, type);
      host::MemoryFrame output(width, 3, type);
      FillBytes(input, type == kPixelFloat ? 0 : 255);
      context_.input = &input;
      context_.output = &output;
      ASSERT_EQ(ProcessFrame(*effect, context_), kOk);
      EXPECT_EQ(BytesOf(output), BytesOf(input)) << type << " " << width;
    }
  }
}

TEST_F(UnreadBackground, IsReplacedByThePassBefore) {
  Package package = PassPackage({Fragment("gl_FragColor = vec4(0.0, 1.0, 0.0, 1.0);"),
                                 Fragment("gl_FragColor = texture2D(background_tex, vec2(0.5));",
                                          "uniform sampler2D background_tex;")});
  package.description["without_blend"] = true;
  EXPECT_EQ(Shown(*host_.Make(package)), (Values{0, 1, 0, 1}));
}

TEST_F(UnreadBackground, IsThereForPassesThatDrawIntoTheFrame) {
  Package package = ShowsSampler("background_tex");
  package.description["original"] = true;
  EXPECT_EQ(Shown(*host_.Make(package)), kBelow);
}

TEST_F(UnreadBackground, IsThereForABlendScript) {
  Package package = PassPackage({Fragment("gl_FragColor = vec4(1.0);")});
  package.description["blend_script"] = "blend.glsl";
  package.files["blend.glsl"] = Fragment("gl_FragColor = texture2D(background_tex, vec2(0.5));",
                                         "uniform sampler2D background_tex;");
  EXPECT_EQ(Shown(*host_.Make(package)), kBelow);
}

TEST_F(UnreadBackground, IsNotUploadedForABuiltinFigure) {
  const nlohmann::json gradient = Param("gradient_color", kKindText, "2,255,0;65280,100");
  for (const char* shader :
       {"audio_visualization_geometry.frag", "audio_visualization_halo_geometry.frag",
        "audio_visualization_halo_spectrum.frag"}) {
    for (const bool colored : {false, true}) {
      const nlohmann::json coloring = Param("use_gradient_color", kKindBool, colored);
      const nlohmann::json scale = Param("scale_x", kKindFloat, 1);
      EXPECT_FALSE(Uploads(BuiltinFigure(shader, {coloring, scale}))) << shader << " " << colored;
      EXPECT_FALSE(Uploads(BuiltinFigure(shader, {coloring, scale, gradient}))) << shader;
    }
  }
  EXPECT_TRUE(Uploads(ShowsSampler("background_tex")));
}

// The stops are then the frame's pixels.
TEST_F(UnreadBackground, IsThereForAFigureWithACountOfStopsAndNoStops) {
  EXPECT_TRUE(Uploads(BuiltinFigure(
      "audio_visualization_geometry.frag",
      {Param("use_gradient_color", kKindBool, true), Param("gradient_color_count", kKindInt, 2)})));
}

// A frame that lies partly over another is read before it is written.
TEST_F(UnreadBackground, MayOverlapTheOutput) {
  std::vector<uint8_t> memory(64 * 9, 0);
  for (size_t i = 0; i < memory.size(); ++i) memory[i] = static_cast<uint8_t>(i / 64 * 20);
  const std::vector<uint8_t> before = memory;
  const FrameDescription description{kPixel8, kFrameInMemory, 16, 8, 64};
  host::MemoryFrame input(description, memory.data());
  host::MemoryFrame output(description, memory.data() + 64);
  context_.input = &input;
  context_.output = &output;
  const Instance effect =
      host_.Make(PassPackage({Fragment("gl_FragColor = vec4(1.0, 1.0, 1.0, 0.0);")}));
  ASSERT_EQ(ProcessFrame(*effect, context_), kOk);
  EXPECT_TRUE(std::equal(before.begin(), before.end() - 64, memory.begin() + 64));
}

}  // namespace
}  // namespace krv::test
