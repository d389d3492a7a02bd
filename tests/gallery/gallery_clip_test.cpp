// The clip, the stills and the contact sheet of a gallery.
#include "gallery/gallery_clip.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "gallery/contact_sheet.h"
#include "gallery/loudness.h"
#include "host/host_test_files.h"
#include "host/media_maker.h"
#include "media/jpeg_encoder.h"
#include "media/media_error.h"

namespace krv::tool {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;

TEST(LoudestRun, IsWhereTheSumIsLargest) {
  EXPECT_EQ(LoudestRun({0, 9, 0, 4, 4, 4, 0}, 1), 1);
  EXPECT_EQ(LoudestRun({0, 9, 0, 4, 4, 4, 0}, 2), 0);
  EXPECT_EQ(LoudestRun({0, 5, 0, 4, 4, 4, 0}, 3), 3);
}

TEST(LoudestRun, IsTheFirstOfEquals) { EXPECT_EQ(LoudestRun({0, 0, 0, 0}, 2), 0); }

TEST(LoudestRun, OfTooFewFramesStartsWithTheFirst) {
  EXPECT_EQ(LoudestRun({1, 2}, 3), 0);
  EXPECT_EQ(LoudestRun({}, 3), 0);
}

TEST(FrameLoudness, IsTheMeanSquareOfEachFrame) {
  const host::MediaMaker media;
  // A square wave of half the full scale in the second of three frames.
  const auto path = media.Make(
      "a.wav", "-f lavfi -i \"aevalsrc='0.5*between(n,4800,9599)':s=48000:d=0.3\" -c:a pcm_s16le");
  host::AudioReader sound(path);
  EXPECT_THAT(FrameLoudness(&sound, {10, 1}, 99), ElementsAre(0, DoubleNear(0.25, 0.001), 0));
  host::AudioReader again(path);
  EXPECT_EQ(FrameLoudness(&again, {10, 1}, 2).size(), 2u) << "no more than asked for";
}

TEST(GalleryClip, IsTheLoudestThreeSeconds) {
  const host::MediaMaker media;
  const auto path =
      media.Make("a.mkv", host::NumberedFrames("10", 8) +
                              "-f lavfi -i \"aevalsrc='0.5*between(t,4,7)':s=48000:d=8\" "
                              "-c:v libx264 -qp 0 -c:a pcm_s16le");
  const GalleryClip clip = LoadGalleryClip({path});
  ASSERT_EQ(clip.frames.size(), 30u);
  EXPECT_NEAR(static_cast<double>(clip.frames.front().index), 40, 1);
  EXPECT_EQ(host::ReadNumber(clip.frames.front().input), clip.frames.front().index);
  EXPECT_GT(clip.frames.front().samples.at(100), 16000);
}

TEST(GalleryClip, OfAShortInputIsAllOfIt) {
  const host::MediaMaker media;
  const GalleryClip clip = LoadGalleryClip({media.Make(
      "a.mkv", host::NumberedFrames("10", 0.5) + host::RampSamples(48000, "stereo", 0.5) +
                   "-c:v libx264 -qp 0 -c:a pcm_s16le")});
  ASSERT_EQ(clip.frames.size(), 5u);
  for (size_t i = 0; i < clip.frames.size(); ++i) {
    EXPECT_EQ(host::ReadNumber(clip.frames[i].input), static_cast<int>(i));
  }
}

TEST(GalleryClip, IsMadeSmallWithSquarePixelsAndEvenSides) {
  const host::MediaMaker media;
  const auto size_of = [&media](const std::string& size, const std::string& aspect) {
    const auto path = media.Make("a.mkv", "-f lavfi -i color=s=" + size + ":r=60:d=0.1 " +
                                              host::RampSamples(48000, "mono", 0.1) +
                                              "-vf setsar=" + aspect + " -c:a pcm_s16le");
    const GalleryClip clip = LoadGalleryClip({path});
    EXPECT_EQ(clip.video.rate, (host::FrameRate{30, 1}));
    EXPECT_EQ(clip.frames.size(), 3u);
    EXPECT_EQ(clip.frames.front().input.width(), clip.video.width);
    EXPECT_EQ(clip.frames.front().input.height(), clip.video.height);
    return std::pair(clip.video.width, clip.video.height);
  };
  EXPECT_EQ(size_of("1920x1080", "1"), std::pair(640, 360));
  EXPECT_EQ(size_of("1080x1920", "1"), std::pair(202, 360));
  EXPECT_EQ(size_of("720x576", "64/45"), std::pair(640, 360));
  EXPECT_EQ(size_of("64x48", "1"), std::pair(64, 48)) << "never made larger";
}

TEST(GalleryClip, OfSoundAloneIsOverABackground) {
  const host::MediaMaker media;
  const GalleryClip clip =
      LoadGalleryClip({media.Make("a.flac", host::RampSamples(44100, "mono", 0.2))});
  EXPECT_EQ(clip.video.width, 640);
  EXPECT_EQ(clip.video.height, 360);
  EXPECT_EQ(clip.frames.size(), 6u);
}

TEST(GalleryClip, TheDemoClipFillsItsThreeSeconds) {
  const GalleryClip clip = MakeDemoGalleryClip();
  EXPECT_EQ(clip.video.width, 640);
  EXPECT_EQ(clip.video.height, 360);
  EXPECT_EQ(clip.frames.size(), 90u);
}

TEST(GalleryClip, AnInputThatIsNoneIsNamed) {
  EXPECT_THROW(LoadGalleryClip({"none.mp4"}), host::MediaError);
}

// Frames of one grey each.
std::vector<RenderJob> GreyFrames(const std::vector<int>& greys) {
  std::vector<RenderJob> frames(greys.size());
  for (size_t i = 0; i < greys.size(); ++i) {
    frames[i].index = static_cast<int64_t>(i);
    frames[i].input.Resize(4, 4);
    const auto grey = static_cast<uint8_t>(greys[i]);
    frames[i].input.Fill(grey, grey, grey, 255);
  }
  return frames;
}

std::vector<int> Greys(const std::vector<RenderJob>& frames) {
  std::vector<int> greys;
  for (const RenderJob& job : frames) greys.push_back(job.input.Pixel(2, 2)[1]);
  return greys;
}

TEST(BlendLoop, TheLastPicturesFadeIntoThoseBeforeTheFirst) {
  std::vector<RenderJob> frames = GreyFrames({100, 100, 0, 0, 10, 40, 70});
  BlendLoop(&frames, 2);
  EXPECT_THAT(Greys(frames), ElementsAre(0, 0, 10, 60, 90));
  EXPECT_EQ(frames.front().index, 2);
}

TEST(BlendLoop, OfNoFadeChangesNothing) {
  std::vector<RenderJob> frames = GreyFrames({1, 2, 3});
  BlendLoop(&frames, 0);
  EXPECT_THAT(Greys(frames), ElementsAre(1, 2, 3));
}

std::vector<SheetEntry> Entries(int count, int width, int height) {
  std::vector<SheetEntry> entries;
  for (int i = 0; i < count; ++i) {
    entries.push_back({"Name", host::Picture(width, height)});
    entries.back().still.Fill(static_cast<uint8_t>(100 + i), 255, 0, 255);
  }
  return entries;
}

// The numbers in the blue of the pixels in the middle of the cells of a row.
std::vector<int> Row(const host::Picture& sheet, int y) {
  std::vector<int> numbers;
  bool inside = false;
  for (int x = 0; x < sheet.width(); ++x) {
    const bool still = sheet.Pixel(x, y)[1] == 255 && sheet.Pixel(x, y)[2] == 0;
    if (still && !inside) numbers.push_back(sheet.Pixel(x, y)[0] - 100);
    inside = still;
  }
  return numbers;
}

TEST(ContactSheet, StillsAreInRowsInTheirOrder) {
  const host::Picture sheet = MakeContactSheet(Entries(8, 64, 36));
  EXPECT_THAT(Row(sheet, sheet.height() / 6), ElementsAre(0, 1, 2));
  EXPECT_THAT(Row(sheet, sheet.height() / 2), ElementsAre(3, 4, 5));
  EXPECT_THAT(Row(sheet, sheet.height() * 5 / 6), ElementsAre(6, 7));
}

TEST(ContactSheet, ManyStillsAreInFourColumns) {
  const host::Picture sheet = MakeContactSheet(Entries(20, 64, 36));
  EXPECT_THAT(Row(sheet, sheet.height() / 10), ElementsAre(0, 1, 2, 3));
}

TEST(ContactSheet, StillsOfAnyShapeKeepIt) {
  for (const auto& [width, height] :
       {std::pair(202, 360), std::pair(640, 100), std::pair(2, 360)}) {
    const host::Picture sheet = MakeContactSheet(Entries(1, width, height));
    int columns = 0;
    int rows = 0;
    const auto is_still = [&sheet](int x, int y) { return sheet.Pixel(x, y)[1] == 255; };
    for (int x = 0; x < sheet.width(); ++x) columns += is_still(x, sheet.height() * 2 / 5) ? 1 : 0;
    for (int y = 0; y < sheet.height(); ++y) rows += is_still(sheet.width() / 2, y) ? 1 : 0;
    EXPECT_NEAR(columns * height, rows * width, std::max(width, height)) << width << "x" << height;
  }
}

TEST(ContactSheet, ALongNameStaysUnderItsStill) {
  std::vector<SheetEntry> entries = Entries(2, 64, 36);
  const host::Picture plain = MakeContactSheet(entries);
  entries[0].name = std::string(200, 'W');
  const host::Picture sheet = MakeContactSheet(entries);
  EXPECT_EQ(sheet.width(), plain.width());
  for (int y = 0; y < sheet.height(); ++y) {
    for (int x = sheet.width() / 2; x < sheet.width(); ++x) {
      ASSERT_EQ(sheet.Pixel(x, y)[1], plain.Pixel(x, y)[1]) << x << ", " << y;
    }
  }
}

TEST(EncodeJpeg, DecodesToNearlyTheSamePicture) {
  const host::MediaMaker media;
  host::Picture picture(33, 17);  // sides that are no multiple of a block
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      uint8_t* pixel = picture.Pixel(x, y);
      pixel[0] = static_cast<uint8_t>(7 * x);
      pixel[1] = static_cast<uint8_t>(14 * y);
      pixel[2] = static_cast<uint8_t>(255 - 7 * x);
      pixel[3] = 255;
    }
  }
  host::WriteFile(media.folder() / "a.jpg", host::EncodeJpeg(picture));
  const host::Picture decoded = host::LoadPicture(media.folder() / "a.jpg", {});
  ASSERT_EQ(decoded.width(), picture.width());
  ASSERT_EQ(decoded.height(), picture.height());
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      for (int c = 0; c < 3; ++c) {
        EXPECT_NEAR(decoded.Pixel(x, y)[c], picture.Pixel(x, y)[c], 8) << x << ", " << y;
      }
    }
  }
}

}  // namespace
}  // namespace krv::tool
