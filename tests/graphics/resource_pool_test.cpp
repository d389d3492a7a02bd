#include "graphics/opengl/impl/resource_pool.h"

#include <gmock/gmock.h>

#include <vector>

#include "graphics/gl_calls.h"
#include "platform/stdout_capture.h"
#include "support/gl_fixture.h"
#include "support/matches_pattern.h"

namespace krv::test {
namespace {

class ResourcePoolTest : public GlTest {
 protected:
  uint32_t AcquireRgba(uint32_t width, uint32_t height) {
    return pool_.Acquire(GL_RGBA8, GL_RGBA, width, height);
  }

  static GLuint BoundFramebuffer() {
    GLint name = 0;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &name);
    return static_cast<GLuint>(name);
  }

  static GLuint MakeHostTexture() {
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_2D, name);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 8, 8, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    glBindTexture(GL_TEXTURE_2D, 0);
    return name;
  }

  GL::ResourcePool& pool_ = GL::ResourcePool::Instance();
};

TEST_F(ResourcePoolTest, ReacquiringAShapeReturnsTheReleasedNameWithoutANewAllocation) {
  const uint32_t name = AcquireRgba(16, 8);
  pool_.Release(name);
  const TextureAllocations allocations;
  EXPECT_EQ(AcquireRgba(16, 8), name);
  EXPECT_EQ(allocations.count(), 0);
}

TEST_F(ResourcePoolTest, OnlyTheExactShapeIsRecycled) {
  pool_.Release(AcquireRgba(16, 8));
  const TextureAllocations allocations;
  AcquireRgba(8, 16);
  pool_.Acquire(GL_RGBA8, GL_BGRA, 16, 8);
  pool_.Acquire(GL_RGBA32F, GL_RGBA, 16, 8);
  AcquireRgba(16, 9);
  AcquireRgba(17, 8);
  EXPECT_EQ(allocations.count(), 5 * 2);
  EXPECT_EQ(pool_.FreeCount(), 1U);
}

TEST_F(ResourcePoolTest, TheMostRecentlyReleasedNameIsTakenFirst) {
  const uint32_t older = AcquireRgba(16, 8);
  const uint32_t newer = AcquireRgba(16, 8);
  pool_.Release(older);
  pool_.Release(newer);
  EXPECT_EQ(AcquireRgba(16, 8), newer);
  EXPECT_EQ(AcquireRgba(16, 8), older);
}

TEST_F(ResourcePoolTest, ARecycledNameIsDeletedWhenItIsReleasedAgain) {
  const uint32_t name = AcquireRgba(16, 8);
  pool_.Release(name);
  ASSERT_EQ(AcquireRgba(16, 8), name);
  pool_.Release(name);
  EXPECT_FALSE(glIsTexture(name));
  EXPECT_EQ(pool_.FreeCount(), 0U);
  EXPECT_EQ(pool_.FreeBytes(), 0U);
}

// 1024 x 1024 texels of 4 bytes; 25 of them are exactly the budget.
constexpr uint32_t kSide = 1024;
constexpr size_t kFitting = 25;
static_assert(kFitting * kSide * kSide * 4 == 104857600);

TEST_F(ResourcePoolTest, FreeTexturesOfExactlyTheBudgetAreAllKept) {
  std::vector<uint32_t> names;
  for (size_t i = 0; i < kFitting; ++i) names.push_back(AcquireRgba(kSide, kSide));
  for (const uint32_t name : names) pool_.Release(name);
  EXPECT_EQ(pool_.FreeCount(), kFitting);
  EXPECT_EQ(pool_.FreeBytes(), 104857600U);
}

