// A library beside the plug-in that supplies the implementation where no context is current. It is
// of use only while something else keeps it loaded, which is this test.
#include <gmock/gmock.h>

#include "graphics/external_implementation/calls.h"
#include "graphics/graphics_test.h"
#include "graphics/opengl/px_graphics_opengl.h"
#include "platform/dynamic_library.h"

namespace krv::test {
namespace {

class ExternalImplementationTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(library_.loaded()) << "the library is to be found by its plain name";
    auto* get_calls =
        reinterpret_cast<GetExternalCallsFunction*>(library_.Symbol(kExternalCallsName));
    ASSERT_NE(get_calls, nullptr);
    calls_ = get_calls();
  }

  platform::DynamicLibrary library_ = platform::DynamicLibrary::Open("RMGraphics-impl.dll");
  ExternalCalls* calls_ = nullptr;
};

TEST_F(ExternalImplementationTest, WithoutACurrentContextTheDeviceFallsBackToIt) {
  const auto device = CreateGraphics(GraphicsKind::kOpenGl);
  ASSERT_NE(device, nullptr);
  EXPECT_EQ(device->SetTarget(nullptr), 0);
  const auto draw = CreateGraphicsContext();
  const float value = 1.0f;
  draw->AddUniform("u", UniformType::kFloat, &value, 4);
  draw->mesh_vertices.resize(18);
  EXPECT_EQ(device->Render(*draw), 0);
  EXPECT_EQ(calls_->set_target, 1);
  EXPECT_EQ(calls_->render, 1);
  EXPECT_EQ(calls_->uniforms, 1U);
  EXPECT_EQ(calls_->mesh_floats, 18U);
}

TEST_F(ExternalImplementationTest, ADrawThatItRefusesFails) {
  const auto device = CreateGraphics(GraphicsKind::kOpenGl);
  ASSERT_NE(device, nullptr);
  const auto draw = CreateGraphicsContext();
  draw->draw_mode = DrawMode::kNone;
  EXPECT_EQ(device->Render(*draw), 1);
}

TEST_F(ExternalImplementationTest, ImagesAndProgramsThatItDoesNotMakeAreNull) {
  EXPECT_EQ(CreateImage(2, 2, PixelLayout::kRgba, DataType::kUint8, 8, nullptr), nullptr);
  EXPECT_EQ(CreateProgram("void main() {}", ""), nullptr);
}

TEST_F(ExternalImplementationTest, AnApiTagOtherThanOpenGlIsRefusedBeforeItIsAsked) {
  const auto device = CreateGraphics(GraphicsKind::kOpenGl);
  ASSERT_NE(device, nullptr);
  EXPECT_EQ(device->Render(PXGraphicsContext(0)), 1);
  EXPECT_EQ(calls_->render, 0);
}

TEST_F(ExternalImplementationTest, WithACurrentContextThePlugInsOwnIsUsed) {
  const auto outside = CreateOpenGlGraphics();
  const auto context = MakeCurrentContext();
  ASSERT_NE(context, nullptr);
  const auto inside = CreateOpenGlGraphics();
  ASSERT_TRUE(outside && inside);
  EXPECT_NE(inside->implementation(), outside->implementation());
  context->ClearCurrent();
  EXPECT_EQ(CreateOpenGlGraphics()->implementation(), outside->implementation());
}

}  // namespace
}  // namespace krv::test
