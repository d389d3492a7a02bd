#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/media_maker.h"
#include "progress.h"
#include "render_input.h"

namespace krv::tool {
namespace {

TEST(ProgressText, ShowsTheShareTheRateAndTheTimeLeft) {
  EXPECT_EQ(ProgressText(150, 300, 5),
            "[###############...............]  50%  150 of 300 frames  30.0 fps  0:05 left");
  EXPECT_EQ(ProgressText(300, 300, 10),
            "[##############################] 100%  300 of 300 frames  30.0 fps  0:00 left");
  EXPECT_EQ(ProgressText(0, 300, 0),
            "[..............................]   0%  0 of 300 frames  0.0 fps");
}

TEST(ProgressText, LongTimesHaveHours) {
  EXPECT_THAT(ProgressText(1, 7262, 1), ::testing::EndsWith("  2:01:01 left"));
}

TEST(ProgressText, WithoutATotalThereIsNoBar) {
  EXPECT_EQ(ProgressText(90, -1, 3), "90 frames  30.0 fps");
}

TEST(ProgressText, MoreFramesThanExpectedStayAtTheEndOfTheBar) {
  EXPECT_EQ(ProgressText(303, 300, 10.1),
            "[##############################] 100%  303 of 300 frames  30.0 fps  0:00 left");
}

RenderArguments Arguments(const std::filesystem::path& input) {
  RenderArguments arguments;
  arguments.inputs = {input.string()};
  arguments.output = "out.mp4";
  return arguments;
}

TEST(RenderInput, EveryFrameGetsTheSamplesOfItsTimeSpanAndNoOthers) {
  const host::MediaMaker media;
  for (const int sample_rate : {44100, 48000}) {
    for (const char* rate : {"24", "30000/1001", "60"}) {
      const auto path = media.Make("a.mov", host::NumberedFrames(rate, 2) +
                                                host::RampSamples(sample_rate, "stereo", 2) +
                                                "-c:v libx264 -qp 0 -c:a pcm_s16le ");
      RenderInput input(ParseRenderOptions(Arguments(path)));
      const host::FrameRate exact = *host::ParseFrameRate(rate);
      RenderJob job;
      int64_t expected = 0;
      while (input.Read(&job)) {
        ASSERT_EQ(host::ReadNumber(job.input), job.index);
        ASSERT_EQ(static_cast<int64_t>(job.samples.size()), job.span.count * 2);
        // The first sample is under way when the frame begins.
        ASSERT_EQ(job.span.first, job.index * sample_rate * exact.denominator / exact.numerator);
        for (int64_t i = 0; i < job.span.count; ++i, ++expected) {
          if (expected >= int64_t{2} * sample_rate) break;
          ASSERT_EQ(job.samples[static_cast<size_t>(2 * i + 1)], host::RampSample(expected))
              << "frame " << job.index;
        }
      }
      EXPECT_GE(expected, int64_t{2} * sample_rate - 1) << rate;
    }
  }
}

TEST(RenderInput, ARangeHasTheSamplesOfItsFrames) {
  const host::MediaMaker media;
  RenderArguments arguments = Arguments(media.Make("a.flac", host::RampSamples(44100, "mono", 3)));
  arguments.rate = "29.97";
  arguments.frames = "40:42";
  arguments.size = "16x16";
  RenderInput input(ParseRenderOptions(arguments));
  EXPECT_EQ(input.ExpectedFrames(), 2);
  RenderJob job;
  ASSERT_TRUE(input.Read(&job));
  EXPECT_EQ(job.index, 40);
  EXPECT_EQ(job.samples.front(), host::RampSample(58858));  // floor(40 * 44100 * 1001 / 30000)
  ASSERT_TRUE(input.Read(&job));
  EXPECT_EQ(job.index, 41);
  EXPECT_EQ(job.samples.front(), host::RampSample(60330));
  EXPECT_FALSE(input.Read(&job));
}

}  // namespace
}  // namespace krv::tool
