// The host's GL state: it must not reach our pictures, and our work must not be left in it.
#include <gmock/gmock.h>

#include "graphics/graphics_test.h"
#include "graphics/opengl/impl/Texture.h"
#include "graphics/opengl/impl/shader.h"

namespace krv::test {
namespace {

using testing::Each;
using testing::ElementsAre;

constexpr GLenum kCapabilities[] = {
    GL_DEPTH_TEST,   GL_BLEND,          GL_SCISSOR_TEST,       GL_CULL_FACE,
    GL_STENCIL_TEST, GL_COLOR_LOGIC_OP, GL_RASTERIZER_DISCARD, GL_FRAMEBUFFER_SRGB,
    GL_ALPHA_TEST};
constexpr GLenum kPixelStore[] = {GL_UNPACK_ALIGNMENT, GL_UNPACK_ROW_LENGTH, GL_UNPACK_SKIP_PIXELS,
                                  GL_UNPACK_SKIP_ROWS, GL_PACK_ALIGNMENT,    GL_PACK_ROW_LENGTH,
                                  GL_PACK_SKIP_PIXELS, GL_PACK_SKIP_ROWS};

GLint Integer(GLenum name) {
  GLint value = 0;
  glGetIntegerv(name, &value);
  return value;
}

GLuint TextureOnUnit(GLuint unit) {
  const GLint active = Integer(GL_ACTIVE_TEXTURE);
  glActiveTexture(GL_TEXTURE0 + unit);
  const GLint name = Integer(GL_TEXTURE_BINDING_2D);
  glActiveTexture(static_cast<GLenum>(active));
  return static_cast<GLuint>(name);
}

class GlStateTest : public GraphicsTest {
 protected:
  void SetUp() override {
    GraphicsTest::SetUp();
    draw_ = MakeDraw("uniform sampler2D tex;", "gl_FragColor = texture2D(tex, tc);");
    source_ = MakeFilled(2, 2, kColour);
    draw_->images = {source_};
    target_ = MakeTarget(8, 8);
  }

  // State that would keep a draw from reaching the target as it is.
  static void SetHostileDrawState() {
    for (const GLenum capability : kCapabilities) glEnable(capability);
    glBlendFunc(GL_ZERO, GL_ONE);
    glScissor(1, 1, 2, 2);
    glCullFace(GL_FRONT_AND_BACK);
    glDepthFunc(GL_NEVER);
    glStencilFunc(GL_NEVER, 0, 0xFF);
    glLogicOp(GL_INVERT);
    glAlphaFunc(GL_NEVER, 0.0f);
    glPolygonMode(GL_FRONT_AND_BACK, GL_POINT);
    glDepthMask(GL_TRUE);
    glColorMask(GL_TRUE, GL_FALSE, GL_FALSE, GL_TRUE);
    glClearColor(0.125f, 0.25f, 0.5f, 0.75f);
    glViewport(3, 4, 1, 2);
    glActiveTexture(GL_TEXTURE5);
  }

  static void SetHostilePixelStore() {
    for (const GLenum name : kPixelStore) glPixelStorei(name, 8);
  }