TEST_F(ResourcePoolTest, BeyondTheBudgetTheOldestFreeTexturesAreDeletedUntilTheRestFits) {
  std::vector<uint32_t> names;
  for (size_t i = 0; i < kFitting; ++i) names.push_back(AcquireRgba(kSide, kSide));
  const uint32_t twice_as_large = AcquireRgba(kSide, 2 * kSide);
  for (const uint32_t name : names) pool_.Release(name);
  pool_.Release(twice_as_large);
  EXPECT_FALSE(glIsTexture(names[0]));
  EXPECT_FALSE(glIsTexture(names[1]));
  EXPECT_TRUE(glIsTexture(names[2]));
  EXPECT_TRUE(glIsTexture(twice_as_large));
  EXPECT_EQ(pool_.FreeCount(), kFitting - 2 + 1);
  EXPECT_EQ(pool_.FreeBytes(), 104857600U);
}

TEST_F(ResourcePoolTest, TexturesInUseDoNotCountAgainstTheBudget) {
  std::vector<uint32_t> names;
  for (size_t i = 0; i < kFitting + 1; ++i) names.push_back(AcquireRgba(kSide, kSide));
  pool_.Release(names.front());
  EXPECT_TRUE(glIsTexture(names.front()));
  EXPECT_EQ(pool_.FreeCount(), 1U);
}

TEST_F(ResourcePoolTest, ATextureAboveTheBudgetEvictsItself) {
  const uint32_t large = AcquireRgba(5120, 5121);
  pool_.Release(large);
  EXPECT_FALSE(glIsTexture(large));
  EXPECT_EQ(pool_.FreeCount(), 0U);
  EXPECT_EQ(pool_.FreeBytes(), 0U);
}

TEST_F(ResourcePoolTest, AHostTextureAdoptedTwiceNeedsTwoReleasesAndIsNeverDeleted) {
  const GLuint name = MakeHostTexture();
  pool_.Adopt(name, GL_RGBA8, GL_BGRA, 8, 8);
  pool_.Adopt(name, GL_RGBA8, GL_BGRA, 8, 8);

  pool_.Release(name);
  pool_.BindFramebuffer(name);
  EXPECT_NE(BoundFramebuffer(), 0U) << "one user is left, so the pool still knows the texture";
  pool_.UnbindFramebuffer(name);

  pool_.Release(name);
  pool_.BindFramebuffer(name);
  EXPECT_EQ(BoundFramebuffer(), 0U) << "no user is left";
  EXPECT_TRUE(glIsTexture(name));
  EXPECT_EQ(pool_.FreeCount(), 0U) << "the host's texture is not the pool's to hand out";
}

TEST_F(ResourcePoolTest, ReleasingANameThePoolNeverSawDeletesIt) {
  const GLuint name = MakeHostTexture();
  pool_.Release(name);
  EXPECT_FALSE(glIsTexture(name));
}

TEST_F(ResourcePoolTest, ReleasingNameZeroDoesNothing) {
  const TextureDeletions deletions;
  pool_.Release(0);
  EXPECT_EQ(deletions.count(), 0);
}

TEST_F(ResourcePoolTest, AnInternalFormatThatIsNotSupportedGivesNoTexture) {
  const TextureAllocations allocations;
  pool_.FreeCount();
  const int before = allocations.count();
  EXPECT_EQ(pool_.Acquire(GL_RGBA16, GL_RGBA, 8, 8), 0U);
  EXPECT_EQ(allocations.count(), before);
}

TEST_F(ResourcePoolTest, AFramebufferLivesFromBindToUnbind) {
  const uint32_t name = AcquireRgba(16, 8);
  pool_.BindFramebuffer(name);
  const GLuint framebuffer = BoundFramebuffer();
  ASSERT_NE(framebuffer, 0U);
  EXPECT_EQ(glCheckFramebufferStatus(GL_FRAMEBUFFER), GLenum{GL_FRAMEBUFFER_COMPLETE});
  GLint attached = 0;
  glGetFramebufferAttachmentParameteriv(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0,
                                        GL_FRAMEBUFFER_ATTACHMENT_OBJECT_NAME, &attached);
  EXPECT_EQ(static_cast<uint32_t>(attached), name);

  pool_.UnbindFramebuffer(name);
  EXPECT_EQ(BoundFramebuffer(), 0U);
  EXPECT_FALSE(glIsFramebuffer(framebuffer));
}

