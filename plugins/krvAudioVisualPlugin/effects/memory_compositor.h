// Lays the effect over frames in memory on the CPU: only the effect's own picture, which is small,
// crosses to and from the GPU.
#pragma once

#include "compositing/overlay.h"
#include "effects/compositor.h"

namespace krv {

class MemoryCompositor final : public Compositor {
 public:
  // Whether it gives what the default blend program would, drawn over the whole frame: both frames
  // in memory, of one size and type, the same pixels or without common ones.
  static bool Suits(const EffectImage& input, const EffectImage& output);

  // With `blend`, the default blend; without, the effect alone.
  void SetBlend(bool blend) { blend_ = blend; }

  int32_t LayOver(const Layers& layers, EffectContext& context, FrameTimes& times) override;
  bool ReadsInputTexture() const override { return false; }

 private:
  Overlay overlay_;
  bool blend_ = true;
};

}  // namespace krv
