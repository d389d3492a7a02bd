// Devices and images as effects use them.
#include <gmock/gmock.h>

#include "graphics/gl_calls.h"
#include "graphics/graphics_test.h"
#include "graphics/opengl/impl/Texture.h"
#include "graphics/opengl/px_graphics_opengl.h"
#include "graphics/opengl/px_image_opengl.h"

namespace krv::test {
namespace {

using PxObjectsTest = GraphicsTest;

TEST(PXGraphicsNullTest, EveryKindButOpenGlGivesADeviceThatDrawsNothingAndReportsSuccess) {
  for (const int32_t kind : {0, 2, -1}) {
    const auto device = CreateGraphics(static_cast<GraphicsKind>(kind));
    ASSERT_NE(device, nullptr);
    EXPECT_NE(dynamic_cast<PXGraphicsNull*>(device.get()), nullptr);
    EXPECT_EQ(device->Initialize(), 0);
    EXPECT_EQ(device->SetTarget(nullptr), 0);
    EXPECT_EQ(device->Render(*CreateGraphicsContext()), 0);
  }
}

TEST(PXGraphicsOpenGlTest, ADeviceThatWasNotInitializedRefusesTargetAndDraw) {
  PXGraphics_OpenGL device;
  EXPECT_EQ(device.SetTarget(nullptr), 1);
  EXPECT_EQ(device.Render(*CreateGraphicsContext()), 1);
}

TEST(PXGraphicsOpenGlTest, WithoutACurrentContextThereIsNoDeviceNoImageAndNoProgram) {
  EXPECT_EQ(PXGraphics_OpenGL().Initialize(), 1);
  EXPECT_EQ(CreateGraphics(GraphicsKind::kOpenGl), nullptr);
  EXPECT_EQ(CreateImage(2, 2, PixelLayout::kRgba, DataType::kUint8, 8, nullptr), nullptr);
  EXPECT_EQ(CreateProgram("void main() {}", ""), nullptr);
}

TEST_F(PxObjectsTest, AfterTheContextWasTakenAwayThereIsNoDevice) {
  context().ClearCurrent();
  EXPECT_EQ(CreateGraphics(GraphicsKind::kOpenGl), nullptr);
  context().MakeCurrent();
  EXPECT_NE(CreateGraphics(GraphicsKind::kOpenGl), nullptr);
}

TEST_F(PxObjectsTest, AllDevicesShareOneImplementation) {
  EXPECT_EQ(CreateOpenGlGraphics()->implementation(), CreateOpenGlGraphics()->implementation());
}

TEST_F(PxObjectsTest, AnImageMayOutliveTheDevice) {
  const auto image = MakeFilled(2, 1, {1, 2, 3, 4});
  device_.reset();
  EXPECT_THAT(ReadRgba(*image, 2, 1), testing::Each(Rgba{1, 2, 3, 4}));
}

TEST_F(PxObjectsTest, DroppingImagesWithoutAContextDoesNotCrash) {
  auto image = MakeFilled(2, 1, {1, 2, 3, 4});
  auto draw = MakeDraw("", "gl_FragColor = vec4(1.0);");
  context().ClearCurrent();
  image.reset();
  draw.reset();
  EXPECT_TRUE(context().MakeCurrent());
}

GLint InternalFormatOf(const PXImage& image) {
  GLint format = 0;
  glBindTexture(GL_TEXTURE_2D, image.texture()->name());
  glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_INTERNAL_FORMAT, &format);
  glBindTexture(GL_TEXTURE_2D, 0);
  return format;
}

TEST_F(PxObjectsTest, AFloatImageHasFloatTexelsAndEveryOtherEightBitOnes) {
  const auto format_of = [](DataType type) {
    return InternalFormatOf(*CreateImage(4, 2, PixelLayout::kBgra, type, 64, nullptr));
  };
  EXPECT_EQ(format_of(DataType::kFloat), GL_RGBA32F);
  EXPECT_EQ(format_of(DataType::kUint8), GL_RGBA8);
  EXPECT_EQ(format_of(DataType::kInt8), GL_RGBA8);
  EXPECT_EQ(format_of(DataType::kUint16), GL_RGBA8);
}

TEST_F(PxObjectsTest, OtherTypesLayoutsAndSizesGiveNoImage) {
  EXPECT_EQ(CreateImage(2, 2, PixelLayout::kRgba, DataType::kInt16, 16, nullptr), nullptr);
  EXPECT_EQ(CreateImage(2, 2, PixelLayout::kRgba, static_cast<DataType>(5), 16, nullptr), nullptr);
  EXPECT_EQ(CreateImage(2, 2, static_cast<PixelLayout>(1), DataType::kUint8, 8, nullptr), nullptr);
  EXPECT_EQ(CreateImage(0, 2, PixelLayout::kRgba, DataType::kUint8, 8, nullptr), nullptr);
  EXPECT_EQ(CreateImage(2, 0, PixelLayout::kRgba, DataType::kUint8, 8, nullptr), nullptr);
  EXPECT_EQ(CreateImage(1U << 20, 2, PixelLayout::kRgba, DataType::kUint8, 4U << 20, nullptr),
            nullptr);
}

TEST_F(PxObjectsTest, PixelsWhoseRowsDoNotFitTheirStrideAreRefused) {
  const std::vector<uint8_t> pixels(64);
  EXPECT_EQ(CreateImage(4, 2, PixelLayout::kRgba, DataType::kUint8, 15, pixels.data()), nullptr);
  EXPECT_EQ(CreateImage(4, 2, PixelLayout::kRgba, DataType::kUint8, 0, pixels.data()), nullptr);
}

TEST_F(PxObjectsTest, AStrideThatIsNoMultipleOfThePixelSizeIsUploadedRowByRow) {
  std::vector<uint8_t> pixels(3 * 14);  // 3 rows of 3 pixels and 2 bytes
  for (size_t i = 0; i < pixels.size(); ++i) pixels[i] = static_cast<uint8_t>(i * 5);
  const auto image = CreateImage(3, 3, PixelLayout::kRgba, DataType::kUint8, 14, pixels.data());
  const auto texels = ReadRgba(*image, 3, 3);
  for (size_t y = 0; y < 3; ++y) {
    for (size_t x = 0; x < 3; ++x) {
      const uint8_t* p = &pixels[y * 14 + x * 4];
      EXPECT_EQ(texels[y * 3 + x], (Rgba{p[0], p[1], p[2], p[3]})) << x << ", " << y;
    }
  }
}

TEST_F(PxObjectsTest, DroppingAnImageLetsTheNextOfItsShapeHaveItsTexture) {
  auto image = MakeTarget(4, 4);
  const uint32_t name = image->texture()->name();
  image.reset();
  EXPECT_EQ(MakeTarget(4, 4)->texture()->name(), name);
}

TEST_F(PxObjectsTest, AnImageOfAnExistingTextureNeverDeletesIt) {
  GLuint name = 0;
  glGenTextures(1, &name);
  glBindTexture(GL_TEXTURE_2D, name);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 2, 2, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
  glBindTexture(GL_TEXTURE_2D, 0);
  {
    PXImage_OpenGL image;
    ASSERT_EQ(image.Create(name, 2, 2, PixelLayout::kBgra, DataType::kUint8, 8, nullptr), 0);
    EXPECT_EQ(image.texture()->name(), name);
  }
  EXPECT_TRUE(glIsTexture(name));
}

TEST_F(PxObjectsTest, AMatrixBecomesAnImageOfItsSizeAndStride) {
  cv::Mat wide(2, 5, CV_8UC4, cv::Scalar(1, 2, 3, 4));
  const cv::Mat part = wide(cv::Rect(1, 0, 3, 2));
  const auto image = CreateImage(part, PixelLayout::kBgra);
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->texture()->width(), 3U);
  EXPECT_EQ(image->texture()->height(), 2U);
  EXPECT_THAT(ReadRgba(*image, 3, 2), testing::Each(Rgba{1, 2, 3, 4}));
  EXPECT_EQ(CreateImage(cv::Mat(), PixelLayout::kBgra), nullptr);
}

