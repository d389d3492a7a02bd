// KRVAudioVisualMaskShape: the class of effects that draw along the outline of a mask.
#pragma once

#include <memory>

#include "effects/krv_audio_visual.h"

namespace krv {

class KRVAudioVisualMaskShape : public KRVAudioVisual {
 public:
  explicit KRVAudioVisualMaskShape(std::shared_ptr<const EffectDescription> description);

  void* Destroy(uint32_t flags) override;

 protected:
  ~KRVAudioVisualMaskShape() = default;
};

}  // namespace krv
