// The host's parameter values become uniforms.
#include <optional>
#include <stdexcept>
#include <utility>

#include "effects/gradient.h"
#include "effects/krv_audio_visual.h"
#include "effects/parameter_conversion.h"
#include "graphics/px_image.h"
#include "krv/effect_context.h"

namespace krv {

void KRVAudioVisual::StoreParameters(EffectContext& context) {
  const int64_t position = context.GetFrameIndex();
  for (const auto& parameter : description_->parameters()) {
    const ParameterValue declared = parameter->default_value.View();
    ParameterValue answer = declared;
    const bool answered =
        context.GetParameterValue(parameter->name.c_str(), position, &answer) == 0;
    ParameterValue value = answered ? ConvertToKind(declared, answer) : declared;
    if (value.kind == kKindColor) value.kind = kKindInt;

    if (parameter->name == "gradient_color") {
      if (value.kind == kKindText && value.as_text != nullptr) StoreGradient(value.as_text);
      continue;
    }
    if (parameter->name == "color" && value.kind != kKindText) {
      value = ConvertToKind(IntValue(0), value);  // packed, whatever number the package declares
      StoreColor(value.as_int);
    }
    SetUniform(parameter->name.c_str(), &value);
  }
}

void KRVAudioVisual::StoreColor(int32_t color) {
  const ColorChannels channels = SplitColor(color);
  SetFloatUniform("color_r", channels.red);
  SetFloatUniform("color_g", channels.green);
  SetFloatUniform("color_b", channels.blue);
}

// A text that holds no gradient leaves the one of an earlier frame in use.
void KRVAudioVisual::StoreGradient(const char* text) {
  if (gradient_texture_ == nullptr || gradient_text_ != text) {
    const std::optional<cv::Mat> gradient = ParseGradient(text);
    if (!gradient) return;
    auto texture = CreateImage(*gradient, PixelLayout::kBgra);
    if (texture == nullptr) throw std::runtime_error("Gradient texture is null.");
    gradient_texture_ = std::move(texture);
    gradient_ = *gradient;
    gradient_text_ = text;
  }
  // Every time: the passes may be younger than the texture.
  SetIntUniform("gradient_color_count", static_cast<int32_t>(SizeOf(*gradient_texture_).width));
}

void KRVAudioVisual::CopyUniforms(PXGraphicsContext& draw, PassRecord& record,
                                  EffectContext& /*context*/) {
  AddUniforms(draw, record);
}

}  // namespace krv
