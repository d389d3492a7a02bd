// Lays the effect over the frame with the blend program, at full size.
#pragma once

#include <functional>
#include <utility>

#include "effects/compositor.h"
#include "effects/frame_target.h"

namespace krv {

class GlCompositor final : public Compositor {
 public:
  // Draws the blend program from those inputs into the target; 0 or the code of the failure.
  using DrawBlend = std::function<int32_t(const ImageList&, PXImage&, EffectContext&)>;

  explicit GlCompositor(DrawBlend draw_blend) : draw_blend_(std::move(draw_blend)) {}

  int32_t LayOver(const Layers& layers, EffectContext& context, FrameTimes& times) override;
  bool ReadsInputTexture() const override { return true; }

  FrameTarget& target() { return target_; }

 private:
  DrawBlend draw_blend_;
  FrameTarget target_;
};

}  // namespace krv
