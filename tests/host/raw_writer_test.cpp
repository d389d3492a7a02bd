#include "media/raw_writer.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "host_test_files.h"

namespace krv::host {
namespace {

// Every byte another than those about it, and than those of the picture before.
Picture MakePicture(int width, int height, int number) {
  Picture picture(width, height);
  for (int y = 0; y < height; ++y) {
    uint8_t* row = picture.Row(y);
    for (int i = 0; i < width * 4; ++i) row[i] = static_cast<uint8_t>(i + 7 * y + 31 * number);
  }
  return picture;
}

using RawWriterTest = FilesTest;

// From one pixel to rows that are larger than what a file takes at once.
TEST_F(RawWriterTest, PicturesOfAnySizeAreInTheFileByteForByte) {
  for (const auto& [width, height] :
       {std::pair{1, 1}, std::pair{70, 48}, std::pair{256, 256}, std::pair{257, 256},
        std::pair{1280, 720}, std::pair{1921, 1081}, std::pair{70001, 2}}) {
    const auto path = Path("frames.raw");
    std::string expected;
    RawWriter writer(path);
    for (int number = 0; number < 3; ++number) {
      const Picture picture = MakePicture(width, height, number);
      writer.Write(picture, {});
      for (int y = 0; y < height; ++y) {
        expected.append(reinterpret_cast<const char*>(picture.Row(y)), size_t(width) * 4);
      }
    }
    writer.Finish();
    EXPECT_TRUE(ReadFile(path) == expected) << width << " x " << height;
  }
}

}  // namespace
}  // namespace krv::host
