// The life of an instance, and the operations that a host calls.
#include "effects/krv_audio_visual.h"

#include <new>
#include <utility>

#include "audio/audio_visual_process_fft.h"
#include "boundary/guard.h"
#include "boundary/host_log.h"
#include "effects/parameter_conversion.h"
#include "effects/program_builder.h"
#include "graphics/px_graphics.h"
#include "graphics/px_graphics_context.h"
#include "graphics/px_image.h"

namespace krv {

KRVAudioVisual::KRVAudioVisual(std::shared_ptr<const EffectDescription> description)
    : draw_(CreateGraphicsContext()),
      description_(std::move(description)),
      audio_(std::make_shared<AudioVisualProcessFFT>()) {
  if (description_ == nullptr) LogToHost(kLogError, "Audio Effect Create Error");
}

KRVAudioVisual::~KRVAudioVisual() {
  // The spelling is what hosts look for.
  LogToHost(kLogInformation, "Audio Effect Destory");
}

void* KRVAudioVisual::Destroy(uint32_t flags) {
  this->KRVAudioVisual::~KRVAudioVisual();
  if ((flags & 1) != 0) ::operator delete(this);
  return this;  // NOLINT(clang-analyzer-cplusplus.NewDelete): the address alone
}

int32_t KRVAudioVisual::Initialize(EffectContext* context) {
  return GuardHostCall([&]() -> int32_t {
    if (description_ == nullptr) return kFailed;
    if (graphics_ == nullptr && BuildDevice() != kOk) return kFailed;
    const bool wants_mask = description_->UsesHumanSegment() || description_->UsesMask();
    if (wants_mask && context != nullptr) context->RequestExtraInput(1);
    return kOk;
  });
}

// Device and programs exist together or not at all, so that a failure is tried again next time.
int32_t KRVAudioVisual::BuildDevice() {
  auto graphics = CreateGraphics(GraphicsKind::kOpenGl);
  EffectPrograms programs;
  if (graphics == nullptr || !BuildPrograms(*description_, programs)) return kFailed;
  graphics_ = std::move(graphics);
  const std::lock_guard lock(passes_mutex_);
  passes_ = std::move(programs.passes);
  blend_.program = std::move(programs.blend);
  return kOk;
}

int32_t KRVAudioVisual::ClearInputs() {
  inputs_.images.clear();
  return kOk;
}

int32_t KRVAudioVisual::ProcessFrame(EffectContext* context) {
  const int32_t code = GuardHostCall([&]() -> int32_t {
    if (context == nullptr) {
      LogToHost(kLogError, "Effect context null error");
      return kNothingToDo;
    }
    return Process(*context);
  });
  // Frames, and textures of the host's, are borrowed until here.
  input_frame_.reset();
  output_frame_.reset();
  gathered_.images.clear();
  pass_inputs_.images.clear();
  return code;
}

int32_t KRVAudioVisual::ProcessFrameAgain(EffectContext* context) { return ProcessFrame(context); }

int32_t KRVAudioVisual::ReleaseResources() {
  return GuardHostCall([&]() -> int32_t {
    {
      const std::lock_guard lock(passes_mutex_);
      passes_.clear();
    }
    blend_.program.reset();
    {
      const std::lock_guard lock(blend_.mutex);
      blend_.uniforms.clear();
    }
    ClearInputs();
    gradient_texture_.reset();
    gradient_.release();
    gradient_text_.clear();
    effect_texture_.reset();
    for (auto& image : intermediates_) image.reset();
    for (auto* image : {&background_, &unread_background_, &mask_image_, &audio_image_}) {
      image->reset();
    }
    gl_compositor_.target().Reset();
    graphics_.reset();
    return kOk;
  });
}

int32_t KRVAudioVisual::ApplyParameters(EffectContext* context) {
  return GuardHostCall([&]() -> int32_t {
    if (context == nullptr || description_ == nullptr) return kFailed;
    StoreParameters(*context);
    return kOk;
  });
}

int32_t KRVAudioVisual::SetUniform(const char* name, const ParameterValue* value) {
  return GuardHostCall([&]() -> int32_t {
    if (name == nullptr || value == nullptr) return kFailed;
    const std::lock_guard lock(passes_mutex_);
    for (const auto& pass : passes_) StoreUniform(*pass, name, *value);
    StoreUniform(blend_, name, *value);
    return kOk;
  });
}

void KRVAudioVisual::SetIntUniform(const char* name, int32_t value) {
  const ParameterValue record = IntValue(value);
  SetUniform(name, &record);
}

void KRVAudioVisual::SetFloatUniform(const char* name, float value) {
  const ParameterValue record = FloatValue(value);
  SetUniform(name, &record);
}

}  // namespace krv
