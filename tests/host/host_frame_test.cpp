// The host's pictures.
#include "frame.h"

#include <glad/gl.h>
#include <gtest/gtest.h>

#include <numeric>

#include "gl_context.h"

namespace krv::host {
namespace {

constexpr uint8_t kPadding = 0xEE;

// Rows of `row_bytes` distinct bytes, `stride` apart, with kPadding between them.
std::vector<uint8_t> Rows(int32_t row_bytes, int32_t rows, int32_t stride) {
  std::vector<uint8_t> bytes(static_cast<size_t>(stride) * static_cast<size_t>(rows), kPadding);
  for (int32_t y = 0; y < rows; ++y) {
    for (int32_t x = 0; x < row_bytes; ++x) {
      bytes[static_cast<size_t>(y * stride + x)] = static_cast<uint8_t>(x * 7 + y * 31);
    }
  }
  return bytes;
}

class HostTextureFrame : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string error;
    context_ = GlContext::Create(GlContext::Renderer::kSoftware, &error);
    ASSERT_NE(context_, nullptr) << error;
    ASSERT_TRUE(context_->MakeCurrent());
  }

  std::unique_ptr<TextureFrame> Make(int32_t width, int32_t height, int32_t pixel_type) {
    std::string error;
    auto frame = TextureFrame::Create(width, height, pixel_type, &error);
    EXPECT_NE(frame, nullptr) << error;
    return frame;
  }

  std::unique_ptr<GlContext> context_;
};

TEST(HostMemoryFrame, OwnBufferIsBlackAndHasTheStrideAskedFor) {
  MemoryFrame frame(3, 2, kPixel8, 20);
  FrameDescription description;
  ASSERT_EQ(frame.Describe(&description), kOk);
  EXPECT_EQ(description.pixel_type, kPixel8);
  EXPECT_EQ(description.form, kFrameInMemory);
  EXPECT_EQ(description.width, 3);
  EXPECT_EQ(description.height, 2);
  EXPECT_EQ(description.stride, 20);
  const auto* pixels = static_cast<const uint8_t*>(frame.GetPixels());
  EXPECT_EQ(std::accumulate(pixels, pixels + 40, 0), 0);
}

TEST(HostMemoryFrame, StrideTooSmallIsRaised) {
  MemoryFrame frame(3, 2, kPixelFloat, 20);
  FrameDescription description;
  frame.Describe(&description);
  EXPECT_EQ(description.stride, 48);
}

TEST(HostMemoryFrame, ReadingLeavesThePaddingAlone) {
  std::vector<uint8_t> picture = Rows(12, 2, 16);
  MemoryFrame frame({kPixel8, kFrameInMemory, 3, 2, 16}, picture.data());
  std::vector<uint8_t> read(40, kPadding);
  ASSERT_EQ(frame.ReadPixels(read.data(), 20), kOk);
  EXPECT_EQ(read, Rows(12, 2, 20));
}

TEST(HostMemoryFrame, WithoutABufferThereIsNothingToRead) {
  MemoryFrame frame({kPixel8, kFrameInMemory, 3, 2, 12}, nullptr);
  std::vector<uint8_t> read(24);
  EXPECT_EQ(frame.GetPixels(), nullptr);
  EXPECT_NE(frame.ReadPixels(read.data(), 12), kOk);
}

TEST(HostMemoryFrame, ReadingIntoRowsThatAreTooShortFails) {
  MemoryFrame frame(3, 1, kPixel8);
  std::vector<uint8_t> read(12, kPadding);
  EXPECT_NE(frame.ReadPixels(read.data(), 8), kOk);
  EXPECT_EQ(read, std::vector<uint8_t>(12, kPadding));
}

TEST_F(HostTextureFrame, BytesComeBackAsTheyWentIn) {
  for (const int32_t type : {kPixel8, kPixel16}) {
    const auto frame = Make(5, 3, type);
    const int32_t row_bytes = 5 * BytesPerPixel(type);
    const std::vector<uint8_t> picture = Rows(row_bytes, 3, row_bytes);
    ASSERT_TRUE(frame->Upload(picture.data(), row_bytes));
    std::vector<uint8_t> read(picture.size());
    ASSERT_EQ(frame->ReadPixels(read.data(), row_bytes), kOk);
    EXPECT_EQ(read, picture) << "pixel type " << type;
  }
}

