// What the tests of images, programs and draws share.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "graphics/px_graphics.h"
#include "graphics/px_graphics_context.h"
#include "graphics/px_image.h"
#include "graphics/px_program.h"
#include "support/gl_fixture.h"

namespace krv::test {

using Rgba = std::array<uint8_t, 4>;
using RgbaFloat = std::array<float, 4>;

inline constexpr Rgba kCleared = {0, 255, 0, 0};  // what every draw starts from

// A test with a usable device.
class GraphicsTest : public GlTest {
 protected:
  void SetUp() override;

  // Draws with the image as target for this one draw; the device's result.
  int32_t DrawInto(PXImage& target, const PXGraphicsContext& draw);

  // What the draw makes of one floating-point pixel.
  RgbaFloat DrawOnePixel(const PXGraphicsContext& draw);

  std::shared_ptr<PXGraphics> device_;
};

// A new image, with undefined contents, to draw into: red, green, blue, alpha.
std::shared_ptr<PXImage> MakeTarget(uint32_t width, uint32_t height,
                                    DataType type = DataType::kUint8);

// An image all of one colour.
std::shared_ptr<PXImage> MakeFilled(uint32_t width, uint32_t height, const Rgba& colour);

// The image's texels, row y = 0 first.
std::vector<Rgba> ReadRgba(const PXImage& image, uint32_t width, uint32_t height);
std::vector<RgbaFloat> ReadFloats(const PXImage& image, uint32_t width, uint32_t height);

// A full-frame draw whose fragment shader is `declarations` and `body`, with the texture coordinate
// `tc`.
std::unique_ptr<PXGraphicsContext> MakeDraw(const std::string& declarations,
                                            const std::string& body);

}  // namespace krv::test
