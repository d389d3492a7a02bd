#include "media/matte_reader.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "host/media_maker.h"
#include "media/media_error.h"

namespace krv::host {
namespace {

class MatteReaderTest : public ::testing::Test {
 protected:
  // The mask's four channels at a place, which are alike.
  static int At(const Picture& mask, int x, int y) {
    const uint8_t* pixel = mask.Pixel(x, y);
    EXPECT_TRUE(std::all_of(pixel, pixel + 4, [&](uint8_t value) { return value == pixel[0]; }));
    return pixel[0];
  }

  static Picture Next(MatteReader* reader) {
    Picture mask;
    reader->Read(&mask);
    return mask;
  }

  MediaMaker media_;
};

// Frame n is grey of level 40 + 20 n, lossless.
constexpr char kGreys[] =
    "-f lavfi -i color=black:s=32x32:r=10:d=1,format=gray,geq=lum=40+20*N -c:v ffv1 ";

TEST_F(MatteReaderTest, TheBrightPartIsThePerson) {
  MatteReader reader(media_.Make("matte.mkv",
                                 "-f lavfi -i color=black:s=64x48:r=25:d=0.2,"
                                 "drawbox=x=16:y=12:w=32:h=24:color=white:t=fill -c:v libx264 "));
  const Picture mask = Next(&reader);
  EXPECT_EQ(mask.width(), 64);
  EXPECT_EQ(mask.height(), 48);
  EXPECT_GT(At(mask, 32, 24), 250);
  EXPECT_EQ(At(mask, 4, 4), 0);
}

TEST_F(MatteReaderTest, TransparencyDecidesWhereThereIsAny) {
  MatteReader reader(media_.Make(
      "matte.mov",
      "-f lavfi -i color=white:s=64x48:r=25:d=0.2,format=rgba,geq=r=255:g=255:b=255:a=X*4 "
      "-c:v png "));
  const Picture mask = Next(&reader);
  EXPECT_EQ(At(mask, 0, 24), 0);
  EXPECT_EQ(At(mask, 60, 24), 240);
}

TEST_F(MatteReaderTest, WhatIsBelowAnEighthIsNobody) {
  MatteReader reader(media_.Make(
      "matte.png", "-f lavfi -i color=black:s=64x8,format=rgb24,geq=r=X:g=X:b=X -frames:v 1 "));
  const Picture mask = Next(&reader);
  EXPECT_EQ(At(mask, 31, 4), 0);
  EXPECT_EQ(At(mask, 32, 4), 32);
  EXPECT_EQ(At(mask, 63, 4), 63);
}

TEST_F(MatteReaderTest, MasksComeFrameByFrameAndTheLastOneStays) {
  MatteReader reader(media_.Make("matte.mkv", kGreys));
  for (const int level : {40, 60, 80, 100, 120, 140, 160, 180, 200, 220, 220, 220}) {
    EXPECT_NEAR(At(Next(&reader), 16, 16), level, 1);
  }
}

TEST_F(MatteReaderTest, MasksCanBeginLater) {
  const auto file = media_.Make("matte.mkv", kGreys);
  MatteReader third(file, 3);
  EXPECT_NEAR(At(Next(&third), 16, 16), 100, 1);
  EXPECT_NEAR(At(Next(&third), 16, 16), 120, 1);
}

TEST_F(MatteReaderTest, APictureBelongsToEveryFrame) {
  MatteReader reader(media_.Make("matte.png", "-f lavfi -i color=white:s=32x16 -frames:v 1 "), 7);
  for (int i = 0; i < 3; ++i) {
    const Picture mask = Next(&reader);
    EXPECT_EQ(mask.width(), 32);
    EXPECT_EQ(At(mask, 16, 8), 255);
  }
}

TEST_F(MatteReaderTest, AFileWithoutPicturesIsRefused) {
  const auto sound = media_.Make("sound.wav", RampSamples(44100, "mono", 0.1));
  EXPECT_THROW(MatteReader reader(sound), MediaError);
  EXPECT_THROW(MatteReader reader(media_.folder() / "missing.mp4"), MediaError);
}

}  // namespace
}  // namespace krv::host
