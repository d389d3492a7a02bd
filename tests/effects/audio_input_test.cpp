// The frame's audio as shaders see it.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "audio/audio_visual_process_fft.h"
#include "audio_block.h"
#include "effects/effect_fixture.h"

namespace krv::test {
namespace {

constexpr double kPi = 3.14159265358979323846;

std::vector<int16_t> Sine(int32_t frames, uint32_t channels, double amplitude) {
  std::vector<int16_t> samples;
  for (int32_t i = 0; i < frames; ++i) {
    const double value = amplitude * 32767.0 * std::sin(2.0 * kPi * 40.0 * i / frames);
    samples.insert(samples.end(), channels, static_cast<int16_t>(value));
  }
  return samples;
}

// Notes in which order the block is read.
class WatchedBlock final : public AudioBlock {
 public:
  uint32_t GetChannelCount() override { return order += "channels ", 1; }
  int32_t GetSampleFrames() override { return order += "frames ", 2; }
  int32_t GetSampleRate() override { return order += "rate ", 44100; }
  int64_t GetStartSample() override { return order += "start ", 0; }
  const int16_t* GetSamples() override { return order += "samples ", samples; }

  std::string order;
  int16_t samples[2] = {};
};

// Levels, the width of the spectrum and, at the place `at`, its value.
constexpr char kAudio[] =
    "#extension GL_EXT_gpu_shader4 : enable\n"
    "uniform float audio_left_db; uniform float audio_right_db; uniform sampler2D audio_tex; "
    "uniform float at;";
constexpr char kAudioExpression[] =
    "vec4(audio_left_db, audio_right_db, float(textureSize2D(audio_tex, 0).x), "
    "texture2D(audio_tex, vec2(at, 0.5)).r)";

class AudioInput : public EffectTest {
 protected:
  AudioInput() {
    Package package = ValuePackage(kAudioExpression, kAudio);
    package.description["params"] = {Param("at", kKindFloat, 0.5)};
    effect_ = host_.Make(package);
  }

  Values ShownWith(const host::FrameAudio& audio) {
    host::BorrowedAudioBlock block(audio);
    context_.audio = &block;
    const Values values = Shown(*effect_);
    context_.audio = nullptr;
    return values;
  }

  Instance effect_;
};

TEST_F(AudioInput, NoBlockIsSilenceOf1764FramesInTwoChannels) {
  EXPECT_EQ(Shown(*effect_), (Values{0, 0, 441, 0}));
}

TEST_F(AudioInput, BlockThatCannotBeUsedIsSilence) {
  const std::vector<int16_t> sine = Sine(1024, 2, 1.0);
  const Values silence = {0, 0, 441, 0};
  EXPECT_EQ(ShownWith({.samples = sine.data(), .sample_frames = 1024, .channels = 0}), silence);
  EXPECT_EQ(ShownWith({.samples = sine.data(), .sample_frames = 8, .channels = 256}), silence)
      << "only the low 8 bits of the channel count hold";
  EXPECT_EQ(ShownWith({.samples = sine.data(), .sample_frames = 0, .channels = 2}), silence);
  EXPECT_EQ(ShownWith({.samples = sine.data(), .sample_frames = 1, .channels = 2}), silence);
  EXPECT_EQ(ShownWith({.samples = sine.data(), .sample_frames = -1024, .channels = 2}), silence);
  EXPECT_EQ(ShownWith({.samples = nullptr, .sample_frames = 1024, .channels = 2}), silence);
}

TEST_F(AudioInput, ShowsTheSpectrumAndTheLevelOfTheAnalyser) {
  for (const int32_t frames : {1764, 1600, 2}) {
    const std::vector<int16_t> sine = Sine(frames, 2, 0.5);
    cv::Mat spectrum;
    float level = 0;
    AudioVisualProcessFFT().Process(spectrum, frames, 2, sine.data(), level);
    for (const int column : {0, spectrum.cols / 3, spectrum.cols - 1}) {
      context_.answers["at"] =
          Float((static_cast<float>(column) + 0.5F) / static_cast<float>(spectrum.cols));
      const Values shown =
          ShownWith({.samples = sine.data(), .sample_frames = frames, .channels = 2});
      EXPECT_EQ(shown[0], level) << frames;
      EXPECT_EQ(shown[1], level) << frames;
      EXPECT_EQ(shown[2], static_cast<float>(spectrum.cols));
      EXPECT_NEAR(shown[3] * 255, spectrum.at<cv::Vec4b>(0, column)[0], 0.01) << column;
    }
  }
}

TEST_F(AudioInput, LevelFollowsTheAudioExactly) {
  const std::vector<int16_t> loud = Sine(1764, 1, 1.0);
  const std::vector<int16_t> quiet = Sine(1764, 1, 0.001);
  const host::FrameAudio loud_audio{.samples = loud.data(), .sample_frames = 1764, .channels = 1};
  const host::FrameAudio quiet_audio{.samples = quiet.data(), .sample_frames = 1764, .channels = 1};
  context_.answers["at"] = Float(20.5F / 441.0F);  // the sine's column
  const Values loud_alone = ShownWith(loud_audio);
  context_.index = 1;
  const Values quiet_alone = ShownWith(quiet_audio);
  EXPECT_GT(loud_alone[0], quiet_alone[0]);
  EXPECT_GT(loud_alone[3], quiet_alone[3]);
  for (const int64_t index : {2, 3, 3}) {
    context_.index = index;
    EXPECT_EQ(ShownWith(loud_audio), loud_alone);
    EXPECT_EQ(ShownWith(quiet_audio), quiet_alone);
  }
}

TEST_F(AudioInput, BlockIsReadOnceInTheOrderOfItsSlots) {
  WatchedBlock block;
  context_.audio = &block;
  Shown(*effect_);
  EXPECT_EQ(block.order, "channels frames rate start samples ");
}

TEST_F(AudioInput, VeryLongBlockFitsIntoATexture) {
  const std::vector<int16_t> sine = Sine(200'000, 1, 1.0);
  const Values shown = ShownWith({.samples = sine.data(), .sample_frames = 200'000, .channels = 1});
  EXPECT_EQ(shown[2], 16384);
  EXPECT_GT(shown[0], 0);
}

}  // namespace
}  // namespace krv::test
