// What a frame is drawn into at full size.
#pragma once

#include <memory>

namespace krv {

class EffectImage;
class PXImage;

// For a frame in memory a texture of its size, kept from frame to frame; for one on the GPU the
// host's own texture. [gl-thread]
class FrameTarget {
 public:
  // Null when there is no texture to be had.
  std::shared_ptr<PXImage> For(const std::shared_ptr<EffectImage>& frame);

  // Reads what was drawn into a frame in memory back into its rows; nothing to do for one on the
  // GPU. False on failure; the frame is then untouched.
  static bool Deliver(const PXImage& drawn, const EffectImage& frame);

  // Drops the texture.
  void Reset() { kept_.reset(); }

 private:
  std::shared_ptr<PXImage> kept_;
};

}  // namespace krv
