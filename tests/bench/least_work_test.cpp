// The limit's work does what it is measured for.
#include <gmock/gmock.h>

#include <cstring>

#include "bench/bench_scene.h"
#include "bench/least_work.h"
#include "support/gl_fixture.h"

namespace krv::tool {
namespace {

using host::DeviceUse;
using ::testing::ElementsAre;

constexpr FrameSize kSize = {96, 64};

std::vector<std::string> PartNames(const LeastWork& work) {
  std::vector<std::string> names;
  for (const LeastWork::Part& part : work.parts()) names.push_back(part.name);
  return names;
}

class LeastWorkTest : public test::GlTest {
 protected:
  std::vector<uint8_t> Pixels(HostFrame* frame) {
    std::vector<uint8_t> pixels(size_t{kSize.width} * kSize.height * 4);
    EXPECT_EQ(frame->ReadPixels(pixels.data(), kSize.width * 4), kOk);
    return pixels;
  }

  BenchScene scene_{kSize};
};

TEST_F(LeastWorkTest, InMemoryTheInputIsCopied) {
  const FrameRing frames(scene_.picture(), DeviceUse::kMemory);
  const LeastWork work({.copy = true,
                        .upload = true,
                        .passes = 2,
                        .pass_size = {48, 32},
                        .read_back = true,
                        .read_size = {48, 32}},
                       kSize, frames);
  EXPECT_THAT(PartNames(work), ElementsAre("upload", "pass1", "pass2", "read_back", "copy"));
  work.Run(1);
  EXPECT_EQ(Pixels(frames.output(1)), Pixels(frames.input(1)));
  EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
}

TEST_F(LeastWorkTest, OnTheGpuTheColourIsLaidOverTheInput) {
  const FrameRing frames(scene_.picture(), DeviceUse::kGpu);
  const LeastWork work({.passes = 1, .pass_size = {48, 32}, .blend = true}, kSize, frames);
  EXPECT_THAT(PartNames(work), ElementsAre("pass1", "blend"));
  for (int frame = 0; frame < 3; ++frame) {
    work.Run(frame);
    const auto input = Pixels(frames.input(frame));
    const auto output = Pixels(frames.output(frame));
    constexpr double kColour[] = {191.25, 127.5, 63.75, 127.5};  // blue, green, red, alpha
    for (size_t i = 0; i < input.size(); ++i) {
      ASSERT_NEAR(output[i], (input[i] + kColour[i % 4]) / 2, 1.5) << "byte " << i;
    }
  }
  EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
}

TEST_F(LeastWorkTest, ThroughGlEverythingIsUploadedAndReadBack) {
  const FrameRing frames(scene_.picture(), DeviceUse::kMemory);
  const LeastWork work({.upload = true,
                        .passes = 1,
                        .pass_size = {48, 32},
                        .blend = true,
                        .read_back = true,
                        .read_size = kSize},
                       kSize, frames);
  EXPECT_THAT(PartNames(work), ElementsAre("upload", "pass1", "blend", "read_back"));
  work.Run(0);
  EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
}

}  // namespace
}  // namespace krv::tool
