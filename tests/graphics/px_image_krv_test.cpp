// Images that wrap host frames.
#include "graphics/opengl/px_image_krv.h"

#include <gmock/gmock.h>

#include <map>

#include "boundary/plugin_registry.h"
#include "frame.h"
#include "graphics/graphics_test.h"
#include "krv/suites.h"

namespace krv::test {
namespace {

// Names the textures of the frames it was told of.
class Device final : public GpuDeviceSuite {
 public:
  uint32_t GetDeviceCount() override { return 1; }
  int32_t GetDeviceInfo(uint32_t, DeviceInfo*) override { return 0; }
  int32_t GetFrameTexture(uint32_t, HostFrame* frame, uint32_t* texture) override {
    const auto found = textures.find(frame);
    if (found == textures.end()) return 4;
    *texture = found->second;
    return 0;
  }

  std::map<HostFrame*, uint32_t> textures;
};

class PXImageKrvTest : public GraphicsTest {
 protected:
  void SetUp() override {
    GraphicsTest::SetUp();
    PluginRegistry::Instance().gpu_device_suite = &device_suite_;
    PluginRegistry::Instance().gpu_device_index = 0;
  }

  void TearDown() override {
    PluginRegistry::Instance().gpu_device_suite = nullptr;
    PluginRegistry::Instance().gpu_device_index = -1;
    GraphicsTest::TearDown();
  }

  std::unique_ptr<host::TextureFrame> MakeTextureFrame(int32_t width, int32_t height) {
    std::string error;
    auto frame = host::TextureFrame::Create(width, height, kPixel8, &error);
    EXPECT_NE(frame, nullptr) << error;
    device_suite_.textures[frame.get()] = frame->texture();
    return frame;
  }

