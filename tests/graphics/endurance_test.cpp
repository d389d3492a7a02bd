// GL objects over many frames.
#include <gtest/gtest.h>

#include "graphics/gl_names.h"
#include "graphics/graphics_test.h"

namespace krv::test {
namespace {

using EnduranceTest = GraphicsTest;

constexpr int kCycles = 10000;
constexpr uint32_t kNameBound = 4 * kCycles;  // every cycle makes fewer names of a kind than this

TEST_F(EnduranceTest, TenThousandFramesLeaveNoGlObjectBehind) {
  const auto draw = MakeDraw("uniform sampler2D tex;", "gl_FragColor = texture2D(tex, tc);");
  const std::vector<Rgba> pixels(16, Rgba{1, 2, 3, 4});
  const auto frame = [&] {
    draw->images = {CreateImage(4, 4, PixelLayout::kRgba, DataType::kUint8, 16, pixels.data())};
    const auto target = MakeTarget(4, 4);
    EXPECT_EQ(DrawInto(*target, *draw), 0);
    EXPECT_EQ(ReadRgba(*target, 4, 4), pixels);
    draw->images.clear();
  };
  frame();
  frame();  // the second frame's textures are the first one's, and gone after it
  const GlNames before = GlNames::Alive(kNameBound);
  for (int i = 0; i < kCycles; ++i) frame();
  EXPECT_EQ(GlNames::Alive(kNameBound), before);
}

TEST_F(EnduranceTest, AThousandProgramsLeaveNoGlObjectBehind) {
  MakeDraw("", "gl_FragColor = vec4(1.0);");
  const GlNames before = GlNames::Alive(kNameBound);
  for (int i = 0; i < 1000; ++i) MakeDraw("", "gl_FragColor = vec4(1.0);");
  EXPECT_EQ(GlNames::Alive(kNameBound), before);
}

}  // namespace
}  // namespace krv::test
