#include <gmock/gmock.h>

#include <thread>

#include "graphics/gl_calls.h"
#include "graphics/graphics_test.h"

namespace krv::test {
namespace {

using testing::Each;

constexpr Rgba kRed = {255, 0, 0, 255};
constexpr Rgba kBlue = {0, 0, 255, 255};
constexpr char kDrawRed[] = "gl_FragColor = vec4(1.0, 0.0, 0.0, 1.0);";
constexpr char kMeshVertexShader[] =
    "#version 120\nattribute vec3 vertex;\nvoid main() { gl_Position = vec4(vertex, 1.0); }\n";
constexpr char kRedFragmentShader[] =
    "#version 120\nvoid main() { gl_FragColor = vec4(1.0, 0.0, 0.0, 1.0); }\n";

class DrawTest : public GraphicsTest {
 protected:
  // A red mesh in clip coordinates.
  static std::unique_ptr<PXGraphicsContext> MakeMeshDraw(std::vector<float> vertices) {
    auto draw = CreateGraphicsContext();
    draw->draw_mode = DrawMode::kMesh;
    draw->program = CreateProgram(kRedFragmentShader, kMeshVertexShader);
    draw->mesh_attribute = "vertex";
    draw->mesh_vertices = std::move(vertices);
    return draw;
  }