  Device device_suite_;
};

// A frame of 3 x 2 pixels with padded rows, filled with a count.
struct CountedFrame {
  CountedFrame() {
    for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<uint8_t>(i * 5);
  }
  std::vector<uint8_t> bytes = std::vector<uint8_t>(2 * 20);
  host::MemoryFrame frame{FrameDescription{kPixel8, kFrameInMemory, 3, 2, 20}, bytes.data()};
};

TEST_F(PXImageKrvTest, AFrameInMemoryIsUploadedBlueFirst) {
  CountedFrame counted;
  const auto image = CreateImageFromFrame(EffectImage::Wrap(&counted.frame), counted.bytes.data());
  ASSERT_NE(image, nullptr);
  const auto draw = MakeDraw("uniform sampler2D tex;", "gl_FragColor = texture2D(tex, tc);");
  draw->images = {image};
  const auto target = MakeTarget(3, 2);
  ASSERT_EQ(DrawInto(*target, *draw), 0);
  const auto texels = ReadRgba(*target, 3, 2);
  EXPECT_EQ(texels[0], (Rgba{10, 5, 0, 15}));
  EXPECT_EQ(texels[3], (Rgba{110, 105, 100, 115}));
}

TEST_F(PXImageKrvTest, DownloadReadsTheFrameAndReadTextureTheTexture) {
  CountedFrame counted;
  const auto image = CreateImageFromFrame(EffectImage::Wrap(&counted.frame), counted.bytes.data());
  ASSERT_EQ(DrawInto(*image, *MakeDraw("", "gl_FragColor = vec4(1.0);")), 0);
  cv::Mat matrix;
  image->Download(matrix);
  ASSERT_EQ(matrix.type(), CV_8UC4);
  ASSERT_EQ(matrix.size(), cv::Size(3, 2));
  EXPECT_EQ(matrix.step[0], 20U);
  EXPECT_EQ(matrix.at<cv::Vec4b>(1, 0), cv::Vec4b(100, 105, 110, 115));
  EXPECT_THAT(ReadRgba(*image, 3, 2), testing::Each(Rgba{255, 255, 255, 255}));
}

TEST_F(PXImageKrvTest, DeeperFramesKeepTheirDepthInDownloads) {
  host::MemoryFrame deep(3, 2, kPixel16);
  host::MemoryFrame floating(3, 2, kPixelFloat);
  cv::Mat matrix;
  EXPECT_EQ(CreateImageFromFrame(EffectImage::Wrap(&deep), nullptr)->Download(matrix).type(),
            CV_16UC4);
  EXPECT_EQ(CreateImageFromFrame(EffectImage::Wrap(&floating), nullptr)->Download(matrix).type(),
            CV_32FC4);
}

// OpenCV refuses rows that begin in the middle of a channel.
TEST_F(PXImageKrvTest, DownloadsOfDeepFramesWithOddStridesHaveRowsOfWholeChannels) {
  for (const auto& [type, matrix_type] : {std::pair{kPixel16, CV_16UC4}, {kPixelFloat, CV_32FC4}}) {
    host::MemoryFrame frame(3, 2, type, 3 * host::BytesPerPixel(type) + 1);
    auto* const bytes = static_cast<uint8_t*>(frame.GetPixels());
    std::fill_n(bytes + 3 * host::BytesPerPixel(type) + 1, host::BytesPerPixel(type), uint8_t{62});
    const auto image = CreateImageFromFrame(EffectImage::Wrap(&frame), nullptr);
    cv::Mat matrix;  // over the image's own buffer
    image->Download(matrix);
    ASSERT_EQ(matrix.type(), matrix_type);
    ASSERT_EQ(matrix.size(), cv::Size(3, 2));
    for (size_t i = 0; i < matrix.elemSize(); ++i) {
      EXPECT_EQ(matrix.ptr(0)[i], 0) << "type " << type;
      EXPECT_EQ(matrix.ptr(1)[i], 62) << "type " << type;
    }
  }
}

TEST_F(PXImageKrvTest, AFrameOnTheGpuIsDrawnIntoItsOwnTextureWhichIsNeverDeleted) {
  const auto frame = MakeTextureFrame(4, 4);
  auto image = CreateImageFromFrame(EffectImage::Wrap(frame.get()), nullptr);
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->texture()->name(), frame->texture());
  ASSERT_EQ(DrawInto(*image, *MakeDraw("", "gl_FragColor = vec4(1.0, 0.0, 0.0, 1.0);")), 0);
  image.reset();
  EXPECT_TRUE(glIsTexture(frame->texture()));
  std::vector<Rgba> bgra(16);
  ASSERT_EQ(frame->ReadPixels(bgra.data(), 16), 0);
  EXPECT_THAT(bgra, testing::Each(Rgba{0, 0, 255, 255}));
}

TEST_F(PXImageKrvTest, AFrameThatTheHostNamesNoTextureOfGivesNoImage) {
  const auto frame = MakeTextureFrame(4, 4);
  device_suite_.textures.clear();
  EXPECT_EQ(CreateImageFromFrame(EffectImage::Wrap(frame.get()), nullptr), nullptr);
  EXPECT_EQ(CreateImageFromFrame(nullptr, nullptr), nullptr);
}

TEST_F(PXImageKrvTest, TheImageKeepsItsFrame) {
  host::MemoryFrame frame(3, 2, kPixel8);
  auto wrapper = EffectImage::Wrap(&frame);
  const std::weak_ptr<EffectImage> watch = wrapper;
  auto image = CreateImageFromFrame(std::move(wrapper), nullptr);
  EXPECT_FALSE(watch.expired());
  image.reset();
  EXPECT_TRUE(watch.expired());
}

TEST_F(PXImageKrvTest, WithoutAFrameDownloadReadsTheTexture) {
  const std::vector<uint8_t> pixels(16, 77);
  PXImage_KRV image;
  ASSERT_EQ(image.Create(0, 2, 2, PixelLayout::kBgra, DataType::kUint8, 8, pixels.data()), 0);
  cv::Mat matrix;
  image.Download(matrix);
  EXPECT_EQ(matrix.at<cv::Vec4b>(1, 1), cv::Vec4b::all(77));
}

}  // namespace
}  // namespace krv::test
