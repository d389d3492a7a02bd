#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/media_maker.h"
#include "media/audio_reader.h"
#include "media/audio_timeline.h"
#include "media/media_error.h"
#include "media/video_reader.h"

namespace krv::host {
namespace {

constexpr char kVideo[] = "-f lavfi -i color=s=32x32:r=25:d=2 ";

class AudioReaderTest : public ::testing::Test {
 protected:
  MediaMaker maker_;
};

// Every sample of the first `count` against `expected(n)`, on all channels.
template <class F>
void ExpectSamples(AudioReader* reader, int64_t count, F&& expected) {
  std::vector<int16_t> samples;
  ASSERT_EQ(reader->Read(0, count, &samples), count);
  const int channels = reader->channels();
  ASSERT_EQ(static_cast<int64_t>(samples.size()), count * channels);
  for (size_t i = 0; i < samples.size(); ++i) {
    const auto n = static_cast<int64_t>(i) / channels;
    ASSERT_EQ(samples[i], expected(n)) << "sample " << n;
  }
}

TEST_F(AudioReaderTest, LosslessSamplesComeAsTheyAre) {
  for (const int rate : {44100, 48000, 96000}) {
    for (const auto& [layout, channels] : {std::pair("mono", 1), {"stereo", 2}, {"5.1", 6}}) {
      for (const auto& [name, codec] :
           {std::pair("a.wav", "pcm_s16le"), {"a.flac", "flac"}, {"a.mkv", "pcm_s16le"}}) {
        AudioReader reader(
            maker_.Make(name, RampSamples(rate, layout, 1.5) + "-c:a " + codec + " "));
        EXPECT_EQ(reader.sample_rate(), rate);
        EXPECT_EQ(reader.channels(), channels);
        ExpectSamples(&reader, int64_t{rate} * 3 / 2, RampSample);
      }
    }
  }
}

TEST_F(AudioReaderTest, FramesOfSamplesJoinWithoutASeam) {
  AudioReader reader(maker_.Make("a.flac", RampSamples(44100, "stereo", 5)));
  constexpr size_t kValues = size_t{44100} * 5 * 2;
  std::vector<int16_t> all;
  std::vector<int16_t> samples;
  for (int64_t frame = 0;; ++frame) {
    const SampleSpan span = SamplesOfFrame(frame, {30000, 1001}, 44100);
    if (reader.Read(span.first, span.count, &samples) == 0) break;
    all.insert(all.end(), samples.begin(), samples.end());
  }
  ASSERT_GE(all.size(), kValues);
  for (size_t i = 0; i < kValues; ++i) {
    ASSERT_EQ(all[i], RampSample(static_cast<int64_t>(i / 2))) << i;
  }
}

TEST_F(AudioReaderTest, AfterTheEndComesSilenceAndThenNothing) {
  AudioReader reader(maker_.Make("a.wav", RampSamples(8000, "mono", 1)));
  std::vector<int16_t> samples;
  EXPECT_EQ(reader.Read(7990, 20, &samples), 10);
  EXPECT_EQ(samples[9], RampSample(7999));
  EXPECT_EQ(samples[10], 0);
  EXPECT_EQ(samples.size(), 20u);
  EXPECT_EQ(reader.Read(8010, 20, &samples), 0);
  EXPECT_EQ(samples, std::vector<int16_t>(20, 0));
}

TEST_F(AudioReaderTest, SkippedSamplesAreNotHeldAgainstTheRest) {
  AudioReader reader(maker_.Make("a.flac", RampSamples(48000, "stereo", 20)));
  std::vector<int16_t> samples;
  EXPECT_EQ(reader.Read(100, 10, &samples), 10);
  EXPECT_EQ(samples[0], RampSample(100));
  EXPECT_EQ(reader.Read(800'001, 2, &samples), 2);
  EXPECT_EQ(samples[2], RampSample(800'002));
}

TEST_F(AudioReaderTest, SoundThatBeginsLateIsPrecededBySilence) {
  const auto path = maker_.Make("a.mov", std::string(kVideo) + "-itsoffset 0.5 " +
                                             RampSamples(48000, "stereo", 1) + "-c:a pcm_s16le ");
  AudioReader reader(path, VideoReader(path).origin());
  ExpectSamples(&reader, 72000,
                [](int64_t n) { return n < 24000 ? int16_t{0} : RampSample(n - 24000); });
}

TEST_F(AudioReaderTest, SoundBeforeTheFirstPictureIsDropped) {
  const auto path = maker_.Make("a.mkv", std::string("-itsoffset 0.4 ") + kVideo +
                                             RampSamples(48000, "stereo", 2) +
                                             "-vsync passthrough -c:a pcm_s16le ");
  AudioReader reader(path, VideoReader(path).origin());
  ExpectSamples(&reader, 72000, [](int64_t n) { return RampSample(n + 19200); });
}

TEST_F(AudioReaderTest, RoundedTimestampsTearNothingApart) {
  // Matroska rounds to milliseconds, which 1024 samples of 44100 Hz never are.
  AudioReader reader(maker_.Make("a.mkv", RampSamples(44100, "stereo", 5) + "-c:a pcm_s16le "));
  ExpectSamples(&reader, int64_t{44100} * 5, RampSample);
}

TEST_F(AudioReaderTest, GapsAreSilent) {
  const auto path =
      maker_.Make("a.mkv",
                  "-f lavfi -i \"aevalsrc='(mod(n,65536)-32768)/32768':s=48000:d=2,"
                  "asetnsamples=480,aselect='not(between(t,0.5,0.995))'\" -c:a pcm_s16le ");
  AudioReader reader(path);
  ExpectSamples(&reader, 96000,
                [](int64_t n) { return n >= 24000 && n < 48000 ? int16_t{0} : RampSample(n); });
}

TEST_F(AudioReaderTest, LossyCodecsKeepTheTime) {
  const std::pair<const char*, const char*> cases[] = {
      {"a.m4a", "-c:a aac -b:a 320k "},          {"a.mp3", "-c:a libmp3lame -b:a 320k "},
      {"a.ogg", "-strict -2 -c:a vorbis -q 9 "}, {"a.opus", "-c:a libopus -b:a 256k "},
      {"b.mkv", "-c:a libopus -b:a 256k "},      {"a.ac3", "-c:a ac3 -b:a 640k "},
  };
  for (const auto& [name, codec] : cases) {
    AudioReader reader(maker_.Make(name, ClickSamples(48000, "stereo", 2, 50123) + codec));
    std::vector<int16_t> samples;
    ASSERT_GT(reader.Read(0, 96000, &samples), 90000) << name;
    // The AC-3 file format has no place for the encoder's delay of 256 samples.
    const int64_t delay = std::string(name) == "a.ac3" ? 256 : 0;
    EXPECT_EQ(LoudestSample(samples, 2), 50123 + delay) << name;
  }
}

TEST_F(AudioReaderTest, SoundOfAMovieKeepsItsTimeToThePictures) {
  for (const char* name : {"a.mp4", "a.mkv", "a.mov"}) {
    const auto path =
        maker_.Make(name, kVideo + ClickSamples(44100, "stereo", 2, 50123) + "-c:a aac -b:a 320k ");
    AudioReader reader(path, VideoReader(path).origin());
    std::vector<int16_t> samples;
    ASSERT_GT(reader.Read(0, 80000, &samples), 0) << name;
    // Matroska keeps milliseconds: 22 samples.
    EXPECT_NEAR(static_cast<double>(LoudestSample(samples, 2)), 50123,
                std::string(name) == "a.mkv" ? 44.1 : 0)
        << name;
  }
}

TEST_F(AudioReaderTest, FilesWithoutSoundAreRefused) {
  const auto silent = maker_.Make("a.mp4", kVideo);
  EXPECT_THAT([&] { AudioReader reader(silent); },
              ::testing::ThrowsMessage<MediaError>(silent.string() + ": no audio stream"));
}

}  // namespace
}  // namespace krv::host
