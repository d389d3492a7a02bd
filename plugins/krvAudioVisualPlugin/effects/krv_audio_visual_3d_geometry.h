// KRVAudioVisual3dGeometry: draws a vertex mesh through a camera instead of a full-frame quad.
#pragma once

#include <array>
#include <memory>

#include "effects/krv_audio_visual.h"

namespace krv {

// 4 x 4, column by column.
using Matrix4 = std::array<float, 16>;

// The package's vertex shader reads the attribute "position" (three floats) and the uniforms
// "model_mat", "view_mat" and "projection_mat". All of them and the mesh, one triangle, are
// constant.
class KRVAudioVisual3dGeometry : public KRVAudioVisual {
 public:
  explicit KRVAudioVisual3dGeometry(std::shared_ptr<const EffectDescription> description);

  void* Destroy(uint32_t flags) override;
  int32_t PreparePass(PXGraphicsContext& draw) override;

 protected:
  ~KRVAudioVisual3dGeometry() = default;

 private:
  Matrix4 model_;
  Matrix4 view_;
  Matrix4 projection_;
};

}  // namespace krv