  static constexpr Rgba kColour = {200, 100, 50, 25};
  std::unique_ptr<PXGraphicsContext> draw_;
  std::shared_ptr<PXImage> source_;
  std::shared_ptr<PXImage> target_;
};

TEST_F(GlStateTest, TheHostsDrawStateDoesNotReachADraw) {
  SetHostileDrawState();
  EXPECT_EQ(DrawInto(*target_, *draw_), 0);
  EXPECT_THAT(ReadRgba(*target_, 8, 8), Each(kColour));
}

TEST_F(GlStateTest, TheHostsDrawStateDoesNotReachAClear) {
  SetHostileDrawState();
  draw_->draw_mode = DrawMode::kNone;
  EXPECT_EQ(DrawInto(*target_, *draw_), 0);
  EXPECT_THAT(ReadRgba(*target_, 8, 8), Each(kCleared));
}

TEST_F(GlStateTest, ADrawPutsTheHostsDrawStateBack) {
  SetHostileDrawState();
  EXPECT_EQ(DrawInto(*target_, *draw_), 0);
  for (const GLenum capability : kCapabilities) EXPECT_TRUE(glIsEnabled(capability)) << capability;
  GLint polygon_mode[2] = {};
  glGetIntegerv(GL_POLYGON_MODE, polygon_mode);
  EXPECT_EQ(polygon_mode[0], GL_POINT);
  EXPECT_EQ(Integer(GL_DEPTH_WRITEMASK), GL_TRUE);
  GLboolean mask[4] = {};
  glGetBooleanv(GL_COLOR_WRITEMASK, mask);
  EXPECT_THAT(mask, ElementsAre(GL_TRUE, GL_FALSE, GL_FALSE, GL_TRUE));
  GLfloat clear_colour[4] = {};
  glGetFloatv(GL_COLOR_CLEAR_VALUE, clear_colour);
  EXPECT_THAT(clear_colour, ElementsAre(0.125f, 0.25f, 0.5f, 0.75f));
  GLint viewport[4] = {};
  glGetIntegerv(GL_VIEWPORT, viewport);
  EXPECT_THAT(viewport, ElementsAre(3, 4, 1, 2));
}

TEST_F(GlStateTest, ADrawTurnsNothingOnThatTheHostHadOff) {
  EXPECT_EQ(DrawInto(*target_, *draw_), 0);
  for (const GLenum capability : kCapabilities) EXPECT_FALSE(glIsEnabled(capability)) << capability;
  glDepthMask(GL_FALSE);
  EXPECT_EQ(DrawInto(*target_, *draw_), 0);
  EXPECT_EQ(Integer(GL_DEPTH_WRITEMASK), GL_FALSE);
}

TEST_F(GlStateTest, ADrawLeavesOtherDrawBuffersTheirBlendingAndColourMask) {
  const auto expect_kept = [this](GLuint on, GLuint off) {
    glEnablei(GL_BLEND, on);
    glDisablei(GL_BLEND, off);
    glColorMaski(on, GL_FALSE, GL_TRUE, GL_FALSE, GL_TRUE);
    glColorMaski(off, GL_TRUE, GL_FALSE, GL_TRUE, GL_TRUE);
    EXPECT_EQ(DrawInto(*target_, *draw_), 0);
    EXPECT_THAT(ReadRgba(*target_, 8, 8), Each(kColour));
    EXPECT_TRUE(glIsEnabledi(GL_BLEND, on)) << on;
    EXPECT_FALSE(glIsEnabledi(GL_BLEND, off)) << off;
    GLboolean mask[4] = {};
    glGetBooleani_v(GL_COLOR_WRITEMASK, on, mask);
    EXPECT_THAT(mask, ElementsAre(GL_FALSE, GL_TRUE, GL_FALSE, GL_TRUE)) << on;
    glGetBooleani_v(GL_COLOR_WRITEMASK, off, mask);
    EXPECT_THAT(mask, ElementsAre(GL_TRUE, GL_FALSE, GL_TRUE, GL_TRUE)) << off;
  };
  glBlendFunc(GL_ZERO, GL_ONE);
  expect_kept(1, 0);
  expect_kept(0, 1);
}

TEST_F(GlStateTest, ADrawLeavesNoProgramFramebufferOrArrayBufferAndUnitZeroActive) {
  const auto hosts = MakeDraw("", "gl_FragColor = vec4(0.0);");
  glUseProgram(hosts->program->shader()->name());
  GLuint buffer = 0;
  glGenBuffers(1, &buffer);
  glBindBuffer(GL_ARRAY_BUFFER, buffer);
  glActiveTexture(GL_TEXTURE5);
  EXPECT_EQ(DrawInto(*target_, *draw_), 0);
  EXPECT_EQ(Integer(GL_CURRENT_PROGRAM), 0);
  EXPECT_EQ(Integer(GL_FRAMEBUFFER_BINDING), 0);
  EXPECT_EQ(Integer(GL_ARRAY_BUFFER_BINDING), 0);
  EXPECT_EQ(Integer(GL_ACTIVE_TEXTURE), GL_TEXTURE0);
}

TEST_F(GlStateTest, TheUnitsThatADrawUsedAreLeftUnboundAndOthersAsTheyWere) {
  GLuint hosts = 0;
  glGenTextures(1, &hosts);
  for (const GLenum unit : {GL_TEXTURE1, GL_TEXTURE2, GL_TEXTURE5}) {
    glActiveTexture(unit);
    glBindTexture(GL_TEXTURE_2D, hosts);
  }
  draw_->images = {source_, source_};
  EXPECT_EQ(DrawInto(*target_, *draw_), 0);
  ReadRgba(*target_, 8, 8);
  EXPECT_EQ(TextureOnUnit(0), 0U);
  EXPECT_EQ(TextureOnUnit(1), 0U);
  EXPECT_EQ(TextureOnUnit(2), hosts);
  EXPECT_EQ(TextureOnUnit(5), hosts) << "the host's active unit is not one the draw used";
}

TEST_F(GlStateTest, ReadBackLeavesTheHostsActiveUnitsTextureAlone) {
  GLuint hosts = 0;
  glGenTextures(1, &hosts);
  glActiveTexture(GL_TEXTURE5);
  glBindTexture(GL_TEXTURE_2D, hosts);
  ReadRgba(*target_, 8, 8);
  EXPECT_EQ(TextureOnUnit(5), hosts);
  EXPECT_EQ(Integer(GL_ACTIVE_TEXTURE), GL_TEXTURE0);
  EXPECT_EQ(Integer(GL_FRAMEBUFFER_BINDING), 0);
  EXPECT_EQ(Integer(GL_PIXEL_PACK_BUFFER_BINDING), 0);
}

TEST_F(GlStateTest, AProgramOfTheHostsDoesNotDraw) {
  const auto hosts = MakeDraw("", "gl_FragColor = vec4(0.0);");
  glUseProgram(hosts->program->shader()->name());
  EXPECT_EQ(DrawInto(*target_, *draw_), 0);
  EXPECT_THAT(ReadRgba(*target_, 8, 8), Each(kColour));
}

TEST_F(GlStateTest, AVertexArrayOfTheHostsIsNeitherUsedNorChanged) {
  GLuint vertex_array = 0;
  glGenVertexArrays(1, &vertex_array);
  glBindVertexArray(vertex_array);
  EXPECT_EQ(DrawInto(*target_, *draw_), 0);
  EXPECT_THAT(ReadRgba(*target_, 8, 8), Each(kColour));
  EXPECT_EQ(Integer(GL_VERTEX_ARRAY_BINDING), static_cast<GLint>(vertex_array));
  GLint bound = -1;
  glGetVertexAttribiv(0, GL_VERTEX_ATTRIB_ARRAY_BUFFER_BINDING, &bound);
  EXPECT_EQ(bound, 0);
}

TEST_F(GlStateTest, InstancedAttributesOfTheHostsDoNotReachADraw) {
  glVertexAttribDivisor(0, 1);
  EXPECT_EQ(DrawInto(*target_, *draw_), 0);
  EXPECT_THAT(ReadRgba(*target_, 8, 8), Each(kColour));
}

TEST_F(GlStateTest, ASamplerOfTheHostsIsNotUsedAndPutBack) {
  GLuint sampler = 0;  // its filter needs mip maps, which our textures do not have
  glGenSamplers(1, &sampler);
  glSamplerParameteri(sampler, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
  glBindSampler(0, sampler);
  EXPECT_EQ(DrawInto(*target_, *draw_), 0);
  EXPECT_THAT(ReadRgba(*target_, 8, 8), Each(kColour));
  EXPECT_EQ(Integer(GL_SAMPLER_BINDING), static_cast<GLint>(sampler));
}

TEST_F(GlStateTest, TheHostsPixelStoreDoesNotReachTransfersAndIsKept) {
  SetHostilePixelStore();
  std::vector<Rgba> pixels;
  for (uint8_t i = 0; i < 15; ++i) pixels.push_back({i, 1, 2, static_cast<uint8_t>(200 + i)});
  const auto image = CreateImage(5, 3, PixelLayout::kRgba, DataType::kUint8, 20, pixels.data());
  EXPECT_EQ(ReadRgba(*image, 5, 3), pixels);
  for (const GLenum name : kPixelStore) EXPECT_EQ(Integer(name), 8) << name;
}

TEST_F(GlStateTest, ByteSwappingOfTheHostsDoesNotReachTransfersAndIsKept) {
  glPixelStorei(GL_UNPACK_SWAP_BYTES, GL_TRUE);
  glPixelStorei(GL_PACK_SWAP_BYTES, GL_TRUE);
  const std::vector<RgbaFloat> pixels(4, RgbaFloat{0.5f, -1.0f, 2.0f, 1.0f});
  const auto image = CreateImage(2, 2, PixelLayout::kRgba, DataType::kFloat, 32, pixels.data());
  EXPECT_EQ(ReadFloats(*image, 2, 2), pixels);
  EXPECT_EQ(Integer(GL_UNPACK_SWAP_BYTES), GL_TRUE);
  EXPECT_EQ(Integer(GL_PACK_SWAP_BYTES), GL_TRUE);
}

TEST_F(GlStateTest, PixelBuffersOfTheHostsAreNeitherReadNorWritten) {
  const std::vector<uint8_t> content(1024, 3);
  GLuint buffers[2] = {};
  glGenBuffers(2, buffers);
  glBindBuffer(GL_PIXEL_UNPACK_BUFFER, buffers[0]);
  glBufferData(GL_PIXEL_UNPACK_BUFFER, 1024, content.data(), GL_STREAM_DRAW);
  const auto image = MakeFilled(4, 4, kColour);
  EXPECT_EQ(Integer(GL_PIXEL_UNPACK_BUFFER_BINDING), 0);

  glBindBuffer(GL_PIXEL_PACK_BUFFER, buffers[1]);
  glBufferData(GL_PIXEL_PACK_BUFFER, 1024, content.data(), GL_STREAM_READ);
  EXPECT_THAT(ReadRgba(*image, 4, 4), Each(kColour));
  EXPECT_EQ(Integer(GL_PIXEL_PACK_BUFFER_BINDING), 0);
  glBindBuffer(GL_PIXEL_PACK_BUFFER, buffers[1]);
  std::vector<uint8_t> after(1024);
  glGetBufferSubData(GL_PIXEL_PACK_BUFFER, 0, 1024, after.data());
  EXPECT_EQ(after, content);
}

TEST_F(GlStateTest, AFramebufferOfTheHostsIsNeitherDrawnIntoNorRead) {
  const auto hosts = MakeFilled(8, 8, {1, 2, 3, 4});
  GLuint framebuffer = 0;
  glGenFramebuffers(1, &framebuffer);
  glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
  glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D,
                         hosts->texture()->name(), 0);
  EXPECT_EQ(DrawInto(*target_, *draw_), 0);
  glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
  EXPECT_THAT(ReadRgba(*target_, 8, 8), Each(kColour));
  EXPECT_THAT(ReadRgba(*hosts, 8, 8), Each(Rgba{1, 2, 3, 4}));
}

}  // namespace
}  // namespace krv::test
