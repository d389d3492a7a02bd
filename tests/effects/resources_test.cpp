// Long runs: nothing grows.
#include <glad/gl.h>
#include <gtest/gtest.h>

#include "effects/effect_fixture.h"
#include "platform/process.h"

namespace krv::test {
namespace {

using host::platform::ResidentBytes;

constexpr int kWarmUpFrames = 100;
constexpr int kFrames = 10000;

struct GlObjects {
  int textures = 0;
  int buffers = 0;
  int framebuffers = 0;
  int programs = 0;
  int shaders = 0;
  friend bool operator==(const GlObjects&, const GlObjects&) = default;
};

std::ostream& operator<<(std::ostream& out, const GlObjects& objects) {
  return out << objects.textures << " textures, " << objects.buffers << " buffers, "
             << objects.framebuffers << " framebuffers, " << objects.programs << " programs, "
             << objects.shaders << " shaders";
}

// The objects that live in the current context, which counts names up from 1; a frame makes fewer
// than ten.
GlObjects LiveObjects() {
  GlObjects objects;
  constexpr GLuint kNames = 10 * (kWarmUpFrames + kFrames);
  for (GLuint name = 1; name < kNames; ++name) {
    objects.textures += glIsTexture(name) ? 1 : 0;
    objects.buffers += glIsBuffer(name) ? 1 : 0;
    objects.framebuffers += glIsFramebuffer(name) ? 1 : 0;
    objects.programs += glIsProgram(name) ? 1 : 0;
    objects.shaders += glIsShader(name) ? 1 : 0;
  }
  return objects;
}

class Resources : public EffectTest {
 protected:
  static Package TwoPasses() {
    const std::string copy =
        Fragment("gl_FragColor = texture2D(background_tex, gl_FragCoord.xy / iResolution);",
                 "uniform sampler2D background_tex; uniform vec2 iResolution;");
    Package package = PassPackage({copy, copy});
    package.description["params"] = {Param("gradient_color", kKindText, "1,255,100")};
    return package;
  }

  void Run(KRVEffect& effect, int frames) {
    for (int frame = 0; frame < frames; ++frame) {
      const std::string gradient = "2,255,100;" + std::to_string(frame) + ",50";
      context_.answers["gradient_color"] = Text(gradient.c_str());
      context_.index = frame;
      ASSERT_EQ(ProcessFrame(effect, context_), kOk);
    }
  }
};

TEST_F(Resources, ManyFramesKeepMemoryAndObjects) {
  const Instance effect = host_.Make(TwoPasses());
  Run(*effect, kWarmUpFrames);
  const int64_t bytes = ResidentBytes();
  const GlObjects objects = LiveObjects();
  EXPECT_GE(objects.programs, 3);
  Run(*effect, kFrames);
  EXPECT_EQ(LiveObjects(), objects);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
  // Sanitizers keep freed blocks and a history of their own.
  EXPECT_LT(ResidentBytes() - bytes, 2 << 20);
#else
  EXPECT_GT(bytes, 0);
#endif
}

TEST_F(Resources, ManyInstancesLeaveNoObjects) {
  const std::string name = host_.Register(TwoPasses());
  const auto live_and_die = [&](bool release) {
    const Instance effect = host_.Create(name);
    ASSERT_EQ(effect->Initialize(&context_), kOk);
    Run(*effect, 2);
    if (release) effect->ReleaseResources();
  };
  for (int i = 0; i < 8; ++i) live_and_die(i % 2 == 0);
  const GlObjects objects = LiveObjects();
  for (int i = 0; i < 20; ++i) live_and_die(i % 2 == 0);
  EXPECT_EQ(LiveObjects(), objects);
  EXPECT_EQ(objects.programs, 0);
  EXPECT_EQ(host_.services().LiveFrameCount(), 0u);
}

TEST_F(Resources, FailedInitialisesLeaveNoPrograms) {
  Package package = TwoPasses();
  package.description["opengl_frag"].push_back("missing.glsl");
  const Instance effect = host_.Create(host_.Register(package));
  for (int i = 0; i < 5; ++i) EXPECT_EQ(effect->Initialize(&context_), kFailed);
  EXPECT_EQ(LiveObjects().programs, 0);
}

TEST_F(Resources, InstanceDestroyedWithoutAContextIsClearedAwayLater) {
  Instance effect = host_.Make(TwoPasses());
  Run(*effect, 2);
  const GlObjects before = LiveObjects();
  host_.gl().ClearCurrent();
  effect.reset();
  ASSERT_TRUE(host_.gl().MakeCurrent());
  EXPECT_EQ(host_.services().LiveFrameCount(), 0u);
  effect = host_.Make(TwoPasses());
  Run(*effect, 2);
  EXPECT_EQ(LiveObjects().framebuffers, before.framebuffers);
}

}  // namespace
}  // namespace krv::test
