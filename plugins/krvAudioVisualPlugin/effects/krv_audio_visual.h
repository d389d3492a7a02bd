// KRVAudioVisual: an instance of an audio-visualisation effect.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <mutex>
#include <opencv2/core.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "audio/audio_visual_process.h"
#include "description/effect_description.h"
#include "effects/effect_size.h"
#include "effects/effect_traits.h"
#include "effects/frame_times.h"
#include "effects/gl_compositor.h"
#include "effects/image_list.h"
#include "effects/memory_compositor.h"
#include "effects/pass_record.h"
#include "krv/effect.h"

namespace krv {

class EffectImage;
class PXGraphics;
class PXGraphicsContext;
class PXImage;

// Renders one effect: owns its programs, its blend program, the effect texture, the graphics
// device, the audio analyser and the audio state carried from frame to frame. The operations are
// those of krv/effect.h; no exception leaves the ones that a host calls.
//
// Subclasses extend the virtual operations from slot 11 on. Slot 0 destroys, so destructors are not
// virtual and every class overrides Destroy.
class KRVAudioVisual : public KRVEffect {
 public:
  // A null description is logged; such an instance fails to initialise.
  explicit KRVAudioVisual(std::shared_ptr<const EffectDescription> description);
  KRVAudioVisual(const KRVAudioVisual&) = delete;
  KRVAudioVisual& operator=(const KRVAudioVisual&) = delete;

  void* Destroy(uint32_t flags) override;
  int32_t Initialize(EffectContext* context) override;
  int32_t Reserved2(EffectContext*) override { return kOk; }
  int32_t ClearInputs() override;
  int32_t ProcessFrame(EffectContext* context) override;
  int32_t ProcessFrameAgain(EffectContext* context) override;
  int32_t Reserved6(EffectContext*) override { return kOk; }
  int32_t ReleaseResources() override;
  int32_t Reserved8(EffectContext*) override { return kOk; }
  int32_t Reserved9(EffectContext*) override { return kOk; }
  int32_t ApplyParameters(EffectContext* context) override;
  int32_t SetUniform(const char* name, const ParameterValue* value) override;

  // Draws every pass in turn into `target`; each later pass reads the previous one's result as its
  // first input. 0, or the code of the first pass that fails.
  int32_t RunPasses(const ImageList& inputs, PXImage& target, EffectContext& context) override;
  // Appends the frame's textures to the input list and copies the list into `inputs`. 0.
  int32_t GatherInputs(EffectContext& context, ImageList& inputs) override;
  // How many textures GatherInputs gives when nothing is missing.
  int32_t ExpectedInputCount() override;
  // Adds the record's uniforms to a draw.
  void CopyUniforms(PXGraphicsContext& draw, PassRecord& record, EffectContext& context) override;
  // Hook of subclasses for each effect pass, after CopyUniforms. 0.
  int32_t PreparePass(PXGraphicsContext& draw) override;

 protected:
  ~KRVAudioVisual();

  // Stores a texture's sampler unit under its name and appends it to the input list. A null texture
  // is passed over, so that the count shows it.
  void AddInput(const char* name, std::shared_ptr<PXImage> image);
  void SetIntUniform(const char* name, int32_t value);
  void SetFloatUniform(const char* name, float value);

  const EffectDescription& description() const { return *description_; }
  const ImageList& inputs() const { return inputs_; }

  // The frame's mask, of type CV_8UC4, from GatherInputs until the frame has been processed; empty
  // when there is none, or nothing in it.
  const cv::Mat& mask() const { return mask_; }

 private:
  int32_t BuildDevice();
  int32_t Process(EffectContext& context);
  int32_t RenderStraight(EffectContext& context);
  int32_t RenderAndLayOver(EffectContext& context);
  const EffectTraits& Traits();
  bool BlendsByDefault();
  Compositor& ChooseCompositor();
  bool PrepareEffectTexture(EffectSize size);
  bool PrepareIntermediates(const PXImage& target);
  int32_t DrawPass(PassRecord& pass, const ImageList& inputs, PXImage& target,
                   EffectContext& context);
  int32_t DrawBlend(const ImageList& inputs, PXImage& output, EffectContext& context);
  // The description of the next draw, empty; DrawInto draws and empties it.
  PXGraphicsContext& StartDraw();
  int32_t DrawInto(PXImage& target);
  void AddFrameUniforms(PXGraphicsContext& draw, const PXImage& target, EffectContext& context);
  void StoreParameters(EffectContext& context);
  void StoreColor(int32_t color);
  void StoreGradient(const char* text);
  // The input frame as an image, which is also the first input, or stands behind it.
  PXImage* GatherBackground(EffectContext& context);
  // False when the mask holds nothing that the effect could follow.
  bool GatherMask(EffectContext& context, PXImage* background);
  void GatherAudio(EffectContext& context);

  std::optional<EffectTraits> traits_;
  // Of the frame being processed.
  bool blends_by_default_ = false;
  std::shared_ptr<EffectImage> input_frame_;
  std::shared_ptr<EffectImage> output_frame_;
  ImageList gathered_;
  ImageList pass_inputs_;
  FrameTimes times_;

  MemoryCompositor memory_compositor_;
  GlCompositor gl_compositor_{
      [this](const ImageList& inputs, PXImage& target, EffectContext& context) {
        return DrawBlend(inputs, target, context);
      }};

  ImageList inputs_;
  // Images kept from frame to frame for their textures.
  std::shared_ptr<PXImage> background_;
  std::shared_ptr<PXImage> unread_background_;  // the first input where no pass has read it yet
  std::shared_ptr<PXImage> mask_image_;
  std::shared_ptr<PXImage> audio_image_;
  cv::Mat mask_;  // may lie over pixels of the host's that end with the frame
  std::array<float, 2> mask_left_right_ = {0, 0};  // fractions of the mask's width
  std::array<float, 2> mask_bottom_top_ = {0, 0};  // fractions of the mask's height
  std::shared_ptr<PXImage> gradient_texture_;
  cv::Mat gradient_;           // what it holds
  std::string gradient_text_;  // what it was made from
  std::shared_ptr<PXImage> effect_texture_;
  EffectSize effect_size_ = {0, 0};
  RowSpan seen_rows_ = {0, 0};                 // of the target of the last pass
  std::shared_ptr<PXImage> intermediates_[2];  // results of all passes but the last, in turn
  std::shared_ptr<PXGraphics> graphics_;
  std::unique_ptr<PXGraphicsContext> draw_;
  // Changed on the GL thread alone, under the mutex, since uniforms are set from any thread.
  std::vector<std::unique_ptr<PassRecord>> passes_;
  PassRecord blend_;
  std::shared_ptr<const EffectDescription> description_;
  int64_t frame_offset_ = 0;  // added to the host's frame index for the time in shaders
  cv::Mat previous_spectrum_;
  float left_level_ = 0;
  float right_level_ = 0;
  int64_t last_frame_index_ = -1;
  float level_smoothing_ = 0;  // weight of the past for spectrum and level; 0: none
  std::shared_ptr<AudioVisualProcess> audio_;
  std::mutex passes_mutex_;
};

}  // namespace krv
