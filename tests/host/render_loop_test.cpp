#include "render_loop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "host/media_maker.h"
#include "media/media_error.h"

namespace krv::tool {
namespace {

// A frame as it reaches the output.
struct WrittenFrame {
  std::vector<uint8_t> pixels;
  std::vector<int16_t> samples;
  bool operator==(const WrittenFrame&) const = default;
};

WrittenFrame CopyFrame(const host::Picture& picture, const std::vector<int16_t>& samples) {
  const size_t row = static_cast<size_t>(picture.width()) * 4;
  WrittenFrame frame{std::vector<uint8_t>(row * static_cast<size_t>(picture.height())), samples};
  for (int y = 0; y < picture.height(); ++y) {
    std::memcpy(frame.pixels.data() + row * static_cast<size_t>(y), picture.Row(y), row);
  }
  return frame;
}

// Keeps the frames; runs full where it is told to.
class MemorySink final : public host::FrameSink {
 public:
  size_t room = SIZE_MAX;  // frames
  std::vector<WrittenFrame> frames;
  bool finished = false;

  void Write(const host::Picture& picture, const std::vector<int16_t>& samples) override {
    if (frames.size() == room) throw host::MediaError("the sink is full");
    frames.push_back(CopyFrame(picture, samples));
  }
  void Finish() override { finished = true; }
};

class RenderLoopTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const auto clip = media_.Make("clip.mp4", "-f lavfi -i testsrc=s=180x96:r=30:d=1 " +
                                                  host::RampSamples(48000, "stereo", 1) +
                                                  "-c:v libx264 -c:a aac ");
    RenderArguments arguments;
    arguments.inputs = {clip.string()};
    arguments.output = "out.mp4";
    options_ = ParseRenderOptions(arguments);
    std::string error;
    session_ = host::EffectSession::Create({.plugin = KRV_PLUGIN_FILE,
                                            .packages = {KRV_PACKAGES},
                                            .unique_name = "audio_visualization_bars"},
                                           &error);
    ASSERT_NE(session_, nullptr) << error;
  }

  RenderResult Run(MemorySink* sink) {
    RenderInput input(options_);
    return RenderLoop(&input, session_.get(), sink).Run([] { return false; }, [](int64_t) {});
  }

  host::MediaMaker media_;
  RenderOptions options_;
  std::unique_ptr<host::EffectSession> session_;
};

TEST_F(RenderLoopTest, FramesAreThoseOfOneStageAfterTheOther) {
  std::vector<WrittenFrame> expected;
  RenderInput input(options_);
  RenderJob job;
  while (input.Read(&job)) {
    ASSERT_TRUE(RenderFrame(input.video(), input.audio(), session_.get(), &job));
    expected.push_back(CopyFrame(job.output, job.samples));
  }
  ASSERT_EQ(expected.size(), 30u);
  ASSERT_NE(expected[3], expected[4]);

  MemorySink sink;
  const RenderResult result = Run(&sink);
  EXPECT_EQ(result.frames, 30);
  EXPECT_TRUE(sink.frames == expected);
  EXPECT_TRUE(sink.finished);
}

TEST_F(RenderLoopTest, AFullOutputEndsTheRunUnfinished) {
  MemorySink sink;
  sink.room = 7;
  try {
    Run(&sink);
    ADD_FAILURE() << "nothing was thrown";
  } catch (const host::MediaError& failure) {
    EXPECT_STREQ(failure.what(), "the sink is full");
  }
  EXPECT_EQ(sink.frames.size(), 7u);
  EXPECT_FALSE(sink.finished);
}

TEST_F(RenderLoopTest, AnInterruptEndsTheRunWithAFinishedOutput) {
  RenderInput input(options_);
  MemorySink sink;
  int drawn = 0;
  int64_t shown = 0;
  const RenderResult result =
      RenderLoop(&input, session_.get(), &sink)
          .Run([&drawn] { return ++drawn == 5; }, [&shown](int64_t frames) { shown = frames; });
  EXPECT_TRUE(result.interrupted);
  EXPECT_EQ(result.frames, 5);
  EXPECT_EQ(sink.frames.size(), 5u);
  EXPECT_TRUE(sink.finished);
  EXPECT_LE(shown, 5);
}

}  // namespace
}  // namespace krv::tool
