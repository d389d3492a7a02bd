#include "effects/frame_target.h"

#include "boundary/effect_image.h"
#include "graphics/px_image.h"

namespace krv {

std::shared_ptr<PXImage> FrameTarget::For(const std::shared_ptr<EffectImage>& frame) {
  // A texture of the host's is its own again after the frame.
  if (frame->on_gpu()) return CreateImageFromFrame(frame, nullptr);
  ReuseImageFromFrame(kept_, frame, nullptr);
  return kept_;
}

bool FrameTarget::Deliver(const PXImage& drawn, const EffectImage& frame) {
  return frame.on_gpu() || ReadTexture(drawn, frame.pixels(), frame.description().stride);
}

}  // namespace krv
