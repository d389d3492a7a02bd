// Instances on several threads, each with an OpenGL context of its own.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "effects/effect_fixture.h"

namespace krv::test {
namespace {

constexpr int kFrames = 40;

Package TimedPackage() {
  Package package = PassPackage(
      {Fragment("gl_FragColor = vec4(fract(time_second * 0.37), gl_FragCoord.x / iResolution.x, "
                "texture2D(gradient_color_tex, vec2(0.5)).b, 0.5);",
                "uniform float time_second; uniform vec2 iResolution; "
                "uniform sampler2D gradient_color_tex; uniform float unused;"),
       Fragment("gl_FragColor = texture2D(background_tex, gl_FragCoord.xy / iResolution);",
                "uniform sampler2D background_tex; uniform vec2 iResolution;")});
  package.description["params"] = {Param("gradient_color", kKindText, "1,255,100")};
  return package;
}

std::vector<uint8_t> Rendered(KRVEffect& effect, int frame) {
  host::MemoryFrame input(32 + frame % 3, 24, kPixel8);
  host::MemoryFrame output(32 + frame % 3, 24, kPixel8);
  FillWithPattern(input);
  TestContext context;
  context.index = frame;
  context.input = &input;
  context.output = &output;
  EXPECT_EQ(ProcessFrame(effect, context), kOk);
  return BytesOf(output);
}

// The frames from `first` on, in a context made for the calling thread.
std::vector<std::vector<uint8_t>> RenderedInAContextOfItsOwn(KRVEffect& effect, int first) {
  std::string error;
  const auto gl = host::GlContext::Create(host::GlContext::Renderer::kSoftware, &error);
  if (gl == nullptr || !gl->MakeCurrent()) {
    ADD_FAILURE() << error;
    return {};
  }
  TestContext context;
  EXPECT_EQ(effect.Initialize(&context), kOk);
  std::vector<std::vector<uint8_t>> pictures;
  for (int frame = first; frame < first + kFrames; ++frame) {
    pictures.push_back(Rendered(effect, frame));
  }
  EXPECT_EQ(effect.ReleaseResources(), kOk);
  gl->ClearCurrent();
  return pictures;
}

TEST(Threads, TwoInstancesOnTwoThreadsDrawAsAlone) {
  EffectHost host;
  const std::string name = host.Register(TimedPackage());
  const Instance alone = host.Create(name);
  TestContext context;
  ASSERT_EQ(alone->Initialize(&context), kOk);
  std::vector<std::vector<uint8_t>> expected;
  for (int frame = 0; frame < 2 * kFrames; ++frame) expected.push_back(Rendered(*alone, frame));

  const Instance first = host.Create(name);
  const Instance second = host.Create(name);
  std::vector<std::vector<uint8_t>> first_pictures;
  std::vector<std::vector<uint8_t>> second_pictures;
  std::thread first_thread([&] { first_pictures = RenderedInAContextOfItsOwn(*first, 0); });
  std::thread second_thread(
      [&] { second_pictures = RenderedInAContextOfItsOwn(*second, kFrames); });
  first_thread.join();
  second_thread.join();

  first_pictures.insert(first_pictures.end(), second_pictures.begin(), second_pictures.end());
  EXPECT_EQ(first_pictures, expected);
}

TEST(Threads, UniformsMayBeSetFromAnotherThreadDuringFrames) {
  EffectHost host;
  const Instance effect = host.Make(TimedPackage());
  std::vector<std::vector<uint8_t>> expected;
  for (int frame = 0; frame < kFrames; ++frame) expected.push_back(Rendered(*effect, frame));

  std::atomic<bool> done = false;
  std::thread setter([&] {
    for (int i = 0; !done; ++i) {
      const ParameterValue value = Float(static_cast<float>(i));
      effect->SetUniform("unused", &value);
    }
  });
  for (int frame = 0; frame < kFrames; ++frame)
    EXPECT_EQ(Rendered(*effect, frame), expected[frame]);
  done = true;
  setter.join();
}

TEST(Threads, InstancesInTwoContextsTakeUniformsFromAThirdThread) {
  EffectHost host;
  const std::string name = host.Register(TimedPackage());
  const Instance first = host.Create(name);
  const Instance second = host.Create(name);
  std::atomic<int> running = 2;
  std::vector<std::vector<uint8_t>> first_pictures;
  std::vector<std::vector<uint8_t>> second_pictures;
  std::thread first_thread([&] {
    first_pictures = RenderedInAContextOfItsOwn(*first, 0);
    --running;
  });
  std::thread second_thread([&] {
    second_pictures = RenderedInAContextOfItsOwn(*second, 0);
    --running;
  });
  for (int i = 0; running > 0; ++i) {
    const ParameterValue value = Float(static_cast<float>(i));
    first->SetUniform("unused", &value);
    second->SetUniform("unused", &value);
    std::this_thread::yield();
  }
  first_thread.join();
  second_thread.join();
  EXPECT_EQ(first_pictures, second_pictures);
}

}  // namespace
}  // namespace krv::test
