#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>
#include <string>
#include <vector>

#include "host/media_maker.h"
#include "media/media_error.h"
#include "media/video_reader.h"

namespace krv::host {
namespace {

using ::testing::ElementsAre;
using ::testing::ThrowsMessage;

constexpr char kLossless[] = "-c:v libx264 -qp 0 -preset ultrafast ";

std::vector<int> ReadNumbers(VideoReader* reader) {
  std::vector<int> numbers;
  Picture picture;
  while (reader->Read(&picture)) numbers.push_back(ReadNumber(picture));
  return numbers;
}

std::vector<int> Counting(int count) {
  std::vector<int> numbers(static_cast<size_t>(count));
  std::iota(numbers.begin(), numbers.end(), 0);
  return numbers;
}

class VideoReaderTest : public ::testing::Test {
 protected:
  MediaMaker maker_;
};

TEST_F(VideoReaderTest, ConstantRateFilesComeFrameByFrame) {
  for (const char* rate : {"24", "25", "30000/1001", "60"}) {
    for (const char* name : {"a.mp4", "a.mkv", "a.mov", "a.ts", "a.avi"}) {
      const auto path = maker_.Make(name, NumberedFrames(rate, 2) + kLossless);
      VideoReader reader(path);
      EXPECT_EQ(reader.format().rate, ParseFrameRate(rate)) << name << " " << rate;
      const auto count =
          static_cast<int>(std::string(rate) == "30000/1001" ? 60 : 2 * std::stoi(rate));
      EXPECT_EQ(ReadNumbers(&reader), Counting(count)) << name << " " << rate;
    }
  }
}

TEST_F(VideoReaderTest, ExpectedFramesIsTheNumberOfFrames) {
  VideoReader reader(maker_.Make("a.mp4", NumberedFrames("30000/1001", 3) + kLossless));
  EXPECT_EQ(reader.ExpectedFrames(), 90);
}

TEST_F(VideoReaderTest, MissingFramesOfVariableRateFilesAreRepeated) {
  const auto path =
      maker_.Make("a.mkv", NumberedFrames("30", 0.4) +
                               "-vf \"select='lt(mod(n,3),2)'\" -vsync vfr " + kLossless);
  VideoReader reader(path, FrameRate{30, 1});
  EXPECT_THAT(ReadNumbers(&reader), ElementsAre(0, 1, 1, 3, 4, 4, 6, 7, 7, 9, 10));
}

TEST_F(VideoReaderTest, AHigherRateRepeatsFrames) {
  VideoReader reader(maker_.Make("a.mp4", NumberedFrames("30", 0.1) + kLossless), FrameRate{60, 1});
  EXPECT_THAT(ReadNumbers(&reader), ElementsAre(0, 0, 1, 1, 2, 2));
}

TEST_F(VideoReaderTest, ALowerRateLeavesFramesOut) {
  VideoReader reader(maker_.Make("a.mp4", NumberedFrames("30", 0.2) + kLossless), FrameRate{15, 1});
  EXPECT_THAT(ReadNumbers(&reader), ElementsAre(0, 2, 4));
}

TEST_F(VideoReaderTest, SkippingGivesThePicturesOfReadingOn) {
  for (const char* name : {"a.mp4", "a.mkv", "a.ts"}) {
    const auto path = maker_.Make(
        name, NumberedFrames("30000/1001", 30) + "-c:v libx264 -g 100 -bf 3 -crf 20 -preset fast ");
    VideoReader whole(path);
    std::vector<int> numbers = ReadNumbers(&whole);
    for (const int start : {1, 99, 100, 333, 600, 601, 899}) {
      VideoReader reader(path);
      reader.SkipTo(start);
      EXPECT_EQ(ReadNumbers(&reader), std::vector<int>(numbers.begin() + start, numbers.end()))
          << name << " from " << start;
    }
  }
}

TEST_F(VideoReaderTest, SkippingBehindTheEndGivesNothing) {
  VideoReader reader(maker_.Make("a.mp4", NumberedFrames("30", 10) + kLossless));
  reader.SkipTo(300);
  Picture picture;
  EXPECT_FALSE(reader.Read(&picture));
}

// Quadrants red, green (above), blue, white (below).
std::string Quadrants(const std::string& filters) {
  return "-f lavfi -i \"color=red:s=64x32:r=10:d=0.2,drawbox=32:0:32:16:lime:fill,"
         "drawbox=0:16:32:16:blue:fill,drawbox=32:16:32:16:white:fill" +
         filters + "\" -c:v libx264 -qp 0 -pix_fmt yuv444p ";
}

// The quadrants of a picture in reading order, as letters.
std::string QuadrantsOf(const Picture& picture) {
  std::string letters;
  for (const int y : {picture.height() / 4, picture.height() * 3 / 4}) {
    for (const int x : {picture.width() / 4, picture.width() * 3 / 4}) {
      const uint8_t* p = picture.Pixel(x, y);
      letters += p[0] > 128 && p[2] > 128 ? 'w' : p[0] > 128 ? 'b' : p[1] > 128 ? 'g' : 'r';
    }
  }
  return letters;
}

TEST_F(VideoReaderTest, TurnedVideosAreSetUpright) {
  const auto stored = maker_.Make("stored.mp4", Quadrants(""));
  // The "rotate" tag counts degrees to the left.
  const std::pair<const char*, const char*> turns[] = {
      {"0", "rgbw"}, {"90", "gwrb"}, {"180", "wbgr"}, {"270", "brwg"}};
  for (const auto& [degrees, quadrants] : turns) {
    const auto path =
        maker_.Make("turned.mp4", "-i \"" + stored.string() +
                                      "\" -c copy -metadata:s:v:0 rotate=" + degrees + " ");
    VideoReader reader(path);
    const bool swapped = std::string(degrees) == "90" || std::string(degrees) == "270";
    EXPECT_EQ(reader.format().width, swapped ? 32 : 64) << degrees;
    EXPECT_EQ(reader.format().height, swapped ? 64 : 32) << degrees;
    Picture picture;
    ASSERT_TRUE(reader.Read(&picture));
    EXPECT_EQ(picture.width(), reader.format().width);
    EXPECT_EQ(QuadrantsOf(picture), quadrants) << degrees;
  }
}

TEST_F(VideoReaderTest, ThePixelAspectIsKeptAndTurned) {
  const auto stored = maker_.Make("stored.mp4", Quadrants(",setsar=4/3"));
  EXPECT_EQ(VideoReader(stored).format().aspect_numerator, 4);
  EXPECT_EQ(VideoReader(stored).format().aspect_denominator, 3);
  const auto turned = maker_.Make(
      "turned.mp4", "-i \"" + stored.string() + "\" -c copy -metadata:s:v:0 rotate=90 ");
  EXPECT_EQ(VideoReader(turned).format().aspect_numerator, 3);
  EXPECT_EQ(VideoReader(turned).format().aspect_denominator, 4);
}

TEST_F(VideoReaderTest, ColoursFollowTheMatrixAndRangeOfTheFile) {
  struct Case {
    const char* size;
    const char* arguments;
  };
  const Case cases[] = {
      {"64x64", "-vf scale=out_color_matrix=bt601 -pix_fmt yuv420p"},
      {"64x64", "-vf scale=out_color_matrix=bt709 -pix_fmt yuv420p -colorspace bt709"},
      {"64x64", "-vf scale=out_color_matrix=bt2020 -pix_fmt yuv420p -colorspace bt2020nc"},
      {"1280x720", "-vf scale=out_color_matrix=bt709 -pix_fmt yuv420p"},
      {"1280x720", "-vf scale=out_color_matrix=bt601 -pix_fmt yuv420p -colorspace smpte170m"},
      {"64x64",
       "-vf scale=out_color_matrix=bt709:out_range=full -pix_fmt yuv420p -colorspace bt709 "
       "-color_range pc"},
  };
  for (const Case& c : cases) {
    const auto path =
        maker_.Make("a.mp4", "-f lavfi -i color=0xC83214:d=0.1:s=" + std::string(c.size) + " " +
                                 c.arguments + " -c:v libx264 -qp 0 ");
    VideoReader reader(path);
    Picture picture;
    ASSERT_TRUE(reader.Read(&picture));
    const uint8_t* pixel = picture.Pixel(30, 30);
    EXPECT_NEAR(pixel[2], 0xC8, 3) << c.arguments;
    EXPECT_NEAR(pixel[1], 0x32, 3) << c.arguments;
    EXPECT_NEAR(pixel[0], 0x14, 3) << c.arguments;
    EXPECT_EQ(pixel[3], 255) << c.arguments;
  }
}

TEST_F(VideoReaderTest, FilesWithoutVideoAreRefused) {
  const auto sound = maker_.Make("a.wav", RampSamples(48000, "mono", 0.1));
  EXPECT_THAT([&] { VideoReader reader(sound); },
              ThrowsMessage<MediaError>(sound.string() + ": no video stream"));
  const auto missing = maker_.folder() / "missing.mp4";
  EXPECT_THAT([&] { VideoReader reader(missing); },
              ThrowsMessage<MediaError>(missing.string() + ": No such file or directory"));
}

}  // namespace
}  // namespace krv::host
