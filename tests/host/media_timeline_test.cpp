#include <gtest/gtest.h>

#include <utility>

#include "media/audio_timeline.h"
#include "media/frame_rate.h"

namespace krv::host {
namespace {

constexpr FrameRate kRates[] = {{24, 1},       {24000, 1001}, {25, 1},      {30, 1},
                                {30000, 1001}, {60, 1},       {60000, 1001}};
constexpr int kSampleRates[] = {8000, 44100, 48000, 96000};

TEST(AudioTimeline, SpansTouchForOverAnHour) {
  for (const FrameRate rate : kRates) {
    for (const int sample_rate : kSampleRates) {
      int64_t expected = 0;
      for (int64_t frame = 0; frame < int64_t{3700} * 60; ++frame) {
        const SampleSpan span = SamplesOfFrame(frame, rate, sample_rate);
        ASSERT_EQ(span.first, expected) << frame;
        expected = span.first + span.count;
      }
    }
  }
}

TEST(AudioTimeline, SpansAreAsLongAsAFrameGiveOrTakeOneSample) {
  for (const FrameRate rate : kRates) {
    for (const int sample_rate : kSampleRates) {
      const double length = sample_rate / rate.PerSecond();
      for (int64_t frame = 0; frame < 5000; ++frame) {
        ASSERT_NEAR(static_cast<double>(SamplesOfFrame(frame, rate, sample_rate).count), length,
                    1.0);
      }
    }
  }
}

TEST(AudioTimeline, NothingDriftsInHundredHours) {
  // 100 hours of 30000/1001 are not a whole number of frames; 1001 x 3600 s are.
  const int64_t seconds = int64_t{1001} * 3600;
  EXPECT_EQ(FirstSampleOfFrame(int64_t{30000} * 3600, {30000, 1001}, 48000), seconds * 48000);
  EXPECT_EQ(FirstSampleOfFrame(int64_t{60000} * 3600, {60000, 1001}, 44100), seconds * 44100);
}

TEST(AudioTimeline, FractionsAreRoundedDown) {
  // 44100 * 1001 / 30000 = 1471.47
  EXPECT_EQ(FirstSampleOfFrame(1, {30000, 1001}, 44100), 1471);
  EXPECT_EQ(FirstSampleOfFrame(2, {30000, 1001}, 44100), 2942);
  EXPECT_EQ(FirstSampleOfFrame(3, {30000, 1001}, 44100), 4414);
}

TEST(AudioTimeline, FramesForSamplesIsTheFirstFrameThatBeginsThereOrLater) {
  for (const FrameRate rate : kRates) {
    for (const int64_t samples : {0, 1, 1470, 1471, 1472, 44100, 158760000}) {
      const int64_t frames = FramesForSamples(samples, rate, 44100);
      // Compared as fractions: the frame's start is frames * den / num seconds.
      EXPECT_GE(frames * rate.denominator * 44100, samples * rate.numerator);
      EXPECT_LT((frames - 1) * rate.denominator * 44100, samples * rate.numerator);
    }
  }
}

TEST(FrameRate, TextsAreReadExactly) {
  const std::pair<const char*, FrameRate> cases[] = {
      {"30", {30, 1}},          {"30000/1001", {30000, 1001}},
      {"29.97", {30000, 1001}}, {"23.976", {24000, 1001}},
      {"23.98", {24000, 1001}}, {"59.94", {60000, 1001}},
      {"12.5", {25, 2}},        {"50/2", {25, 1}},
      {"30.000", {30, 1}},      {"1", {1, 1}},
      {"1000", {1000, 1}},
  };
  for (const auto& [text, rate] : cases) EXPECT_EQ(ParseFrameRate(text), rate) << text;
}

TEST(FrameRate, OtherTextsAreRefused) {
  for (const char* text :
       {"", "0", "-30", "1001", "30/0", "0/1", "/", "30/", "x", "30fps", "1e3", "29.9701", ".",
        "30000000000/1001", "0.5", "+30", " 30", "-0.5", "1.-5"}) {
    EXPECT_EQ(ParseFrameRate(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace krv::host
