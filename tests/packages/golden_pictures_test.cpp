#include "packages/golden_pictures.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "media/png_encoder.h"
#include "media/still_source.h"
#include "support/file_system.h"

namespace krv::test {
namespace {

std::filesystem::path GoldenFile(const std::string& name) {
  return std::filesystem::path(KRV_GOLDEN) / (name + ".png");
}

// The picture as it came out, beside the test programs.
std::string WriteForReview(const std::string& name, const host::Picture& picture) {
  const std::filesystem::path folder = KRV_REVIEW;
  CreateFolders(folder);
  host::PngEncoder().Write(picture, folder / (name + ".png"));
  return Utf8Text(folder / (name + ".png"));
}

host::Picture FilledPicture() {
  host::Picture picture(100, 50);
  picture.Fill(10, 20, 30, 255);
  return picture;
}

TEST(GoldenPictures, ShowEveryShippedPackageAtItsDefaults) {
  GoldenRenderer renderer(KRV_PLUGIN_FILE, KRV_PACKAGES);
  ASSERT_FALSE(renderer.Names().empty());
  for (const std::string& name : renderer.Names()) {
    const host::Picture picture = renderer.Render(name);
    if (!std::filesystem::exists(GoldenFile(name))) {
      ADD_FAILURE() << "no golden picture of " << name << "; it looks like "
                    << WriteForReview(name, picture);
      continue;
    }
    const PictureDifference difference = Compare(host::LoadPicture(GoldenFile(name), {}), picture);
    EXPECT_TRUE(difference.WithinTolerance(picture))
        << name << ": " << ToText(difference) << ": " << WriteForReview(name, picture);
  }
}

TEST(GoldenPictures, BelongToAPackageEach) {
  for (const auto& entry : std::filesystem::directory_iterator(KRV_GOLDEN)) {
    const auto package = std::filesystem::path(KRV_PACKAGES) / entry.path().stem();
    EXPECT_TRUE(std::filesystem::is_directory(package)) << Utf8Text(entry.path());
  }
}

host::Picture Mirrored(const host::Picture& picture) {
  host::Picture mirrored(picture.width(), picture.height());
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      std::copy_n(picture.Pixel(picture.width() - 1 - x, y), 4, mirrored.Pixel(x, y));
    }
  }
  return mirrored;
}

TEST(GoldenPictures, ShowMirroredFiguresInTheMiddle) {
  for (const char* name :
       {"bars", "circle_columns", "glowing_line", "lines", "mirrored_bars", "waveform"}) {
    const host::Picture golden = host::LoadPicture(GoldenFile(name), {});
    const PictureDifference difference = Compare(golden, Mirrored(golden));
    EXPECT_TRUE(difference.WithinTolerance(golden)) << name << ": " << ToText(difference);
  }
}

TEST(GoldenPictures, MayBeOffByTwoEverywhere) {
  const host::Picture golden = FilledPicture();
  host::Picture other(golden.width(), golden.height());
  other.Fill(12, 18, 30, 255);
  EXPECT_TRUE(Compare(golden, other).WithinTolerance(other));
  other.Fill(13, 20, 30, 255);
  EXPECT_FALSE(Compare(golden, other).WithinTolerance(other));
}

TEST(GoldenPictures, MayBeOffByMoreInOnePixelOfAThousand) {
  const host::Picture golden = FilledPicture();
  host::Picture other = FilledPicture();
  for (int x = 0; x < 5; ++x) other.Pixel(x, 7)[1] = 255;
  EXPECT_TRUE(Compare(golden, other).WithinTolerance(other));
  other.Pixel(5, 7)[1] = 254;
  const PictureDifference difference = Compare(golden, other);
  EXPECT_FALSE(difference.WithinTolerance(other));
  EXPECT_EQ(ToText(difference), "6 pixels differ, by up to 235 at (0, 7)");
}

TEST(GoldenPictures, AreOfOneSize) {
  const host::Picture golden = FilledPicture();
  const host::Picture other(golden.width(), golden.height() - 1);
  EXPECT_FALSE(Compare(golden, other).WithinTolerance(other));
}

}  // namespace
}  // namespace krv::test
