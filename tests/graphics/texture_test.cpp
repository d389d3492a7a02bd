#include "graphics/opengl/impl/Texture.h"

#include <gmock/gmock.h>

#include <vector>

#include "graphics/gl_calls.h"
#include "graphics/opengl/impl/graphics_base.h"
#include "graphics/opengl/impl/resource_pool.h"
#include "platform/stdout_capture.h"
#include "support/gl_fixture.h"

namespace krv::test {
namespace {

constexpr GL::TextureShape kRgba8 = {GL_RGBA8, GL_RGBA, GL_UNSIGNED_BYTE, 3, 2};
constexpr GL::TextureShape kBgra8 = {GL_RGBA8, GL_BGRA, GL_UNSIGNED_BYTE, 3, 2};
constexpr GL::TextureShape kBgra16 = {GL_RGBA8, GL_BGRA, GL_UNSIGNED_SHORT, 3, 2};
constexpr GL::TextureShape kBgraFloat = {GL_RGBA32F, GL_BGRA, GL_FLOAT, 3, 2};

template <class Value>
std::vector<Value> CountingUp(size_t count, Value step) {
  std::vector<Value> values(count);
  for (size_t i = 0; i < count; ++i) values[i] = static_cast<Value>(step * static_cast<Value>(i));
  return values;
}

class TextureTest : public GlTest {
 protected:
  static GLint Parameter(const GL::Texture& texture, GLenum name) {
    glBindTexture(GL_TEXTURE_2D, texture.name());
    GLint value = 0;
    glGetTexParameteriv(GL_TEXTURE_2D, name, &value);
    glBindTexture(GL_TEXTURE_2D, 0);
    return value;
  }

  // The texels as GL has them, red first.
  static std::vector<uint8_t> RgbaOf(const GL::Texture& texture) {
    std::vector<uint8_t> texels(size_t{texture.width()} * texture.height() * 4);
    glBindTexture(GL_TEXTURE_2D, texture.name());
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_UNSIGNED_BYTE, texels.data());
    glBindTexture(GL_TEXTURE_2D, 0);
    return texels;
  }

  static GLuint MakeHostTexture(GLenum internal_format = GL_RGBA8, GLenum format = GL_RGBA) {
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_2D, name);
    glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(internal_format), 3, 2, 0, format,
                 GL_UNSIGNED_BYTE, nullptr);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glBindTexture(GL_TEXTURE_2D, 0);
    return name;
  }
};

TEST_F(TextureTest, ANewTextureIsSampledLinearlyAndMirroredBeyondItsEdges) {
  const auto texture = GL::Texture::Create(kRgba8, nullptr, 0);
  EXPECT_EQ(Parameter(*texture, GL_TEXTURE_MIN_FILTER), GL_LINEAR);
  EXPECT_EQ(Parameter(*texture, GL_TEXTURE_MAG_FILTER), GL_LINEAR);
  EXPECT_EQ(Parameter(*texture, GL_TEXTURE_WRAP_S), GL_MIRRORED_REPEAT);
  EXPECT_EQ(Parameter(*texture, GL_TEXTURE_WRAP_T), GL_MIRRORED_REPEAT);
}

TEST_F(TextureTest, DroppingTheHandleGivesTheNameToThePool) {
  auto& pool = GL::ResourcePool::Instance();
  auto texture = GL::Texture::Create(kRgba8, nullptr, 0);
  const uint32_t name = texture->name();
  EXPECT_EQ(pool.FreeCount(), 0U);
  texture.reset();
  EXPECT_EQ(pool.FreeCount(), 1U);
  EXPECT_EQ(GL::Texture::Create(kRgba8, nullptr, 0)->name(), name);
}

TEST_F(TextureTest, ASizeOfZeroOrAboveTheDriversLimitGivesNoTexture) {
  GLint limit = 0;
  glGetIntegerv(GL_MAX_TEXTURE_SIZE, &limit);
  const auto too_large = static_cast<uint32_t>(limit) + 1;
  const auto create = [](uint32_t width, uint32_t height) {
    return GL::Texture::Create({GL_RGBA8, GL_RGBA, GL_UNSIGNED_BYTE, width, height}, nullptr, 0);
  };
  EXPECT_EQ(create(0, 2), nullptr);
  EXPECT_EQ(create(2, 0), nullptr);
  EXPECT_EQ(create(too_large, 1), nullptr);
  EXPECT_EQ(create(1, too_large), nullptr);
}

TEST_F(TextureTest, RgbaBytesAreUploadedAndReadBackInOrder) {
  const auto pixels = CountingUp<uint8_t>(24, 10);
  const auto texture = GL::Texture::Create(kRgba8, pixels.data(), 3);
  EXPECT_EQ(RgbaOf(*texture), pixels);
  std::vector<uint8_t> read(24);
  EXPECT_TRUE(texture->ReadBack(read.data(), 12));
  EXPECT_EQ(read, pixels);
}

TEST_F(TextureTest, BgraBytesHaveBlueFirstInMemory) {
  const auto pixels = CountingUp<uint8_t>(24, 10);
  const auto texture = GL::Texture::Create(kBgra8, pixels.data(), 3);
  const auto texels = RgbaOf(*texture);
  EXPECT_EQ(texels[0], pixels[2]);
  EXPECT_EQ(texels[1], pixels[1]);
  EXPECT_EQ(texels[2], pixels[0]);
  EXPECT_EQ(texels[3], pixels[3]);
  std::vector<uint8_t> read(24);
  EXPECT_TRUE(texture->ReadBack(read.data(), 12));
  EXPECT_EQ(read, pixels);
}

