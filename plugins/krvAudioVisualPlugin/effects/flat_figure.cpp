#include "effects/flat_figure.h"

#include <algorithm>
#include <cmath>

#include "effects/draw_uniforms.h"

namespace krv {

HalfView HalfViewOf(DrawUniforms& uniforms) {
  constexpr float kHalfView = 5.3589838486224541f;
  const auto [width, height] = uniforms.Vec2("iResolution");
  return {std::floor(width / height * 10.0f) / 10.0f * kHalfView, kHalfView};
}

QuadSize SizeOfQuad(DrawUniforms& uniforms) {
  const HalfView half_view = HalfViewOf(uniforms);
  return {std::max(std::abs(uniforms.Float("scale_x")) * half_view.x * 2.0f, 1e-12f),
          std::max(std::abs(uniforms.Float("scale_y")) * half_view.y * 2.0f, 1e-12f)};
}

Blocks BlocksOf(int figure, DrawUniforms& uniforms) {
  const bool circles = figure == kCircleColumns;
  const QuadSize quad = SizeOfQuad(uniforms);
  const float size = uniforms.Float(circles ? "circle_size" : "rectangle_height");
  const float gap = uniforms.Float(circles ? "clrcle_gap_size" : "rectangle_gap_size");
  const float half_height = size * quad.width * 0.015f;
  return {half_height, 2.0f * half_height + gap * quad.width * 0.03f, circles ? 0.0f : 0.5f,
          quad.height};
}

}  // namespace krv
