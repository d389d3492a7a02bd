#include "audio/audio_visual_process_fft.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <memory>
#include <string>

#include "audio/reference_spectrum.h"
#include "audio/test_signals.h"

namespace krv {
namespace {

using test::AnalyseByDefinition;
using test::MakeBlock;
using test::MakeNoise;
using test::SineAt;
using test::WithQuietNoise;

struct Analysis {
  cv::Mat image;
  float level = -1.0f;
};

Analysis Analyse(AudioVisualProcess& analyser, const std::vector<int16_t>& samples, int channels) {
  Analysis result;
  analyser.Process(result.image, static_cast<int32_t>(samples.size()) / channels,
                   static_cast<uint8_t>(channels), samples.data(), result.level);
  return result;
}

Analysis Analyse(const std::vector<int16_t>& samples, int channels) {
  AudioVisualProcessFFT analyser;
  return Analyse(analyser, samples, channels);
}

int PixelAt(const cv::Mat& image, int x) { return image.at<cv::Vec4b>(0, x)[0]; }

// The red bytes; green and blue must agree with them, and alpha must be 255.
std::vector<int> PixelsOf(const cv::Mat& image) {
  EXPECT_EQ(image.type(), CV_8UC4);
  EXPECT_EQ(image.rows, 1);
  std::vector<int> pixels;
  for (int x = 0; x < image.cols; ++x) {
    const int byte = PixelAt(image, x);
    EXPECT_EQ(image.at<cv::Vec4b>(0, x), cv::Vec4b(byte, byte, byte, 255)) << "x " << x;
    pixels.push_back(byte);
  }
  return pixels;
}

double LevelOfMean(double db) { return (db + 150.0) / 180.0 * 100.0 + 50.0; }

// The reference works in double. Rounding in the single-precision transform lies some 180 dB below
// full scale; that moves a value by far less than the 0.59 dB of a byte, but where a value sits on
// the border of two bytes, truncation gives one or the other. The mean over 20 pixels then moves
// by at most 1.
void ExpectLikeReference(const std::vector<int16_t>& samples, int channels) {
  const test::ReferenceSpectrum reference = AnalyseByDefinition(samples, channels);
  const Analysis result = Analyse(samples, channels);
  const std::vector<int> pixels = PixelsOf(result.image);
  ASSERT_EQ(pixels.size(), reference.pixels.size());
  for (size_t x = 0; x < pixels.size(); ++x) {
    EXPECT_LE(std::abs(pixels[x] - reference.pixels[x]), 1)
        << "x " << x << ", result " << pixels[x] << ", reference " << int{reference.pixels[x]};
  }
  EXPECT_NEAR(result.level, reference.level, 0.001);
}

TEST(AudioVisualProcessFFT, SineMatchesTheDefinition) {
  for (const int bin : {1, 3, 88, 89, 440, 880}) {
    SCOPED_TRACE("bin " + std::to_string(bin));
    const auto sine = MakeBlock(1764, 1, [bin](int i, int) { return SineAt(i, 1764, bin); });
    ExpectLikeReference(WithQuietNoise(sine), 1);
  }
}

TEST(AudioVisualProcessFFT, ImpulseMatchesTheDefinition) {
  ExpectLikeReference(MakeBlock(1764, 1, [](int i, int) { return i == 700 ? 1.0 : 0.0; }), 1);
  ExpectLikeReference(MakeBlock(1764, 1, [](int i, int) { return i == 3 ? -1.0 : 0.0; }), 1);
}

TEST(AudioVisualProcessFFT, NoiseMatchesTheDefinition) {
  ExpectLikeReference(MakeNoise(1764, 1, 1), 1);
  ExpectLikeReference(MakeNoise(1920, 1, 2), 1);
}

TEST(AudioVisualProcessFFT, StereoIsTheMeanOfBothChannels) {
  ExpectLikeReference(MakeNoise(1764, 2, 3), 2);
  const auto left = MakeBlock(800, 2, [](int i, int c) { return c == 0 ? SineAt(i, 800, 20) : 0; });
  ExpectLikeReference(WithQuietNoise(left), 2);
}

TEST(AudioVisualProcessFFT, SurroundIsTheMeanOfAllChannels) {
  ExpectLikeReference(MakeNoise(1764, 6, 4), 6);
  const auto last =
      MakeBlock(1602, 6, [](int i, int c) { return c == 5 ? SineAt(i, 1602, 9) : 0; });
  ExpectLikeReference(WithQuietNoise(last), 6);
}

TEST(AudioVisualProcessFFT, MostChannelsOfAByteMatchTheDefinition) {
  ExpectLikeReference(MakeNoise(64, 255, 5), 255);
}

TEST(AudioVisualProcessFFT, EveryBlockLengthMatchesTheDefinition) {
  for (const int frames : {2,  3,  4,  5,  6,  7,   8,   9,   12,  37,   38,   39,  40,
                           41, 77, 78, 79, 80, 127, 735, 800, 801, 1001, 1471, 1601}) {
    SCOPED_TRACE("frames " + std::to_string(frames));
    ExpectLikeReference(MakeNoise(frames, 1, 6), 1);
  }
}

TEST(AudioVisualProcessFFT, BlockOf1764FramesGives441Pixels) {
  EXPECT_EQ(Analyse(MakeNoise(1764, 2, 7), 2).image.size(), cv::Size(441, 1));
}

TEST(AudioVisualProcessFFT, BlocksOfTwoToFourFramesGiveOnePixel) {
  for (const int frames : {2, 3, 4}) {
    EXPECT_EQ(Analyse(MakeNoise(frames, 1, 8), 1).image.size(), cv::Size(1, 1)) << frames;
  }
}

TEST(AudioVisualProcessFFT, SilenceIsBlackAndOpaqueWithLevelZero) {
  const Analysis result = Analyse(std::vector<int16_t>(2 * 1764), 2);
  EXPECT_EQ(PixelsOf(result.image), std::vector<int>(441, 0));
  EXPECT_EQ(result.level, 0.0f);
}

TEST(AudioVisualProcessFFT, OppositeChannelsMixToSilence) {
  const auto noise = MakeNoise(1764, 1, 9);
  std::vector<int16_t> samples;
  for (const int16_t sample : noise) {
    samples.push_back(sample);
    samples.push_back(static_cast<int16_t>(-sample));
  }
  const Analysis result = Analyse(samples, 2);
  EXPECT_EQ(PixelsOf(result.image), std::vector<int>(441, 0));
  EXPECT_EQ(result.level, 0.0f);
}

// A sine of 4 frames a period has samples without rounding error, so its bin is the only one above
// the floor: the level is that bin's own.
TEST(AudioVisualProcessFFT, FullScaleSineOnAnEvenBinIs12DbBelowFullScale) {
  const auto sine = MakeBlock(1600, 1, [](int i, int) { return SineAt(i % 4, 4, 1); });
  const Analysis result = Analyse(sine, 1);
  EXPECT_NEAR(result.level, LevelOfMean(-12.04), 0.005);

  // Byte 234 at bin 200, spread over the 20 pixels whose mean covers it.
  std::vector<int> expected(400, 0);
  for (size_t x = 191; x <= 210; ++x) expected[x] = 12;
  EXPECT_EQ(PixelsOf(result.image), expected);
}

// One pixel is its own mean, so the byte shows as it was before the blur. A constant of 1/2 has
// the mean 1/4 under the window: the level of a full-scale sine.
TEST(AudioVisualProcessFFT, TwelveDbBelowFullScaleIsByte234) {
  for (const int frames : {2, 3, 4}) {
    const Analysis result = Analyse(std::vector<int16_t>(static_cast<size_t>(frames), 16384), 1);
    EXPECT_EQ(PixelsOf(result.image), std::vector<int>{234}) << frames;
    EXPECT_NEAR(result.level, LevelOfMean(-12.0412), 0.001) << frames;
  }
}

TEST(AudioVisualProcessFFT, SineOnAnOddBinShowsInBothNeighboursAtHalfItsHeight) {
  const auto sine = MakeBlock(1604, 1, [](int i, int) { return SineAt(i % 4, 4, 1); });
  const Analysis result = Analyse(sine, 1);  // bin 401
  EXPECT_NEAR(result.level, LevelOfMean(-18.06), 0.005);

  // Twice byte 224, at bins 200 and 201.
  std::vector<int> expected(401, 0);
  expected[191] = expected[211] = 11;
  for (size_t x = 192; x <= 210; ++x) expected[x] = 22;
  EXPECT_EQ(PixelsOf(result.image), expected);
}

TEST(AudioVisualProcessFFT, LevelIsFiftyAtTheFloorAndRises100In180Db) {
  // Two frames have the window 0, 1: a constant's magnitude is half of it.
  const auto level_of = [](int16_t value) { return Analyse({value, value}, 1).level; };
  const auto expected = [](double amplitude) {
    return static_cast<float>(LevelOfMean(20.0 * std::log10(amplitude)));
  };
  EXPECT_FLOAT_EQ(level_of(1), expected(0.5 / 32768));  // the quietest sound there is
  EXPECT_FLOAT_EQ(level_of(66), expected(33.0 / 32768));
  EXPECT_FLOAT_EQ(level_of(-32768), expected(0.5));  // the loudest: above 130, not limited
}

TEST(AudioVisualProcessFFT, NewBlockLengthChangesTheWidth) {
  AudioVisualProcessFFT analyser;
  EXPECT_EQ(Analyse(analyser, MakeNoise(1764, 1, 10), 1).image.cols, 441);
  EXPECT_EQ(Analyse(analyser, MakeNoise(1600, 1, 10), 1).image.cols, 400);
  EXPECT_EQ(Analyse(analyser, MakeNoise(1764, 1, 10), 1).image.cols, 441);
}

TEST(AudioVisualProcessFFT, NothingCarriesOverBetweenBlocks) {
  AudioVisualProcessFFT analyser;
  for (const int frames : {1601, 1602, 1601, 1601, 2, 1764}) {
    Analyse(analyser, MakeNoise(frames, 2, 11), 2);
    const auto block = MakeNoise(frames, 1, 12);
    const Analysis used = Analyse(analyser, block, 1);
    const Analysis fresh = Analyse(block, 1);
    EXPECT_EQ(PixelsOf(used.image), PixelsOf(fresh.image)) << frames;
    EXPECT_EQ(used.level, fresh.level) << frames;
  }
}

TEST(AudioVisualProcessFFT, EarlierImagesKeepTheirPixels) {
  AudioVisualProcessFFT analyser;
  cv::Mat image;
  float level = 0.0f;
  const auto noise = MakeNoise(64, 1, 13);
  analyser.Process(image, 64, 1, noise.data(), level);
  const cv::Mat earlier = image;
  const std::vector<int> pixels = PixelsOf(earlier);
  const std::vector<int16_t> silence(64);
  analyser.Process(image, 64, 1, silence.data(), level);
  EXPECT_EQ(PixelsOf(earlier), pixels);
  EXPECT_NE(PixelsOf(image), pixels);
}

TEST(AudioVisualProcessFFT, BlockThatIsNoneGivesAnEmptyImageAndLevelZero) {
  AudioVisualProcessFFT analyser;
  const auto noise = MakeNoise(64, 2, 14);
  struct {
    int32_t frames;
    uint8_t channels;
    const int16_t* samples;
  } const blocks[] = {{0, 2, noise.data()},  {1, 2, noise.data()},         {-1, 2, noise.data()},
                      {64, 0, noise.data()}, {INT32_MIN, 2, noise.data()}, {64, 2, nullptr}};
  for (const auto& block : blocks) {
    cv::Mat image(1, 8, CV_8UC4, cv::Scalar::all(7));
    float level = 3.0f;
    analyser.Process(image, block.frames, block.channels, block.samples, level);
    EXPECT_TRUE(image.empty()) << block.frames << " frames, " << int{block.channels} << " channels";
    EXPECT_EQ(level, 0.0f);
  }
  EXPECT_EQ(PixelsOf(Analyse(analyser, noise, 2).image), PixelsOf(Analyse(noise, 2).image));
}

TEST(AudioVisualProcessFFT, AnalyserIsFreedThroughItsInterface) {
  std::unique_ptr<AudioVisualProcess> analyser = std::make_unique<AudioVisualProcessFFT>();
  EXPECT_EQ(Analyse(*analyser, MakeNoise(64, 1, 15), 1).image.cols, 16);
  analyser.reset();  // the leak checker sees what this leaves behind
}

}  // namespace
}  // namespace krv