  static std::unique_ptr<PXGraphicsContext> MakeRedDraw() { return MakeDraw("", kDrawRed); }
};

TEST_F(DrawTest, TheQuadCoversEveryPixel) {
  for (const auto& [width, height] : {std::pair{1U, 1U}, {7U, 5U}, {64U, 33U}, {1U, 300U}}) {
    const auto target = MakeTarget(width, height);
    ASSERT_EQ(DrawInto(*target, *MakeRedDraw()), 0);
    EXPECT_THAT(ReadRgba(*target, width, height), Each(kRed)) << width << " x " << height;
  }
}

TEST_F(DrawTest, TheTextureCoordinateRunsFromTheFirstTexelOfTheFirstRow) {
  const auto target = MakeTarget(8, 4, DataType::kFloat);
  ASSERT_EQ(DrawInto(*target, *MakeDraw("", "gl_FragColor = vec4(tc, 0.0, 1.0);")), 0);
  const auto texels = ReadFloats(*target, 8, 4);
  for (uint32_t y = 0; y < 4; ++y) {
    for (uint32_t x = 0; x < 8; ++x) {
      const RgbaFloat& texel = texels[y * 8 + x];
      EXPECT_NEAR(texel[0], (static_cast<float>(x) + 0.5f) / 8.0f, 1e-6f);
      EXPECT_NEAR(texel[1], (static_cast<float>(y) + 0.5f) / 4.0f, 1e-6f);
    }
  }
}

TEST_F(DrawTest, APictureIsCopiedRowByRowWithoutFlipping) {
  std::vector<Rgba> pixels;
  for (uint8_t i = 0; i < 6; ++i) {
    pixels.push_back({static_cast<uint8_t>(i * 40), i, static_cast<uint8_t>(255 - i), 255});
  }
  const auto source = CreateImage(3, 2, PixelLayout::kRgba, DataType::kUint8, 12, pixels.data());
  const auto draw = MakeDraw("uniform sampler2D tex;", "gl_FragColor = texture2D(tex, tc);");
  draw->images = {source};
  const auto target = MakeTarget(3, 2);
  ASSERT_EQ(DrawInto(*target, *draw), 0);
  EXPECT_EQ(ReadRgba(*target, 3, 2), pixels);
}

TEST_F(DrawTest, ADrawWithoutGeometryClearsToGreenWithoutOpacity) {
  const auto target = MakeFilled(4, 3, kBlue);
  const auto draw = MakeRedDraw();
  draw->draw_mode = DrawMode::kNone;
  EXPECT_EQ(DrawInto(*target, *draw), 0);
  EXPECT_THAT(ReadRgba(*target, 4, 3), Each(kCleared));
}

TEST_F(DrawTest, AnUnknownDrawModeOnlyClears) {
  const auto target = MakeFilled(4, 3, kBlue);
  const auto draw = MakeRedDraw();
  draw->draw_mode = static_cast<DrawMode>(3);
  EXPECT_EQ(DrawInto(*target, *draw), 0);
  EXPECT_THAT(ReadRgba(*target, 4, 3), Each(kCleared));
}

TEST_F(DrawTest, WhatAMeshDoesNotCoverIsCleared) {
  const auto target = MakeFilled(4, 4, kBlue);
  // The corner below the diagonal from (0, 0) to (4, 4), half a pixel off it.
  ASSERT_EQ(DrawInto(*target, *MakeMeshDraw({-1, -1, 0, 1, -1, 0, -1, 1, 0})), 0);
  const auto texels = ReadRgba(*target, 4, 4);
  EXPECT_EQ(texels[0], kRed);
  EXPECT_EQ(texels[15], kCleared);
}

// Two triangles that cover the left and the right half of the picture and more.
const std::vector<float> kLeftThenRight = {-4, -9, 0, 0, -9, 0, 0, 9, 0,  //
                                           0,  -9, 0, 4, -9, 0, 0, 9, 0};

TEST_F(DrawTest, AMeshOfAnySizeDrawsOneTriangle) {
  const GlCalls<glad_glDrawArrays> draws;
  const auto target = MakeTarget(2, 1);
  ASSERT_EQ(DrawInto(*target, *MakeMeshDraw(kLeftThenRight)), 0);
  const auto texels = ReadRgba(*target, 2, 1);
  EXPECT_EQ(texels[0], kRed);
  EXPECT_EQ(texels[1], kCleared) << "the second triangle is not drawn";
  EXPECT_EQ(draws.count(), 1);
}

TEST_F(DrawTest, AMeshOfLessThanATriangleDrawsNothing) {
  const auto target = MakeTarget(2, 1);
  EXPECT_EQ(DrawInto(*target, *MakeMeshDraw({-4, -9, 0, 0, -9, 0})), 0);
  EXPECT_THAT(ReadRgba(*target, 2, 1), Each(kCleared));
}

TEST_F(DrawTest, AMeshForAnAttributeThatTheProgramLacksDrawsNothing) {
  const auto draw = MakeMeshDraw(kLeftThenRight);
  draw->mesh_attribute = "absent";
  const auto target = MakeTarget(2, 1);
  EXPECT_EQ(DrawInto(*target, *draw), 0);
  EXPECT_THAT(ReadRgba(*target, 2, 1), Each(kCleared));
}

TEST_F(DrawTest, WithoutATargetADrawIsRefusedWithoutAGlCall) {
  const auto draw = MakeRedDraw();
  ASSERT_EQ(device_->SetTarget(nullptr), 0);
  const AnyGlCalls calls;
  EXPECT_EQ(device_->Render(*draw), 1);
  EXPECT_EQ(calls.count(), 0);
}

TEST_F(DrawTest, WithoutAProgramADrawIsRefusedWithoutAGlCall) {
  const auto target = MakeTarget(2, 2);
  const auto draw = CreateGraphicsContext();
  const AnyGlCalls calls;
  EXPECT_EQ(DrawInto(*target, *draw), 1);
  EXPECT_EQ(calls.count(), 0);
}

TEST_F(DrawTest, AContextWhoseApiTagIsZeroIsRefusedWithoutAGlCall) {
  const auto target = MakeTarget(2, 2);
  PXGraphicsContext draw(0);
  draw.program = MakeRedDraw()->program;
  const AnyGlCalls calls;
  EXPECT_EQ(DrawInto(*target, draw), 1);
  EXPECT_EQ(calls.count(), 0);
}

TEST_F(DrawTest, ImagesAreOnUnitsInTheirOrder) {
  const auto draw = MakeDraw("uniform sampler2D a, b, c;",
                             "gl_FragColor = vec4(texture2D(a, tc).r, texture2D(b, tc).r, "
                             "texture2D(c, tc).r, 1.0);");
  draw->images = {MakeFilled(2, 2, {10, 0, 0, 0}), MakeFilled(2, 2, {20, 0, 0, 0}),
                  MakeFilled(2, 2, {30, 0, 0, 0})};
  const int32_t units[3] = {2, 1, 0};
  draw->AddUniform("a", UniformType::kInt, &units[0], 4);
  draw->AddUniform("b", UniformType::kInt, &units[1], 4);
  draw->AddUniform("c", UniformType::kInt, &units[2], 4);
  const auto target = MakeTarget(1, 1);
  ASSERT_EQ(DrawInto(*target, *draw), 0);
  EXPECT_EQ(ReadRgba(*target, 1, 1).front(), (Rgba{30, 20, 10, 255}));
}

TEST_F(DrawTest, ANullImageTakesNoUnit) {
  const auto draw = MakeDraw("uniform sampler2D a, b;",
                             "gl_FragColor = vec4(texture2D(a, tc).r, texture2D(b, tc).r, 0, 1);");
  draw->images = {nullptr, MakeFilled(2, 2, {10, 0, 0, 0}), nullptr,
                  MakeFilled(2, 2, {20, 0, 0, 0})};
  const int32_t second_unit = 1;
  draw->AddUniform("b", UniformType::kInt, &second_unit, 4);
  const auto target = MakeTarget(1, 1);
  ASSERT_EQ(DrawInto(*target, *draw), 0);
  EXPECT_EQ(ReadRgba(*target, 1, 1).front(), (Rgba{10, 20, 0, 255}));
}

TEST_F(DrawTest, AFloatTargetKeepsValuesOutsideZeroToOne) {
  const auto draw = MakeDraw("", "gl_FragColor = vec4(-1.5, 2.5, 1000.0, 7.0);");
  EXPECT_EQ(DrawOnePixel(*draw), (RgbaFloat{-1.5f, 2.5f, 1000.0f, 7.0f}));
}

TEST_F(DrawTest, AllDevicesDrawIntoTheSameTarget) {
  const auto other = CreateGraphics(GraphicsKind::kOpenGl);
  const auto target = MakeTarget(2, 2);
  ASSERT_EQ(other->SetTarget(target.get()), 0);
  EXPECT_EQ(device_->Render(*MakeRedDraw()), 0);
  ASSERT_EQ(other->SetTarget(nullptr), 0);
  EXPECT_THAT(ReadRgba(*target, 2, 2), Each(kRed));
}

TEST_F(DrawTest, ADrawIntoAnIncompleteTargetFails) {
  GLuint name = 0;  // a texture of the host's that has no storage
  glGenTextures(1, &name);
  glBindTexture(GL_TEXTURE_2D, name);
  glBindTexture(GL_TEXTURE_2D, 0);
  const auto target = MakeTarget(2, 2);
  ASSERT_EQ(target->Create(name, 2, 2, PixelLayout::kRgba, DataType::kUint8, 8, nullptr), 0);
  EXPECT_EQ(DrawInto(*target, *MakeRedDraw()), 1);
}

TEST_F(DrawTest, AnotherThreadDoesNotChangeTheTarget) {
  const auto target = MakeTarget(2, 2);
  const auto draw = MakeRedDraw();
  ASSERT_EQ(device_->SetTarget(target.get()), 0);
  std::thread([] {
    const auto own_context = MakeCurrentContext();
    const auto device = CreateGraphics(GraphicsKind::kOpenGl);
    ASSERT_NE(device, nullptr);
    const auto own_draw = MakeDraw("", kDrawRed);
    EXPECT_EQ(device->Render(*own_draw), 1) << "this thread has set no target";
    EXPECT_EQ(device->SetTarget(nullptr), 0);
  }).join();
  EXPECT_EQ(device_->Render(*draw), 0);
  EXPECT_EQ(device_->SetTarget(nullptr), 0);
  EXPECT_THAT(ReadRgba(*target, 2, 2), Each(kRed));
}

// Draws in a context of the calling thread's own and checks every picture.
void DrawOnOwnContext(const Rgba& colour, const std::string& body) {
  const auto context = MakeCurrentContext();
  ASSERT_NE(context, nullptr);
  const auto device = CreateGraphics(GraphicsKind::kOpenGl);
  ASSERT_NE(device, nullptr);
  const auto draw = MakeDraw("", body);
  for (int frame = 0; frame < 100; ++frame) {
    const auto target = MakeTarget(4, 4);
    ASSERT_EQ(device->SetTarget(target.get()), 0);
    ASSERT_EQ(device->Render(*draw), 0);
    ASSERT_EQ(device->SetTarget(nullptr), 0);
    ASSERT_THAT(ReadRgba(*target, 4, 4), Each(colour));
  }
}

TEST_F(DrawTest, TwoThreadsDrawInContextsOfTheirOwn) {
  std::thread first(DrawOnOwnContext, kRed, kDrawRed);
  std::thread second(DrawOnOwnContext, kBlue, "gl_FragColor = vec4(0.0, 0.0, 1.0, 1.0);");
  first.join();
  second.join();
}

}  // namespace
}  // namespace krv::test
