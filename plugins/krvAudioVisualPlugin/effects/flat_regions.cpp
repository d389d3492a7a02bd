// Formulas as in shaders/flat.glsl and shaders/flat_folded.vert.glsl.
#include "effects/flat_regions.h"

#include <algorithm>
#include <cmath>

#include "effects/draw_uniforms.h"
#include "effects/flat_figure.h"
#include "effects/folded_figure.h"

namespace krv {
namespace {

struct Range {
  float from;
  float to;

  Range WidenedBy(float margin) const { return {from - margin, to + margin}; }
};

// From the rectangle's own coordinates to the pixels of the target, along one axis.
class Axis {
 public:
  // `corner` is the place of the rectangle's corner in the scene, `sign` the direction in which its
  // axis runs there, `half_view` what is seen to either side of the middle.
  Axis(float corner, float sign, float half_view, float pixels)
      : corner_(corner), sign_(sign), half_view_(half_view), pixels_(pixels) {}

  // With a margin for rounding.
  Range Pixels(Range local) const {
    const float a = PixelOf(local.from);
    const float b = PixelOf(local.to);
    return {std::min(a, b) - 1.0f, std::max(a, b) + 1.0f};
  }

 private:
  float PixelOf(float local) const {
    return ((corner_ + sign_ * local) / half_view_ + 1.0f) * 0.5f * pixels_;
  }

  float corner_;
  float sign_;
  float half_view_;
  float pixels_;
};

// How far from a figure its coverage is too little for a step of 8 bits.
float Sight(int kind, DrawUniforms& uniforms) {
  constexpr float kEpsilon = 0.002f;
  constexpr float kEnd = 200.0f;
  constexpr float kLeastCoverage = 0.0018f;
  const float opacity = std::max(uniforms.Float("alpha") / 100.0f, 1e-6f);
  if (kind == kLines) {
    const float s = std::pow(kLeastCoverage / (20.2f * opacity), 1.25f);
    return std::min(kEpsilon / std::sqrt(s / 3.0f), kEnd);
  }
  return std::min(3.5f * kEpsilon * std::pow(opacity / kLeastCoverage, 2.0f / 3.0f), kEnd);
}

// Half the width of an item, or of a line.
float HalfWidth(int kind, float quad_width, DrawUniforms& uniforms) {
  switch (kind) {
    case kBars:
      return uniforms.Float("spectrum_width") * quad_width * 0.01f;
    case kPoints:
      return uniforms.Float("point_size") * quad_width * 0.005f;
    case kLines:
      return uniforms.Float("line_width") * quad_width * 0.0015f;
    case kCircleColumns:
      return uniforms.Float("circle_size") * quad_width * 0.015f;
    default:
      return uniforms.Float("rectangle_width") * quad_width * 0.015f;
  }
}

// How high the items are in the rectangle.
class Heights {
 public:
  Heights(int kind, DrawUniforms& uniforms, const std::vector<float>& entries)
      : kind_(kind),
        direction_(uniforms.Int("direction")),
        quad_height_(SizeOfQuad(uniforms).height),
        least_(uniforms.Float("spectrum_minimum_height") * 0.01f),
        entries_(entries) {
    if (IsColumns(kind)) blocks_ = BlocksOf(kind, uniforms);
  }

  // From the lowest to the highest place of item i, half a line's width left out.
  Range Of(size_t i) const {
    const float entry = entries_[i];
    if (kind_ == kBars) return Standing(quad_height_ * (least_ * (1.0f - entry) + entry));
    if (IsColumns(kind_)) return Stacked(entry * blocks_.pitch);
    const float base = direction_ == 1 ? quad_height_ * 0.5f : 0.0f;
    const float next = kind_ == kLines && i + 1 < entries_.size() ? entries_[i + 1] : entry;
    return {quad_height_ * std::min(entry, next) + base,
            quad_height_ * std::max(entry, next) + base};
  }

 private:
  // On the base edge or about the middle line.
  Range Standing(float height) const {
    if (direction_ == 0) return {std::min(0.0f, height), std::max(0.0f, height)};
    const float half = std::abs(height) * 0.5f;
    return Range{quad_height_ * 0.5f, quad_height_ * 0.5f}.WidenedBy(half);
  }

  // Blocks whose outermost centres are that far apart: on the base edge, or half a block below the
  // middle line.
  Range Stacked(float height) const {
    const float half_height = blocks_.half_height;
    const float first =
        direction_ == 0 ? half_height : quad_height_ * 0.5f - half_height - height * 0.5f;
    return Range{first, first + height}.WidenedBy(std::abs(half_height));
  }

  int kind_;
  int direction_;
  float quad_height_;
  float least_;
  const std::vector<float>& entries_;
  Blocks blocks_{};
};

bool IsTurned(DrawUniforms& uniforms) {
  return uniforms.Int("rotate_x") != 0 || uniforms.Int("rotate_y") != 0 ||
         uniforms.Int("rotate_z") != 0;
}

Axis AxisAcross(DrawUniforms& uniforms) {
  const float half_view = HalfViewOf(uniforms).x;
  const float scale = uniforms.Float("scale_x") * (uniforms.Bool("flip_x") ? -1.0f : 1.0f);
  const float shift = (uniforms.Float("position_x") / 100.0f - 0.5f) * 4.0f * half_view;
  return {shift - half_view * scale, scale < 0 ? -1.0f : 1.0f, half_view,
          uniforms.Vec2("iResolution")[0]};
}

// The rectangle's own axis runs against the picture's.
Axis AxisUp(DrawUniforms& uniforms) {
  const float half_view = HalfViewOf(uniforms).y;
  const float scale = uniforms.Float("scale_y") * (uniforms.Bool("flip_y") ? -1.0f : 1.0f);
  const float shift = (uniforms.Float("position_y") / 100.0f - 0.5f) * -4.0f * half_view;
  return {shift + half_view * scale, scale < 0 ? 1.0f : -1.0f, half_view,
          uniforms.Vec2("iResolution")[1]};
}

}  // namespace

bool AddSeenItems(DrawUniforms& uniforms, FoldedFigure& figure) {
  const int kind = uniforms.Int("geometry_type");
  if (kind == kPulses || uniforms.Int("glow") != 0 || IsTurned(uniforms)) return false;
  const float quad_width = SizeOfQuad(uniforms).width;
  const float pitch = quad_width / static_cast<float>(figure.entries.size());
  const float half_width = std::abs(HalfWidth(kind, quad_width, uniforms));
  const float sight = Sight(kind, uniforms);
  const bool is_round = kind == kPoints || kind == kLines;
  const Axis across = AxisAcross(uniforms);
  const Axis up = AxisUp(uniforms);
  const Heights heights(kind, uniforms, figure.entries);
  for (size_t i = 0; i < figure.entries.size(); ++i) {
    const float middle = (static_cast<float>(i) + 0.5f) * pitch;
    const Range local_x = {middle, kind == kLines ? middle + pitch : middle};
    const Range x = across.Pixels(local_x.WidenedBy(half_width + sight));
    const Range y = up.Pixels(heights.Of(i).WidenedBy(sight + (is_round ? half_width : 0.0f)));
    figure.seen.Add(x.from, y.from, x.to, y.to);
  }
  return true;
}

}  // namespace krv
