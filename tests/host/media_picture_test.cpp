#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "host/media_maker.h"
#include "media/media_error.h"
#include "media/output_format.h"
#include "media/png_sequence_writer.h"
#include "media/still_source.h"

namespace krv::host {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::ThrowsMessage;

std::string Letters(const Picture& picture) {
  std::string letters;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const uint8_t* p = picture.Pixel(x, y);
      letters += p[0] > 128 ? 'b' : p[1] > 128 ? 'g' : 'r';
    }
  }
  return letters;
}

class PictureTest : public ::testing::Test {
 protected:
  MediaMaker maker_;
};

TEST_F(PictureTest, PngKeepsEveryBitOfColourAndAlpha) {
  Picture picture(256, 3);
  for (int x = 0; x < 256; ++x) {
    const auto v = static_cast<uint8_t>(x);
    const uint8_t pixels[3][4] = {
        {v, static_cast<uint8_t>(255 - x), 7, v}, {1, v, 200, 0}, {200, 100, v, 255}};
    for (int y = 0; y < 3; ++y) std::copy_n(pixels[y], 4, picture.Pixel(x, y));
  }
  PngSequenceWriter writer(maker_.folder() / "p%d.png", 0);
  writer.Write(picture, {});
  writer.Finish();
  const Picture read = LoadPicture(maker_.folder() / "p0.png", {});
  ASSERT_EQ(read.width(), 256);
  ASSERT_EQ(read.height(), 3);
  for (int y = 0; y < 3; ++y) {
    EXPECT_TRUE(std::equal(picture.Row(y), picture.Pixel(256, y), read.Row(y))) << y;
  }
}

TEST_F(PictureTest, SequencesCarryTheNumbersOfTheirFrames) {
  Picture picture(4, 4);
  picture.Fill(0, 0, 0, 0);
  PngSequenceWriter writer(maker_.folder() / "p_%03d.png", 8);
  for (int i = 0; i < 3; ++i) writer.Write(picture, {});
  writer.Finish();
  EXPECT_THAT(maker_.Files(), ElementsAre("p_008.png", "p_009.png", "p_010.png"));
}

TEST_F(PictureTest, AFolderIsMadeForASequence) {
  Picture picture(4, 4);
  picture.Fill(0, 0, 0, 0);
  {
    PngSequenceWriter writer(maker_.folder() / "frames" / "", 0);
    writer.Write(picture, {});
    writer.Finish();
  }
  EXPECT_THAT(maker_.Files(), ElementsAre("frames"));
  EXPECT_TRUE(std::filesystem::exists(maker_.folder() / "frames" / "frame_000000.png"));
}

TEST_F(PictureTest, WithoutFinishNoPictureStays) {
  {
    PngSequenceWriter writer(maker_.folder() / "frames" / "", 0);
    Picture picture(4, 4);
    picture.Fill(0, 0, 0, 0);
    writer.Write(picture, {});
  }
  EXPECT_THAT(maker_.Files(), IsEmpty());
}

TEST_F(PictureTest, WithoutASizeAPictureKeepsItsOwn) {
  const auto path =
      maker_.Make("a.png", "-f lavfi -i color=red:s=62x34,format=rgba,crop=31:17 -frames:v 1 ");
  const Picture picture = LoadPicture(path, {});
  EXPECT_EQ(picture.width(), 31);
  EXPECT_EQ(picture.height(), 17);
  EXPECT_EQ(picture.Pixel(30, 16)[3], 255);
}

TEST_F(PictureTest, AScaledPictureCoversAndLosesItsOverhangOnBothSides) {
  // Three columns: red, green, blue. Only the middle of a wide picture fits a tall one.
  const auto path = maker_.Make("a.png",
                                "-f lavfi -i \"color=red:s=90x30,drawbox=30:0:30:30:lime:fill,"
                                "drawbox=60:0:30:30:blue:fill\" -frames:v 1 ");
  const Picture picture = LoadPicture(path, PictureSize{20, 60});
  EXPECT_EQ(picture.width(), 20);
  EXPECT_EQ(picture.height(), 60);
  EXPECT_EQ(Letters(picture), std::string(1200, 'g'));
}

TEST_F(PictureTest, WhatIsNoPictureIsRefused) {
  const auto path = maker_.folder() / "a.png";
  std::ofstream(path) << "not a picture";
  EXPECT_THAT([&] { LoadPicture(path, {}); }, ThrowsMessage<MediaError>(HasSubstr(path.string())));
}

TEST(OutputFormat, NamesDecideTheKind) {
  EXPECT_EQ(ChooseOutputFormat("a.MP4", false).container, "mp4");
  EXPECT_EQ(ChooseOutputFormat("a.webm", true).video_encoder, "libvpx-vp9");
  EXPECT_EQ(ChooseOutputFormat("a.mov", true).video_encoder, "prores_ks");
  EXPECT_EQ(ChooseOutputFormat("a.mov", false).video_encoder, "libx264");
  EXPECT_EQ(ChooseOutputFormat("a%d.png", false).kind, OutputKind::kPngSequence);
  EXPECT_EQ(ChooseOutputFormat("folder/", true).kind, OutputKind::kPngSequence);
}

TEST(OutputFormat, ImpossibleOnesAreRefused) {
  const std::pair<const char*, bool> cases[] = {
      {"a.mp4", true},     {"a.mkv", true},      {"a.avi", false},     {"a", false},
      {"a.png", false},    {"a%d%d.png", false}, {"a%s.png", false},   {"a%5d.png", false},
      {"a%0d.png", false}, {"a%05.png", false},  {"a%d%%.png", false}, {"a%", false}};
  for (const auto& [name, transparent] : cases) {
    EXPECT_THROW(ChooseOutputFormat(name, transparent), MediaError) << name;
  }
}

}  // namespace
}  // namespace krv::host
