// What a frame looks like depends on its inputs, parameters and time alone.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "audio_block.h"
#include "effects/effect_fixture.h"

namespace krv::test {
namespace {

constexpr int32_t kWidth = 80;
constexpr int32_t kHeight = 60;
constexpr int kFrames = 6;

class Repeatability : public EffectTest {
 protected:
  Repeatability() : samples_(static_cast<size_t>(kFrames) * 1764) {
    for (size_t i = 0; i < samples_.size(); ++i) {
      const double t = static_cast<double>(i) / 44100.0;
      samples_[i] = static_cast<int16_t>(20000 * std::sin(t * 2000.0 * (1.0 + t)));
    }
  }

  // Everything that an effect is fed with is in the picture: time, audio, gradient, background.
  static Package EverythingPackage() {
    Package package = PassPackage(
        {Fragment("vec2 p = gl_FragCoord.xy / iResolution; "
                  "float bar = texture2D(audio_tex, vec2(p.x, 0.5)).r; "
                  "vec4 g = texture2D(gradient_color_tex, vec2(bar, 0.5)); "
                  "gl_FragColor = vec4(g.rgb, p.y < bar ? 0.8 : fract(time_second + v) * 0.5);",
                  "uniform vec2 iResolution; uniform sampler2D audio_tex; "
                  "uniform sampler2D gradient_color_tex; uniform float time_second; "
                  "uniform float v;"),
         Fragment("vec2 p = gl_FragCoord.xy / iResolution; vec4 b = texture2D(background_tex, p); "
                  "gl_FragColor = b.bgra * vec4(1.0, 1.0, audio_left_db / 150.0, 1.0);",
                  "uniform vec2 iResolution; uniform sampler2D background_tex; "
                  "uniform float audio_left_db;")});
    package.description["params"] = {
        Param("gradient_color", kKindText, "3,16711680,0;65280,50;255,100"),
        Param("v", kKindFloat, 0)};
    return package;
  }

  std::vector<uint8_t> Rendered(KRVEffect& effect, int frame) {
    host::MemoryFrame input(kWidth, kHeight, kPixel8);
    host::MemoryFrame output(kWidth, kHeight, kPixel8);
    FillWithPattern(input);
    host::BorrowedAudioBlock audio({.samples = samples_.data() + frame * 1764,
                                    .sample_frames = 1764 - 100 * (frame % 2),
                                    .channels = 1});
    TestContext context;
    context.index = frame;
    context.input = &input;
    context.output = &output;
    context.audio = &audio;
    context.answers["v"] = Float(static_cast<float>(frame) * 0.3F);
    EXPECT_EQ(ProcessFrame(effect, context), kOk);
    return BytesOf(output);
  }

  std::vector<std::vector<uint8_t>> RenderedAlone() {
    std::vector<std::vector<uint8_t>> pictures;
    for (int frame = 0; frame < kFrames; ++frame) {
      pictures.push_back(Rendered(*host_.Make(EverythingPackage()), frame));
    }
    return pictures;
  }

  std::vector<int16_t> samples_;
};

TEST_F(Repeatability, FramesDiffer) {
  const auto pictures = RenderedAlone();
  for (int frame = 1; frame < kFrames; ++frame) EXPECT_NE(pictures[0], pictures[frame]) << frame;
}

TEST_F(Repeatability, FrameInsideARunIsTheFrameAlone) {
  const auto alone = RenderedAlone();
  const Instance effect = host_.Make(EverythingPackage());
  for (int frame = 0; frame < kFrames; ++frame) {
    EXPECT_EQ(Rendered(*effect, frame), alone[frame]) << frame;
  }
}

TEST_F(Repeatability, OrderDoesNotMatter) {
  const auto alone = RenderedAlone();
  const Instance effect = host_.Make(EverythingPackage());
  for (const int frame : {5, 4, 3, 2, 1, 0, 3, 3, 0, 5}) {
    EXPECT_EQ(Rendered(*effect, frame), alone[frame]) << frame;
  }
}

TEST_F(Repeatability, FailedFrameInBetweenDoesNotMatter) {
  const auto alone = RenderedAlone();
  const Instance effect = host_.Make(EverythingPackage());
  EXPECT_EQ(Rendered(*effect, 0), alone[0]);
  context_.input = nullptr;
  EXPECT_EQ(ProcessFrame(*effect, context_), kFailed);
  EXPECT_EQ(Rendered(*effect, 1), alone[1]);
}

TEST_F(Repeatability, InterleavedInstancesDoNotTouchEachOther) {
  const auto alone = RenderedAlone();
  const std::string name = host_.Register(EverythingPackage());
  const Instance first = host_.Create(name);
  const Instance second = host_.Create(name);
  EXPECT_EQ(first->Initialize(&context_), kOk);
  EXPECT_EQ(second->Initialize(&context_), kOk);
  for (int frame = 0; frame < kFrames; ++frame) {
    EXPECT_EQ(Rendered(*first, frame), alone[frame]) << frame;
    EXPECT_EQ(Rendered(*second, kFrames - 1 - frame), alone[kFrames - 1 - frame]) << frame;
  }
}

}  // namespace
}  // namespace krv::test
