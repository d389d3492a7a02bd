#include "boundary/effect_factory.h"

#include <new>
#include <string>

#include "effects/krv_audio_visual.h"
#include "effects/krv_audio_visual_3d_geometry.h"
#include "effects/krv_audio_visual_mask_shape.h"

namespace krv {

KRVEffect* CreateEffectFromDescription(
    const std::shared_ptr<const EffectDescription>& description) {
  if (description == nullptr) return nullptr;
  const std::string name = description->UniqueName();
  if (name.find("audio_visualization_mask_shape") != std::string::npos) {
    return new (std::nothrow) KRVAudioVisualMaskShape(description);
  }
  if (name.find("audio_visualization_3d_geometry") != std::string::npos) {
    return new (std::nothrow) KRVAudioVisual3dGeometry(description);
  }
  return new (std::nothrow) KRVAudioVisual(description);
}

}  // namespace krv