TEST_F(TextureTest, RowsMayBeFurtherApartThanTheyAreLong) {
  const auto padded = CountingUp<uint8_t>(2 * 20, 6);  // 3 pixels of 5 in each row
  const auto texture = GL::Texture::Create(kRgba8, padded.data(), 5);
  std::vector<uint8_t> expected(padded.begin(), padded.begin() + 12);
  expected.insert(expected.end(), padded.begin() + 20, padded.begin() + 32);
  EXPECT_EQ(RgbaOf(*texture), expected);
}

TEST_F(TextureTest, ReadBackWithAStrideLeavesTheBytesBetweenRowsAlone) {
  const auto pixels = CountingUp<uint8_t>(24, 10);
  const auto texture = GL::Texture::Create(kBgra8, pixels.data(), 3);
  std::vector<uint8_t> read(2 * 15, 0xAB);
  EXPECT_TRUE(texture->ReadBack(read.data(), 15));
  std::vector<uint8_t> expected(pixels.begin(), pixels.begin() + 12);
  expected.insert(expected.end(), 3, 0xAB);
  expected.insert(expected.end(), pixels.begin() + 12, pixels.end());
  expected.insert(expected.end(), 3, 0xAB);
  EXPECT_EQ(read, expected);
}

TEST_F(TextureTest, SixteenBitPixelsAreReadBackWithEightBytesEach) {
  const auto pixels = CountingUp<uint16_t>(24, 10 * 257);  // exact in the texture's 8 bits
  const auto texture = GL::Texture::Create(kBgra16, pixels.data(), 3);
  std::vector<uint16_t> read(25, 7);
  EXPECT_TRUE(texture->ReadBack(read.data(), 24));
  EXPECT_EQ(std::vector(read.begin(), read.begin() + 24), pixels);
  EXPECT_EQ(read[24], 7);
}

TEST_F(TextureTest, FloatPixelsAreReadBackExactlyWithSixteenBytesEach) {
  auto pixels = CountingUp<float>(24, 1.0f / 3.0f);
  pixels[0] = -2.5f;
  const auto texture = GL::Texture::Create(kBgraFloat, pixels.data(), 3);
  std::vector<float> read(25, 7.0f);
  EXPECT_TRUE(texture->ReadBack(read.data(), 48));
  EXPECT_EQ(std::vector(read.begin(), read.begin() + 24), pixels);
  EXPECT_EQ(read[24], 7.0f);
}

TEST_F(TextureTest, ARecycledTextureHoldsTheNewPixels) {
  const std::vector<uint8_t> old_pixels(24, 1);
  const std::vector<uint8_t> new_pixels(24, 2);
  const uint32_t name = GL::Texture::Create(kRgba8, old_pixels.data(), 3)->name();
  const auto texture = GL::Texture::Create(kRgba8, new_pixels.data(), 3);
  ASSERT_EQ(texture->name(), name);
  EXPECT_EQ(RgbaOf(*texture), new_pixels);
}

TEST_F(TextureTest, ReadBackLeavesNoBufferAndNoFramebufferBehind) {
  const auto texture = GL::Texture::Create(kRgba8, nullptr, 0);
  const GlCalls<glad_glGenBuffers, glad_glGenFramebuffers> made;
  const GlCalls<glad_glDeleteBuffers, glad_glDeleteFramebuffers> deleted;
  std::vector<uint8_t> read(24);
  EXPECT_TRUE(texture->ReadBack(read.data(), 12));
  EXPECT_EQ(made.count(), 2);
  EXPECT_EQ(deleted.count(), 2);
}

TEST_F(TextureTest, AnAdoptedTextureIsOverwrittenByPixelsAndKeptByItsOwner) {
  const GLuint name = MakeHostTexture();
  const auto pixels = CountingUp<uint8_t>(24, 10);
  auto texture = GL::Texture::Adopt(name, kRgba8, pixels.data(), 3);
  EXPECT_EQ(texture->name(), name);
  EXPECT_EQ(RgbaOf(*texture), pixels);
  EXPECT_EQ(Parameter(*texture, GL_TEXTURE_MIN_FILTER), GL_NEAREST);
  texture.reset();
  EXPECT_TRUE(glIsTexture(name));
}

TEST_F(TextureTest, AnErrorOfAnUploadIntoAnAdoptedTextureIsNotPrinted) {
  const GLuint name = MakeHostTexture(GL_RGBA8UI, GL_RGBA_INTEGER);
  const auto pixels = CountingUp<uint8_t>(24, 10);
  std::string error;
  const auto capture = host::platform::StdoutCapture::Start(&error);
  ASSERT_NE(capture, nullptr) << error;
  EXPECT_NE(GL::Texture::Adopt(name, kRgba8, pixels.data(), 3), nullptr);
  EXPECT_EQ(capture->Stop(), "");
  EXPECT_THAT(TakeGlErrors(), testing::SizeIs(1)) << "the upload was to fail";
}

TEST_F(TextureTest, ReadPixelsWithoutATextureOrADestinationIsRefused) {
  Graphics_Base graphics;
  const auto texture = GL::Texture::Create(kRgba8, nullptr, 0);
  std::vector<uint8_t> read(24);
  EXPECT_FALSE(graphics.ReadPixels(nullptr, read.data(), 12));
  EXPECT_FALSE(graphics.ReadPixels(texture.get(), nullptr, 12));
  EXPECT_TRUE(graphics.ReadPixels(texture.get(), read.data(), 12));
}

}  // namespace
}  // namespace krv::test
