// The host's mask as it is taken over, and pictures brought to eight bits.
#include <gtest/gtest.h>

#include <limits>

#include "boundary/effect_image.h"
#include "effects/effect_host.h"
#include "effects/person_mask.h"
#include "effects/test_mask.h"
#include "graphics/px_image.h"

namespace krv::test {
namespace {

// Says what it likes about a mask.
class LyingSource final : public PersonMaskSource {
 public:
  uint8_t* pixels = nullptr;
  int32_t width = 4;
  int32_t height = 4;
  int32_t stride = 16;
  uint8_t GetMask(uint8_t** p, int32_t* w, int32_t* h, int32_t* s) override {
    *p = pixels;
    *w = width;
    *h = height;
    *s = stride;
    return 1;
  }
};

TEST(HostMask, IsUsedInPlaceWithItsStride) {
  TestMask source(8, 4);
  source.pixels = cv::Mat(4, 12, CV_8UC4).colRange(0, 8);
  TestContext context;
  context.person_mask = &source;
  const cv::Mat mask = HostPersonMask(context);
  EXPECT_EQ(mask.data, source.pixels.data);
  EXPECT_EQ(mask.size(), cv::Size(8, 4));
  EXPECT_EQ(mask.type(), CV_8UC4);
  EXPECT_EQ(mask.step[0], 48U);
}

TEST(HostMask, IsEmptyWhenTheHostHasNone) {
  TestContext context;
  EXPECT_TRUE(HostPersonMask(context).empty());
  TestMask source(8, 4);
  source.answer = 0;
  context.person_mask = &source;
  EXPECT_TRUE(HostPersonMask(context).empty());
}

TEST(HostMask, IsEmptyWhenItMakesNoSense) {
  uint8_t pixels[64] = {};
  TestContext context;
  LyingSource source;
  context.person_mask = &source;
  EXPECT_TRUE(HostPersonMask(context).empty());
  source.pixels = pixels;
  EXPECT_FALSE(HostPersonMask(context).empty());
  for (const auto& [width, height, stride] :
       {std::tuple(0, 4, 16),
        {4, 0, 16},
        {-4, 4, 16},
        {4, -4, 16},
        {4, 4, 15},
        {4, 4, -16},
        {std::numeric_limits<int32_t>::max(), 4, std::numeric_limits<int32_t>::max()}}) {
    source.width = width;
    source.height = height;
    source.stride = stride;
    EXPECT_TRUE(HostPersonMask(context).empty()) << width << " " << height << " " << stride;
  }
}

class EightBits : public testing::Test {
 protected:
  // A picture of one pixel whose channels hold these values, as eight bits.
  template <class Channel>
  static cv::Vec4b Converted(int32_t pixel_type, const cv::Vec<Channel, 4>& pixel) {
    cv::Vec<Channel, 4> stored = pixel;
    host::MemoryFrame frame({pixel_type, kFrameInMemory, 1, 1, sizeof(stored)}, stored.val);
    const auto image = CreateImageFromFrame(EffectImage::Wrap(&frame), stored.val);
    const cv::Mat picture = EightBitPicture(*image);
    EXPECT_EQ(picture.type(), CV_8UC4);
    return picture.at<cv::Vec4b>(0, 0);
  }

  EffectHost host_;
};

TEST_F(EightBits, AnEightBitPictureIsTakenAsItIs) {
  EXPECT_EQ(Converted<uint8_t>(kPixel8, {0, 1, 254, 255}), cv::Vec4b(0, 1, 254, 255));
}

TEST_F(EightBits, SixteenBitsAreDividedBy255SoThatBrightOnesClip) {
  EXPECT_EQ(Converted<uint16_t>(kPixel16, {0, 255, 32768, 65535}), cv::Vec4b(0, 1, 129, 255));
  EXPECT_EQ(Converted<uint16_t>(kPixel16, {64770, 65025, 65026, 65280}),
            cv::Vec4b(254, 255, 255, 255));
}

TEST_F(EightBits, FloatsAreMultipliedBy255AndClip) {
  EXPECT_EQ(Converted<float>(kPixelFloat, {0.0f, 0.5f, 1.0f, 7.0f}), cv::Vec4b(0, 128, 255, 255));
  EXPECT_EQ(Converted<float>(kPixelFloat, {-1.0f, 0.25f, 1e30f, -1e30f}), cv::Vec4b(0, 64, 255, 0));
}

TEST_F(EightBits, AFloatTextureIsReadAsFloats) {
  const cv::Vec4f pixel(0.25f, 0.5f, 0.75f, 1);
  const auto image = CreateImage(1, 1, PixelLayout::kBgra, DataType::kFloat, 16, pixel.val);
  EXPECT_EQ(EightBitPicture(*image).at<cv::Vec4b>(0, 0), cv::Vec4b(64, 128, 191, 255));
}

}  // namespace
}  // namespace krv::test
