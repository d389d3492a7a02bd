#include "effects/gl_compositor.h"

#include "effects/frame_times.h"
#include "krv/effect.h"

namespace krv {

int32_t GlCompositor::LayOver(const Layers& layers, EffectContext& context, FrameTimes& times) {
  const auto target = target_.For(layers.output);
  if (target == nullptr) return kFailed;
  const int32_t code = draw_blend_(layers.inputs, *target, context);
  times.Mark("blend");
  if (code != kOk) return code;
  const bool delivered = FrameTarget::Deliver(*target, *layers.output);
  times.Mark("read_back");
  return delivered ? kOk : kFailed;
}

}  // namespace krv
