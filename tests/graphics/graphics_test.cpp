#include "graphics/graphics_test.h"

namespace krv::test {

void GraphicsTest::SetUp() {
  GlTest::SetUp();
  if (HasFatalFailure()) return;
  device_ = CreateGraphics(GraphicsKind::kOpenGl);
  ASSERT_NE(device_, nullptr);
}

int32_t GraphicsTest::DrawInto(PXImage& target, const PXGraphicsContext& draw) {
  EXPECT_EQ(device_->SetTarget(&target), 0);
  const int32_t result = device_->Render(draw);
  EXPECT_EQ(device_->SetTarget(nullptr), 0);
  return result;
}

RgbaFloat GraphicsTest::DrawOnePixel(const PXGraphicsContext& draw) {
  const auto target = MakeTarget(1, 1, DataType::kFloat);
  EXPECT_EQ(DrawInto(*target, draw), 0);
  return ReadFloats(*target, 1, 1).front();
}

std::shared_ptr<PXImage> MakeTarget(uint32_t width, uint32_t height, DataType type) {
  const uint32_t pixel_bytes = type == DataType::kFloat ? 16 : 4;
  auto image = CreateImage(width, height, PixelLayout::kRgba, type, width * pixel_bytes, nullptr);
  EXPECT_NE(image, nullptr);
  return image;
}

std::shared_ptr<PXImage> MakeFilled(uint32_t width, uint32_t height, const Rgba& colour) {
  const std::vector<Rgba> pixels(size_t{width} * height, colour);
  auto image =
      CreateImage(width, height, PixelLayout::kRgba, DataType::kUint8, width * 4, pixels.data());
  EXPECT_NE(image, nullptr);
  return image;
}

std::vector<Rgba> ReadRgba(const PXImage& image, uint32_t width, uint32_t height) {
  std::vector<Rgba> texels(size_t{width} * height);
  EXPECT_TRUE(ReadTexture(image, texels.data(), static_cast<int32_t>(width * sizeof(Rgba))));
  return texels;
}

std::vector<RgbaFloat> ReadFloats(const PXImage& image, uint32_t width, uint32_t height) {
  std::vector<RgbaFloat> texels(size_t{width} * height);
  EXPECT_TRUE(ReadTexture(image, texels.data(), static_cast<int32_t>(width * sizeof(RgbaFloat))));
  return texels;
}

std::unique_ptr<PXGraphicsContext> MakeDraw(const std::string& declarations,
                                            const std::string& body) {
  auto draw = CreateGraphicsContext();
  draw->program = CreateProgram(
      "#version 120\nvarying vec2 tc;\n" + declarations + "\nvoid main() { " + body + " }\n", "");
  EXPECT_NE(draw->program, nullptr);
  return draw;
}

}  // namespace krv::test