TEST_F(HostTextureFrame, FloatsComeBackUnclamped) {
  const auto frame = Make(2, 1, kPixelFloat);
  const std::vector<float> picture = {-1.5f, 0.25f, 100.0f, 1.0f, 0.0f, 0.5f, 2.0f, 0.125f};
  ASSERT_TRUE(frame->Upload(picture.data(), 32));
  std::vector<float> read(8);
  ASSERT_EQ(frame->ReadPixels(read.data(), 32), kOk);
  EXPECT_EQ(read, picture);
}

TEST_F(HostTextureFrame, PaddedRowsAreReadAndWrittenWithoutTheirPadding) {
  const auto frame = Make(3, 4, kPixel8);
  const std::vector<uint8_t> picture = Rows(12, 4, 17);
  ASSERT_TRUE(frame->Upload(picture.data(), 17));
  std::vector<uint8_t> read(4 * 23, kPadding);
  ASSERT_EQ(frame->ReadPixels(read.data(), 23), kOk);
  EXPECT_EQ(read, Rows(12, 4, 23));
}

TEST_F(HostTextureFrame, TheTopRowIsTheRowThatOpenGlCallsZero) {
  const auto frame = Make(1, 2, kPixel8);
  const std::vector<uint8_t> picture = {10, 20, 30, 40, 50, 60, 70, 80};  // b g r a, two rows
  ASSERT_TRUE(frame->Upload(picture.data(), 4));
  GLuint framebuffer = 0;
  glGenFramebuffers(1, &framebuffer);
  glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
  glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, frame->texture(), 0);
  ASSERT_EQ(glCheckFramebufferStatus(GL_FRAMEBUFFER), GLenum{GL_FRAMEBUFFER_COMPLETE});
  std::vector<uint8_t> rgba(4);
  glReadPixels(0, 0, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, rgba.data());
  EXPECT_EQ(rgba, (std::vector<uint8_t>{30, 20, 10, 40}));
  glBindFramebuffer(GL_FRAMEBUFFER, 0);
  glDeleteFramebuffers(1, &framebuffer);
}

TEST_F(HostTextureFrame, IsCompleteWithoutMipMaps) {
  const auto frame = Make(4, 4, kPixel8);
  glBindTexture(GL_TEXTURE_2D, frame->texture());
  GLint filter = 0;
  glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, &filter);
  EXPECT_EQ(filter, GL_LINEAR);
}

TEST_F(HostTextureFrame, LeavesBindingAndPixelStoreAsTheyWere) {
  GLuint other = 0;
  glGenTextures(1, &other);
  glBindTexture(GL_TEXTURE_2D, other);
  glPixelStorei(GL_PACK_ALIGNMENT, 8);
  glPixelStorei(GL_UNPACK_ROW_LENGTH, 77);
  const auto frame = Make(2, 2, kPixel8);
  std::vector<uint8_t> picture(16);
  ASSERT_TRUE(frame->Upload(picture.data(), 8));
  ASSERT_EQ(frame->ReadPixels(picture.data(), 8), kOk);
  GLint texture = 0;
  GLint pack = 0;
  GLint unpack = 0;
  glGetIntegerv(GL_TEXTURE_BINDING_2D, &texture);
  glGetIntegerv(GL_PACK_ALIGNMENT, &pack);
  glGetIntegerv(GL_UNPACK_ROW_LENGTH, &unpack);
  EXPECT_EQ(static_cast<GLuint>(texture), other);
  EXPECT_EQ(pack, 8);
  EXPECT_EQ(unpack, 77);
  glDeleteTextures(1, &other);
}

TEST_F(HostTextureFrame, SizeThatOpenGlRefusesIsAnErrorWithTheSize) {
  std::string error;
  EXPECT_EQ(TextureFrame::Create(1 << 24, 1, kPixel8, &error), nullptr);
  EXPECT_NE(error.find("16777216 x 1"), std::string::npos) << error;
  EXPECT_EQ(TextureFrame::Create(0, 5, kPixel8, &error), nullptr);
  EXPECT_EQ(TextureFrame::Create(5, 5, 7, &error), nullptr);
}

TEST_F(HostTextureFrame, HasNoPixelsInMemory) {
  EXPECT_EQ(Make(2, 2, kPixel8)->GetPixels(), nullptr);
}

}  // namespace
}  // namespace krv::host
