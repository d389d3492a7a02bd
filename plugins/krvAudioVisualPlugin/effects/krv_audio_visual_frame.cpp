// One frame: parameters, inputs, passes, blend, read-back.
#include <algorithm>
#include <array>
#include <utility>

#include "boundary/effect_image.h"
#include "boundary/host_log.h"
#include "boundary/plugin_registry.h"
#include "effects/effect_size.h"
#include "effects/folded_shader.h"
#include "effects/frame_timing.h"
#include "effects/krv_audio_visual.h"
#include "graphics/px_graphics.h"
#include "graphics/px_graphics_context.h"
#include "graphics/px_image.h"
#include "krv/effect_context.h"

namespace krv {
namespace {

// The rows of a target of that height in which a draw can leave something to be seen.
RowSpan SeenRows(const PXGraphicsContext& draw, uint32_t height) {
  if (!draw.only_in_regions) return {0, height};
  int32_t first = static_cast<int32_t>(height);
  int32_t end = 0;
  for (const TargetRegion& region : draw.regions) {
    first = std::min(first, region.y);
    end = std::max(end, region.y + region.height);
  }
  if (first >= end) return {0, 0};
  return {static_cast<uint32_t>(first), static_cast<uint32_t>(end - first)};
}

}  // namespace

const EffectTraits& KRVAudioVisual::Traits() {
  if (!traits_) traits_ = ReadTraits(*description_);
  return *traits_;
}

// A value that was set reaches the blend program too, in place of what the frame sets there. The
// other uniforms of the default one are out of its reach: `background_tex` is set anew for every
// frame, and `iResolution` takes no single number.
bool KRVAudioVisual::BlendsByDefault() {
  return Traits().has_default_blend && !HoldsUniform(blend_, "blend") &&
         !HoldsUniform(blend_, "effect_tex");
}

int32_t KRVAudioVisual::Process(EffectContext& context) {
  output_frame_ = EffectImage::Wrap(context.GetOutputFrame());
  if (output_frame_ == nullptr || !output_frame_->HasBuffer()) {
    LogToHost(kLogError, "Output image null error");
    return kNothingToDo;
  }
  if (description_ == nullptr || graphics_ == nullptr) return kFailed;

  times_.Start();
  const bool inputs_were_cleared = inputs_.images.empty();
  StoreParameters(context);
  blends_by_default_ = BlendsByDefault();
  times_.Mark("parameters");
  GatherInputs(context, gathered_);
  mask_.release();
  // The count alone is not enough: what is left of a frame may stand in for what this one lacks.
  if (!inputs_were_cleared ||
      gathered_.images.size() != static_cast<size_t>(ExpectedInputCount())) {
    LogToHost(kLogError, "Input size error");
    return kFailed;
  }
  const int32_t code = Traits().original ? RenderStraight(context) : RenderAndLayOver(context);
  times_.Log();
  return code;
}

// The passes draw into the output frame itself.
int32_t KRVAudioVisual::RenderStraight(EffectContext& context) {
  const auto target = gl_compositor_.target().For(output_frame_);
  if (target == nullptr) return kFailed;
  const int32_t code = RunPasses(gathered_, *target, context);
  if (code != kOk) return code;
  const bool delivered = FrameTarget::Deliver(*target, *output_frame_);
  times_.Mark("read_back");
  return delivered ? kOk : kFailed;
}

int32_t KRVAudioVisual::RenderAndLayOver(EffectContext& context) {
  const EffectSize size =
      ReducedSize(output_frame_->width(), output_frame_->height(), Traits().quality);
  if (!PrepareEffectTexture(size)) {
    LogToHost(kLogError, "Effect texture is null.");
    return kFailed;
  }
  const int32_t code = RunPasses(gathered_, *effect_texture_, context);
  if (code != kOk) return code;
  const Layers layers{input_frame_, output_frame_, gathered_, *effect_texture_, seen_rows_};
  return ChooseCompositor().LayOver(layers, context, times_);
}

// By rule, so that the same frames are always made in the same way.
Compositor& KRVAudioVisual::ChooseCompositor() {
  const bool in_memory = blends_by_default_ && input_frame_ != nullptr &&
                         output_frame_ != nullptr &&
                         MemoryCompositor::Suits(*input_frame_, *output_frame_);
  if (!in_memory) return gl_compositor_;
  memory_compositor_.SetBlend(Traits().blends);
  return memory_compositor_;
}

// Makes the effect texture anew when the size has changed.
bool KRVAudioVisual::PrepareEffectTexture(EffectSize size) {
  if (effect_texture_ != nullptr && effect_size_ == size) return true;
  effect_texture_.reset();
  effect_size_ = size;
  const bool on_gpu = PluginRegistry::Instance().gpu_device_index != -1;
  auto frame = EffectImage::Allocate(size.width, size.height, kPixel8,
                                     on_gpu ? kFrameOnGpu : kFrameInMemory);
  // Drivers keep textures of 8 bits in this order: reading them back converts nothing.
  effect_texture_ = CreateImageFromFrame(std::move(frame), nullptr, PixelLayout::kRgba);
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
    PXGraphicsContext& draw = StartDraw();
    draw.program = blend_.program;
    draw.draw_mode = DrawMode::kNone;
    seen_rows_ = {0, SizeOf(target).height};
    return DrawInto(target);
  }
  if (!PrepareIntermediates(target)) return kFailed;
  pass_inputs_ = inputs;
  if (pass_inputs_.images.empty()) return kFailed;
  auto& first_input = pass_inputs_.images.front();
  if (first_input == unread_background_ && ReadsUnit(*passes_.front(), 0)) {
    if (!UploadFrame(*background_)) return kFailed;
    first_input = background_;
    times_.Mark("upload");
  }
  for (size_t i = 0; i < passes_.size(); ++i) {
    const bool is_last = i + 1 == passes_.size();
    PXImage& pass_target = is_last ? target : *intermediates_[i % 2];
    const int32_t code = DrawPass(*passes_[i], pass_inputs_, pass_target, context);
    times_.Mark("pass", static_cast<int>(i) + 1);
    if (code != kOk) return code;
    if (!is_last) first_input = intermediates_[i % 2];
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
  PXGraphicsContext& draw = StartDraw();
  AddFrameUniforms(draw, target, context);
  draw.AddUniform("mask_bottom_top", UniformType::kVec2, mask_bottom_top_.data(),
                  sizeof(mask_bottom_top_));
  draw.AddUniform("mask_left_right", UniformType::kVec2, mask_left_right_.data(),
                  sizeof(mask_left_right_));
  CopyUniforms(draw, pass, context);
  PreparePass(draw);
  draw.images = inputs.images;
  draw.program = pass.program;
  if (pass.folded != nullptr) {
    const bool unseen = &target == effect_texture_.get() && blends_by_default_ && Traits().blends;
    pass.folded->Fold(draw, {previous_spectrum_, gradient_, unseen});
  }
  seen_rows_ = SeenRows(draw, SizeOf(target).height);
  return DrawInto(target);
}

int32_t KRVAudioVisual::PreparePass(PXGraphicsContext& /*draw*/) { return kOk; }

int32_t KRVAudioVisual::DrawBlend(const ImageList& inputs, PXImage& output,
                                  EffectContext& context) {
  PXGraphicsContext& draw = StartDraw();
  AddFrameUniforms(draw, output, context);
  const int32_t background_unit = 0;
  const int32_t effect_unit = 1;
  const uint8_t blend = Traits().blends ? 1 : 0;
  draw.AddUniform("background_tex", UniformType::kInt, &background_unit, sizeof(background_unit));
  draw.AddUniform("effect_tex", UniformType::kInt, &effect_unit, sizeof(effect_unit));
  draw.AddUniform("blend", UniformType::kByte, &blend, sizeof(blend));
  CopyUniforms(draw, blend_, context);
  draw.images = {inputs.images.front(), effect_texture_};
  draw.program = blend_.program;
  return DrawInto(output);
}

PXGraphicsContext& KRVAudioVisual::StartDraw() {
  draw_->Reset();
  return *draw_;
}

int32_t KRVAudioVisual::DrawInto(PXImage& target) {
  graphics_->SetTarget(&target);
  const int32_t result = graphics_->Render(*draw_);
  graphics_->SetTarget(nullptr);
  draw_->Reset();  // and with it the textures of the frame
  return result == 0 ? kOk : kFailed;
}

}  // namespace krv
