// One frame: parameters, inputs, passes, blend, read-back.
#include <array>
#include <utility>

#include "boundary/effect_image.h"
#include "boundary/host_log.h"
#include "boundary/plugin_registry.h"
#include "effects/effect_size.h"
#include "effects/frame_timing.h"
#include "effects/krv_audio_visual.h"
#include "graphics/px_graphics.h"
#include "graphics/px_graphics_context.h"
#include "graphics/px_image.h"
#include "krv/effect_context.h"

namespace krv {

int32_t KRVAudioVisual::Process(EffectContext& context) {
  const auto frame = EffectImage::Wrap(context.GetOutputFrame());
  if (frame == nullptr || !frame->HasBuffer()) {
    LogToHost(kLogError, "Output image null error");
    return kNothingToDo;
  }
  if (description_ == nullptr || graphics_ == nullptr) return kFailed;

  const bool inputs_were_cleared = inputs_.images.empty();
  StoreParameters(context);
  ImageList inputs;
  GatherInputs(context, inputs);
  mask_.release();
  // The count alone is not enough: what is left of a frame may stand in for what this one lacks.
  if (!inputs_were_cleared || inputs.images.size() != static_cast<size_t>(ExpectedInputCount())) {
    LogToHost(kLogError, "Input size error");
    return kFailed;
  }
  const auto output = CreateImageFromFrame(frame, nullptr);
  if (output == nullptr) return kFailed;

  const int32_t code = description_->Original() ? RunPasses(inputs, *output, context)
                                                : RenderAndBlend(inputs, *output, *frame, context);
  if (code != kOk || frame->on_gpu()) return code;
  return ReadTexture(*output, frame->pixels(), frame->description().stride) ? kOk : kFailed;
}

int32_t KRVAudioVisual::RenderAndBlend(const ImageList& inputs, PXImage& output,
                                       const EffectImage& frame, EffectContext& context) {
  if (!PrepareEffectTexture(ReducedSize(frame.width(), frame.height(), description_->Quality()))) {
    LogToHost(kLogError, "Effect texture is null.");
    return kFailed;
  }
  const int32_t code = RunPasses(inputs, *effect_texture_, context);
  return code != kOk ? code : DrawBlend(inputs, output, context);
}

// Makes the effect texture anew when the size has changed.
bool KRVAudioVisual::PrepareEffectTexture(EffectSize size) {
  if (effect_texture_ != nullptr && effect_size_ == size) return true;
  effect_texture_.reset();
  effect_size_ = size;
  const bool on_gpu = PluginRegistry::Instance().gpu_device_index != -1;
  auto frame = EffectImage::Allocate(size.width, size.height, kPixel8,
                                     on_gpu ? kFrameOnGpu : kFrameInMemory);
  effect_texture_ = CreateImageFromFrame(std::move(frame), nullptr);
  return effect_texture_ != nullptr;
}

// A texture cannot be read while it is drawn into, so the passes before the last take turns in two
// textures of the target's size, which hold floats where the target does.
bool KRVAudioVisual::PrepareIntermediates(const PXImage& target) {
  const ImageSize size = SizeOf(target);
  const bool floats = HoldsFloats(target);
  const DataType type = floats ? DataType::kFloat : DataType::kUint8;
  const uint32_t stride = size.width * (floats ? 16 : 4);
  const size_t needed = passes_.size() > 2 ? 2 : passes_.size() - 1;
  for (size_t i = 0; i < needed; ++i) {
    auto& image = intermediates_[i];
    if (image != nullptr && SizeOf(*image) == size && HoldsFloats(*image) == floats) continue;
    image = CreateImage(size.width, size.height, PixelLayout::kBgra, type, stride, nullptr);
    if (image == nullptr) return false;
  }
  return true;
}

int32_t KRVAudioVisual::RunPasses(const ImageList& inputs, PXImage& target,
                                  EffectContext& context) {
  if (passes_.empty()) {
    // Nothing to draw: clearing the target makes it transparent.
    const auto draw = CreateGraphicsContext();
    draw->program = blend_.program;
    draw->draw_mode = DrawMode::kNone;
    return DrawInto(target, *draw);
  }
  if (!PrepareIntermediates(target)) return kFailed;
  ImageList pass_inputs = inputs;
  for (size_t i = 0; i < passes_.size(); ++i) {
    const bool is_last = i + 1 == passes_.size();
    PXImage& pass_target = is_last ? target : *intermediates_[i % 2];
    const int32_t code = DrawPass(*passes_[i], pass_inputs, pass_target, context);
    if (code != kOk) return code;
    if (!is_last && !pass_inputs.images.empty()) pass_inputs.images[0] = intermediates_[i % 2];
  }
  return kOk;
}

void KRVAudioVisual::AddFrameUniforms(PXGraphicsContext& draw, const PXImage& target,
                                      EffectContext& context) {
  const ImageSize size = SizeOf(target);
  const std::array<float, 2> resolution = {static_cast<float>(size.width),
                                           static_cast<float>(size.height)};
  draw.AddUniform("iResolution", UniformType::kVec2, resolution.data(), sizeof(resolution));
  const float time =
      TimeInSeconds(context.GetFrameIndex(), frame_offset_, FramesPerSecond(context));
  draw.AddUniform("time_second", UniformType::kFloat, &time, sizeof(time));
}

int32_t KRVAudioVisual::DrawPass(PassRecord& pass, const ImageList& inputs, PXImage& target,
                                 EffectContext& context) {
  const auto draw = CreateGraphicsContext();
  AddFrameUniforms(*draw, target, context);
  draw->AddUniform("mask_bottom_top", UniformType::kVec2, mask_bottom_top_.data(),
                   sizeof(mask_bottom_top_));
  draw->AddUniform("mask_left_right", UniformType::kVec2, mask_left_right_.data(),
                   sizeof(mask_left_right_));
  CopyUniforms(*draw, pass, context);
  PreparePass(*draw);
  draw->images = inputs.images;
  draw->program = pass.program;
  return DrawInto(target, *draw);
}

int32_t KRVAudioVisual::PreparePass(PXGraphicsContext& /*draw*/) { return kOk; }

int32_t KRVAudioVisual::DrawBlend(const ImageList& inputs, PXImage& output,
                                  EffectContext& context) {
  const auto draw = CreateGraphicsContext();
  AddFrameUniforms(*draw, output, context);
  const int32_t background_unit = 0;
  const int32_t effect_unit = 1;
  const uint8_t blend = description_->BlendEnabled() ? 1 : 0;
  draw->AddUniform("background_tex", UniformType::kInt, &background_unit, sizeof(background_unit));
  draw->AddUniform("effect_tex", UniformType::kInt, &effect_unit, sizeof(effect_unit));
  draw->AddUniform("blend", UniformType::kByte, &blend, sizeof(blend));
  CopyUniforms(*draw, blend_, context);
  draw->images = {inputs.images.front(), effect_texture_};
  draw->program = blend_.program;
  return DrawInto(output, *draw);
}

int32_t KRVAudioVisual::DrawInto(PXImage& target, const PXGraphicsContext& draw) {
  graphics_->SetTarget(&target);
  const int32_t result = graphics_->Render(draw);
  graphics_->SetTarget(nullptr);
  return result == 0 ? kOk : kFailed;
}

}  // namespace krv
