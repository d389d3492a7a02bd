#include "effects/krv_audio_visual_mask_shape.h"

#include <new>
#include <utility>

namespace krv {

KRVAudioVisualMaskShape::KRVAudioVisualMaskShape(
    std::shared_ptr<const EffectDescription> description)
    : KRVAudioVisual(std::move(description)) {}

void* KRVAudioVisualMaskShape::Destroy(uint32_t flags) {
  this->~KRVAudioVisualMaskShape();
  if ((flags & 1) != 0) ::operator delete(this);
  return this;  // NOLINT(clang-analyzer-cplusplus.NewDelete): the address alone
}

}  // namespace krv
