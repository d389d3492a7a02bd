// Makes the instance that belongs to a description.
#pragma once

#include <memory>

#include "description/effect_description.h"
#include "krv/effect.h"

namespace krv {

// A new instance that shares `description`, or null for a null description or for lack of memory.
// The unique name chooses the class: one that contains "audio_visualization_mask_shape" gives
// KRVAudioVisualMaskShape, else one that contains "audio_visualization_3d_geometry" gives
// KRVAudioVisual3dGeometry, any other KRVAudioVisual. The caller destroys it by Destroy(1).
KRVEffect* CreateEffectFromDescription(const std::shared_ptr<const EffectDescription>& description);

}  // namespace krv