struct DownloadType {
  DataType type;
  int matrix_type;
  const char* name;
};

class DownloadTypeTest : public GraphicsTest, public testing::WithParamInterface<DownloadType> {};

TEST_P(DownloadTypeTest, DecidesTheMatrixType) {
  const auto image = CreateImage(3, 2, PixelLayout::kRgba, DataType::kUint8, 48, nullptr);
  ASSERT_EQ(image->SetDataType(GetParam().type), 0);
  cv::Mat matrix;
  image->Download(matrix);
  EXPECT_EQ(matrix.type(), CV_MAKETYPE(GetParam().matrix_type, 4));
  ASSERT_EQ(image->SetPixelLayout(static_cast<PixelLayout>(1)), 0);
  image->Download(matrix);
  EXPECT_EQ(matrix.channels(), GetParam().type == static_cast<DataType>(5) ? 4 : 3);
}

INSTANTIATE_TEST_SUITE_P(Types, DownloadTypeTest,
                         testing::Values(DownloadType{DataType::kUint8, CV_8U, "Uint8"},
                                         DownloadType{DataType::kInt8, CV_8S, "Int8"},
                                         DownloadType{DataType::kUint16, CV_16U, "Uint16"},
                                         DownloadType{DataType::kInt16, CV_16S, "Int16"},
                                         DownloadType{DataType::kFloat, CV_16U, "Float"},
                                         DownloadType{static_cast<DataType>(5), CV_8U, "Other"}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(PxObjectsTest, DownloadGivesTheImagesPixelsUnderItsStride) {
  std::vector<uint8_t> pixels(2 * 20);
  for (size_t i = 0; i < pixels.size(); ++i) pixels[i] = static_cast<uint8_t>(i * 6);
  const auto image = CreateImage(3, 2, PixelLayout::kBgra, DataType::kUint8, 20, pixels.data());
  cv::Mat matrix;
  EXPECT_EQ(&image->Download(matrix), &matrix);
  ASSERT_EQ(matrix.rows, 2);
  ASSERT_EQ(matrix.cols, 3);
  EXPECT_EQ(matrix.step[0], 20U);
  for (int y = 0; y < 2; ++y) {
    const uint8_t* expected = &pixels[static_cast<size_t>(y) * 20];
    EXPECT_TRUE(std::equal(expected, expected + 12, matrix.ptr<uint8_t>(y))) << "row " << y;
  }
}

TEST_F(PxObjectsTest, AFloatImageIsDownloadedWholeUnderASixteenBitType) {
  const std::vector<float> pixels = {-1.0f, 0.25f, 3.5f, 1.0f, 100.0f, 0.0f, 0.5f, 1.0f};
  const auto image = CreateImage(2, 1, PixelLayout::kBgra, DataType::kFloat, 32, pixels.data());
  cv::Mat matrix;
  image->Download(matrix);
  ASSERT_EQ(matrix.type(), CV_16UC4);
  ASSERT_EQ(matrix.step[0], 32U);
  const auto* floats = reinterpret_cast<const float*>(matrix.data);
  EXPECT_EQ(std::vector<float>(floats, floats + 8), pixels);
}

TEST_F(PxObjectsTest, DownloadLeavesTheMatrixAloneWhenThereIsNothingToRead) {
  PXImage_OpenGL image;
  cv::Mat matrix(1, 1, CV_8UC1, cv::Scalar(9));
  image.Download(matrix);
  EXPECT_EQ(matrix.type(), CV_8UC1);
  EXPECT_EQ(matrix.at<uint8_t>(0), 9);
}

TEST_F(PxObjectsTest, DownloadLeavesTheMatrixAloneWhenTheStrideHoldsNoRow) {
  const auto image = CreateImage(3, 2, PixelLayout::kBgra, DataType::kUint8, 0, nullptr);
  ASSERT_NE(image, nullptr);
  cv::Mat matrix;
  image->Download(matrix);
  EXPECT_TRUE(matrix.empty());
}

TEST_F(PxObjectsTest, EverySetterStoresAndReturnsZero) {
  const auto image = CreateImage(8, 8, PixelLayout::kBgra, DataType::kUint8, 32, nullptr);
  EXPECT_EQ(image->SetWidth(9), 0);
  EXPECT_EQ(image->SetHeight(10), 0);
  EXPECT_EQ(image->SetStride(40), 0);
  EXPECT_EQ(image->SetKindFlag(1), 0);
  EXPECT_EQ(image->SetPixelLayout(PixelLayout::kRgba), 0);
  EXPECT_EQ(image->SetDataType(DataType::kInt8), 0);
  cv::Mat matrix;
  image->Download(matrix);
  EXPECT_EQ(matrix.cols, 9);
  EXPECT_EQ(matrix.rows, 10);
  EXPECT_EQ(matrix.step[0], 40U);
  EXPECT_EQ(matrix.type(), CV_8SC4);
}

TEST_F(PxObjectsTest, ReadTextureWithoutADestinationIsRefused) {
  EXPECT_FALSE(ReadTexture(*MakeTarget(2, 2), nullptr, 8));
}

TEST_F(PxObjectsTest, ReadTextureRowsReadsTheRowsToTheirPlaceAlone) {
  std::array<uint8_t, 32> pixels{};
  for (size_t i = 0; i < pixels.size(); ++i) pixels[i] = static_cast<uint8_t>(i);
  const auto image = CreateImage(2, 4, PixelLayout::kRgba, DataType::kUint8, 8, pixels.data());
  std::array<uint8_t, 32> picture{};
  picture.fill(99);
  ASSERT_TRUE(ReadTextureRows(*image, {1, 2}, picture.data()));
  EXPECT_TRUE(std::equal(picture.begin() + 8, picture.begin() + 24, pixels.begin() + 8));
  EXPECT_EQ(std::count(picture.begin(), picture.end(), 99), 16);
}

TEST_F(PxObjectsTest, ReadTextureRowsReadsPastAPackBufferOfTheHosts) {
  const auto image = MakeFilled(2, 2, {1, 2, 3, 4});
  GLuint buffer = 0;
  glGenBuffers(1, &buffer);
  glBindBuffer(GL_PIXEL_PACK_BUFFER, buffer);
  std::array<uint8_t, 16> picture{};
  EXPECT_TRUE(ReadTextureRows(*image, {0, 2}, picture.data()));
  EXPECT_EQ(picture[15], 4);
  glDeleteBuffers(1, &buffer);
}

TEST_F(PxObjectsTest, ReadTextureRowsOfNoRowsReadsNothing) {
  std::array<uint8_t, 16> picture{};
  picture.fill(99);
  EXPECT_TRUE(ReadTextureRows(*MakeTarget(2, 2), {0, 0}, picture.data()));
  EXPECT_EQ(std::count(picture.begin(), picture.end(), 99), 16);
}

}  // namespace
}  // namespace krv::test