TEST_F(ResourcePoolTest, ATextureThatHasAFramebufferIsBoundWithIt) {
  const uint32_t name = AcquireRgba(16, 8);
  pool_.BindFramebuffer(name);
  const GLuint framebuffer = BoundFramebuffer();
  glBindFramebuffer(GL_FRAMEBUFFER, 0);
  pool_.BindFramebuffer(name);
  EXPECT_EQ(BoundFramebuffer(), framebuffer);
  pool_.UnbindFramebuffer(name);
}

TEST_F(ResourcePoolTest, BindingTheFramebufferOfAnUnknownNameDoesNothing) {
  const GlCalls<glad_glGenFramebuffers, glad_glBindFramebuffer> calls;
  pool_.BindFramebuffer(4711);
  EXPECT_EQ(calls.count(), 0);
}

TEST_F(ResourcePoolTest, AHostsUnpackBufferIsNotTakenForPixels) {
  GLuint buffer = 0;
  glGenBuffers(1, &buffer);
  glBindBuffer(GL_PIXEL_UNPACK_BUFFER, buffer);
  glBufferData(GL_PIXEL_UNPACK_BUFFER, 16, nullptr, GL_STREAM_DRAW);
  const uint32_t name = AcquireRgba(64, 32);
  glDeleteBuffers(1, &buffer);

  glBindTexture(GL_TEXTURE_2D, name);
  GLint width = 0;
  glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
  EXPECT_EQ(width, 64);
}

TEST_F(ResourcePoolTest, AGlErrorIsPrintedWithItsPlaceAndWorkGoesOn) {
  std::string error;
  const auto capture = host::platform::StdoutCapture::Start(&error);
  ASSERT_NE(capture, nullptr) << error;
  const uint32_t name = pool_.Acquire(GL_RGBA8, GL_NONE, 8, 8);
  EXPECT_THAT(capture->Stop(),
              MatchesPattern("GL error 0x500 at plugins/krvAudioVisualPlugin/graphics/"
                             "opengl/impl/resource_pool\\.cpp:[0-9]+\n"));
  EXPECT_NE(name, 0U);
  EXPECT_THAT(TakeGlErrors(), testing::SizeIs(1));
}

struct FormatSize {
  GLenum internal_format;
  GLenum format;
  uint64_t texel_bytes;
};

class TexelSizeTest : public ResourcePoolTest, public testing::WithParamInterface<FormatSize> {};

TEST_P(TexelSizeTest, FreeBytesCountTheInternalFormatsTexels) {
  const FormatSize& shape = GetParam();
  pool_.Release(pool_.Acquire(shape.internal_format, shape.format, 12, 10));
  EXPECT_EQ(pool_.FreeBytes(), 12 * 10 * shape.texel_bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Formats, TexelSizeTest,
    testing::Values(FormatSize{GL_R8, GL_RED, 1}, FormatSize{GL_RG8, GL_RG, 2},
                    FormatSize{GL_RGB8, GL_RGB, 3}, FormatSize{GL_RGBA8, GL_RGBA, 4},
                    FormatSize{GL_SRGB8, GL_RGB, 3}, FormatSize{GL_SRGB8_ALPHA8, GL_RGBA, 4},
                    FormatSize{GL_R16F, GL_RED, 2}, FormatSize{GL_RG16F, GL_RG, 4},
                    FormatSize{GL_RGB16F, GL_RGB, 6}, FormatSize{GL_RGBA16F, GL_RGBA, 8},
                    FormatSize{GL_R32F, GL_RED, 4}, FormatSize{GL_RG32F, GL_RG, 8},
                    FormatSize{GL_RGB32F, GL_RGB, 12}, FormatSize{GL_RGBA32F, GL_RGBA, 16}));

}  // namespace
}  // namespace krv::test
