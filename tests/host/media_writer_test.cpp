#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "host/media_maker.h"
#include "host/media_probe.h"
#include "media/audio_reader.h"
#include "media/audio_timeline.h"
#include "media/media_error.h"
#include "media/media_writer.h"
#include "media/still_source.h"
#include "media/video_reader.h"

namespace krv::host {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr AudioFormat kStereo48k{48000, 2, 0};

class MediaWriterTest : public ::testing::Test {
 protected:
  MovieSettings Settings(const char* name, bool transparent = false) {
    MovieSettings settings;
    settings.output = ChooseOutputFormat(name, transparent);
    settings.video = {64, 48, {30, 1}, 1, 1};
    settings.audio = kStereo48k;
    return settings;
  }

  // Writes frames of one colour with a click at one position of the sound.
  std::filesystem::path WriteMovie(const char* name, const MovieSettings& settings, int frames,
                                   int64_t click = -1) {
    auto path = maker_.folder() / name;
    MediaWriter writer(path, settings);
    Picture picture(settings.video.width, settings.video.height);
    picture.Fill(0x14, 0x32, 0xC8, 255);
    for (int frame = 0; frame < frames; ++frame) {
      writer.Write(picture, Samples(settings, frame, click));
    }
    writer.Finish();
    return path;
  }

  static std::vector<int16_t> Samples(const MovieSettings& settings, int frame, int64_t click) {
    const AudioFormat& audio = settings.audio;
    const SampleSpan span = SamplesOfFrame(frame, settings.video.rate, audio.sample_rate);
    std::vector<int16_t> samples(static_cast<size_t>(span.count * audio.channels), 0);
    if (click >= span.first && click < span.first + span.count) {
      for (int channel = 0; channel < audio.channels; ++channel) {
        samples[static_cast<size_t>((click - span.first) * audio.channels + channel)] = 30000;
      }
    }
    return samples;
  }

