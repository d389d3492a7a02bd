// KRVAudioVisualMaskShape: the class of effects that draw along the outline of a mask.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

#include "effects/krv_audio_visual.h"

namespace krv {

// Each frame the outlines of the mask become points, spaced by their size and gap, each with a
// normal that points out of the shape. Beside the family's uniforms the package's shader reads
//   mask_point_tex       one texel per point: position as fractions of the picture, normal
//   points_count         how many there are; 0 when the mask has no outline
//   current_point_size   fraction of the picture's shorter side
//   available_region_x1, _x2, _y1, _y2   what points may reach, fractions of the picture
// The parameters "point_size" and "point_gap" are factors used here alone; "max_length", how far a
// point may move in pixels of a mask whose shorter side is 480 at most, is a uniform as well.
class KRVAudioVisualMaskShape : public KRVAudioVisual {
 public:
  explicit KRVAudioVisualMaskShape(std::shared_ptr<const EffectDescription> description);

  void* Destroy(uint32_t flags) override;
  int32_t SetUniform(const char* name, const ParameterValue* value) override;
  int32_t GatherInputs(EffectContext& context, ImageList& inputs) override;
  int32_t ExpectedInputCount() override;
  void CopyUniforms(PXGraphicsContext& draw, PassRecord& record, EffectContext& context) override;

 protected:
  ~KRVAudioVisualMaskShape() = default;

 private:
  // The point image of the frame's mask; sets the uniforms that go with it.
  cv::Mat TracePoints();

  int32_t points_count_ = 0;
  // Set on any thread.
  std::atomic<float> point_size_ = 0;  // factor
  std::atomic<float> point_gap_ = 0;   // factor
  std::atomic<float> max_length_ = 0;  // pixels of the working mask
};

}  // namespace krv