  MediaMaker maker_;
};

TEST_F(MediaWriterTest, MoviesHaveTheCodecsOfTheirContainer) {
  struct Case {
    const char* name;
    bool transparent;
    const char* video;
    const char* audio;
  };
  const Case cases[] = {
      {"a.mp4", false, "h264", "aac"},  {"a.mkv", false, "h264", "aac"},
      {"a.mov", false, "h264", "aac"},  {"a.webm", false, "vp9", "opus"},
      {"b.mov", true, "prores", "aac"}, {"b.webm", true, "vp9", "opus"},
  };
  for (const Case& c : cases) {
    const auto path = WriteMovie(c.name, Settings(c.name, c.transparent), 45);
    const StreamFacts video = ProbeStream(path, StreamKind::kVideo);
    EXPECT_EQ(video.codec, c.video) << c.name;
    EXPECT_EQ(video.width, 64) << c.name;
    EXPECT_EQ(video.height, 48) << c.name;
    EXPECT_EQ(video.frames, 45) << c.name;
    EXPECT_DOUBLE_EQ(video.frame_rate, 30.0) << c.name;
    EXPECT_NEAR(video.container_seconds, 1.5, 0.03) << c.name;
    const StreamFacts audio = ProbeStream(path, StreamKind::kAudio);
    EXPECT_EQ(audio.codec, c.audio) << c.name;
    EXPECT_EQ(audio.sample_rate, 48000) << c.name;
    EXPECT_EQ(audio.channels, 2) << c.name;
  }
  EXPECT_THAT(maker_.Files(), ElementsAre("a.mkv", "a.mov", "a.mp4", "a.webm", "b.mov", "b.webm"));
}

TEST_F(MediaWriterTest, OddFrameRatesAreKeptExactly) {
  for (const char* name : {"a.mp4", "a.mov"}) {
    MovieSettings settings = Settings(name);
    settings.video.rate = {30000, 1001};
    const StreamFacts facts = ProbeStream(WriteMovie(name, settings, 60), StreamKind::kVideo);
    EXPECT_DOUBLE_EQ(facts.frame_rate, 30000.0 / 1001) << name;
  }
}

TEST_F(MediaWriterTest, ColoursAreTaggedAndComeBack) {
  for (const char* name : {"a.mp4", "a.webm", "a.mkv"}) {
    const auto path = WriteMovie(name, Settings(name), 3);
    EXPECT_EQ(ProbeStream(path, StreamKind::kVideo).colour_matrix, "bt709") << name;
    VideoReader reader(path);
    Picture picture;
    ASSERT_TRUE(reader.Read(&picture)) << name;
    const uint8_t* pixel = picture.Pixel(32, 24);
    EXPECT_NEAR(pixel[0], 0x14, 4) << name;
    EXPECT_NEAR(pixel[1], 0x32, 4) << name;
    EXPECT_NEAR(pixel[2], 0xC8, 4) << name;
  }
}

TEST_F(MediaWriterTest, ThePixelAspectIsWritten) {
  MovieSettings settings = Settings("a.mp4");
  settings.video.aspect_numerator = 4;
  settings.video.aspect_denominator = 3;
  VideoReader reader(WriteMovie("a.mp4", settings, 3));
  EXPECT_EQ(reader.format().aspect_numerator, 4);
  EXPECT_EQ(reader.format().aspect_denominator, 3);
}

TEST_F(MediaWriterTest, OddSidesGainTheirLastColumnAndRowAgain) {
  MovieSettings settings = Settings("a.mp4");
  settings.video.width = 63;
  settings.video.height = 47;
  const auto path = WriteMovie("a.mp4", settings, 3);
  VideoReader reader(path);
  EXPECT_EQ(reader.format().width, 64);
  EXPECT_EQ(reader.format().height, 48);
  Picture picture;
  ASSERT_TRUE(reader.Read(&picture));
  EXPECT_NEAR(picture.Pixel(63, 47)[2], 0xC8, 4);
}

TEST_F(MediaWriterTest, EncodedSoundKeepsItsTimeToTheSample) {
  for (const char* name : {"a.mp4", "a.mov", "a.mkv", "a.webm"}) {
    const auto path = WriteMovie(name, Settings(name), 60, 50123);
    AudioReader reader(path, VideoReader(path).origin());
    std::vector<int16_t> samples;
    ASSERT_GT(reader.Read(0, 96000, &samples), 0) << name;
    EXPECT_NEAR(
        static_cast<double>(LoudestSample(samples, 2)), 50123,
        std::string(name) == "a.webm" || std::string(name) == "a.mkv" ? 48 : 0)  // milliseconds
        << name;
  }
}

TEST_F(MediaWriterTest, SoundOfAnyRateAndChannelCountIsEncoded) {
  for (const char* name : {"a.mp4", "a.webm"}) {
    for (const int rate : {22050, 44100, 48000, 96000}) {
      for (const int channels : {1, 2, 6}) {
        MovieSettings settings = Settings(name);
        settings.audio = {rate, channels, 0};
        const auto path = WriteMovie(name, settings, 60, rate + 100);
        AudioReader reader(path, VideoReader(path).origin());
        EXPECT_EQ(reader.channels(), channels) << name << " " << rate;
        std::vector<int16_t> samples;
        ASSERT_GT(reader.Read(0, int64_t{reader.sample_rate()} * 2, &samples), 0);
        const double seconds =
            static_cast<double>(LoudestSample(samples, channels)) / reader.sample_rate();
        EXPECT_NEAR(seconds, 1 + 100.0 / rate, 0.0012) << name << " " << rate << " " << channels;
      }
    }
  }
}

TEST_F(MediaWriterTest, EncodedSoundIsAsLongAsThePictures) {
  const auto path = WriteMovie("a.mp4", Settings("a.mp4"), 31);  // no whole number of AAC frames
  AudioReader reader(path);
  EXPECT_EQ(reader.ExpectedSamples(), 31 * 1600);
}

TEST_F(MediaWriterTest, CopiedSoundIsTheSameToTheByte) {
  struct Case {
    const char* source;
    const char* codec;
    const char* output;
  };
  const Case cases[] = {{"s.m4a", "aac", "a.mp4"},       {"s.mp3", "libmp3lame", "a.mp4"},
                        {"s.m4a", "aac", "a.mkv"},       {"s.flac", "flac", "a.mkv"},
                        {"s.wav", "pcm_s16le", "a.mov"}, {"s.opus", "libopus", "a.webm"},
                        {"s.aac", "aac", "a.mp4"}};
  for (const Case& c : cases) {
    const auto source =
        maker_.Make(c.source, ClickSamples(48000, "stereo", 2, 50123) + "-c:a " + c.codec + " ");
    MovieSettings settings = Settings(c.output);
    ASSERT_TRUE(CanCopyAudio(settings.output, source)) << c.source;
    settings.copy = AudioCopy{source, AudioReader(source).origin()};
    const auto path = WriteMovie(c.output, settings, 63);
    EXPECT_EQ(AudioBytes(path), AudioBytes(source)) << c.source << " in " << c.output;
  }
}

TEST_F(MediaWriterTest, CopiedSoundKeepsItsTimeToTheSample) {
  const std::pair<const char*, const char*> cases[] = {
      {"s.m4a", "aac"}, {"s.mp3", "libmp3lame"}, {"s.flac", "flac"}};
  for (const auto& [name, codec] : cases) {
    const auto source = maker_.Make(
        name, ClickSamples(48000, "stereo", 2, 50123) + "-b:a 320k -c:a " + codec + " ");
    for (const char* output : {"a.mp4", "a.mkv"}) {
      MovieSettings settings = Settings(output);
      settings.copy = AudioCopy{source, AudioReader(source).origin()};
      const auto path = WriteMovie(output, settings, 60);
      AudioReader reader(path, VideoReader(path).origin());
      std::vector<int16_t> samples;
      ASSERT_GT(reader.Read(0, 90000, &samples), 0);
      // Matroska keeps milliseconds.
      EXPECT_NEAR(static_cast<double>(LoudestSample(samples, 2)), 50123,
                  std::string(output) == "a.mkv" ? 48 : 0)
          << name << " in " << output;
    }
  }
}

TEST_F(MediaWriterTest, CopiedSoundEndsWithThePictures) {
  const auto source = maker_.Make("s.m4a", RampSamples(48000, "stereo", 10) + "-c:a aac ");
  MovieSettings settings = Settings("a.mp4");
  settings.copy = AudioCopy{source, AudioReader(source).origin()};
  const auto path = WriteMovie("a.mp4", settings, 30);
  EXPECT_NEAR(ProbeStream(path, StreamKind::kAudio).container_seconds, 1.0, 0.03);
}

TEST_F(MediaWriterTest, OnlyCodecsTheContainerTakesAreCopied) {
  const auto wav = maker_.Make("s.wav", RampSamples(48000, "stereo", 0.1));
  const auto aac = maker_.Make("s.m4a", RampSamples(48000, "stereo", 0.1) + "-c:a aac ");
  EXPECT_FALSE(CanCopyAudio(ChooseOutputFormat("a.mp4", false), wav));
  EXPECT_FALSE(CanCopyAudio(ChooseOutputFormat("a.webm", false), aac));
  EXPECT_TRUE(CanCopyAudio(ChooseOutputFormat("a.mov", false), wav));
}

TEST_F(MediaWriterTest, TransparentMoviesKeepStraightAlpha) {
  for (const char* name : {"a.webm", "a.mov"}) {
    const MovieSettings settings = Settings(name, true);
    const auto path = maker_.folder() / name;
    MediaWriter writer(path, settings);
    Picture picture(64, 48);
    picture.Fill(40, 80, 220, 128);
    for (int y = 0; y < 48; ++y) std::fill_n(picture.Row(y), 32 * 4, uint8_t{0});
    for (int i = 0; i < 3; ++i) writer.Write(picture, Samples(settings, i, -1));
    writer.Finish();

    VideoReader reader(path);
    Picture read;
    ASSERT_TRUE(reader.Read(&read));
    EXPECT_NEAR(read.Pixel(8, 24)[3], 0, 2) << name;
    const uint8_t* pixel = read.Pixel(56, 24);
    EXPECT_NEAR(pixel[3], 128, 3) << name;
    EXPECT_NEAR(pixel[0], 40, 6) << name;
    EXPECT_NEAR(pixel[1], 80, 6) << name;
    EXPECT_NEAR(pixel[2], 220, 6) << name;
  }
}

TEST_F(MediaWriterTest, WithoutFinishNothingStays) {
  {
    const MovieSettings settings = Settings("a.mp4");
    MediaWriter writer(maker_.folder() / "a.mp4", settings);
    Picture picture(64, 48);
    picture.Fill(0, 0, 0, 255);
    writer.Write(picture, Samples(settings, 0, -1));
    EXPECT_THAT(maker_.Files(), ElementsAre(".a.part.mp4"));
  }
  EXPECT_THAT(maker_.Files(), IsEmpty());
}

TEST_F(MediaWriterTest, AnOlderFileStaysUntilTheNewOneIsComplete) {
  const auto path = WriteMovie("a.mp4", Settings("a.mp4"), 10);
  { MediaWriter abandoned(path, Settings("a.mp4")); }
  EXPECT_EQ(ProbeStream(path, StreamKind::kVideo).frames, 10);
  WriteMovie("a.mp4", Settings("a.mp4"), 20);
  EXPECT_EQ(ProbeStream(path, StreamKind::kVideo).frames, 20);
}

TEST_F(MediaWriterTest, AFolderThatDoesNotExistIsNamed) {
  const auto path = maker_.folder() / "missing" / "a.mp4";
  EXPECT_THAT([&] { MediaWriter writer(path, Settings("a.mp4")); },
              ::testing::ThrowsMessage<MediaError>(path.string() + ": No such file or directory"));
}

}  // namespace
}  // namespace krv::host
