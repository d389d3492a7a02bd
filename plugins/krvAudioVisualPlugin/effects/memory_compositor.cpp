#include "effects/memory_compositor.h"

#include <cstddef>

#include "boundary/effect_image.h"
#include "effects/frame_times.h"
#include "krv/effect.h"

namespace krv {
namespace {

// Where a frame's rows begin and end in memory, the padding behind the last one left out or not.
struct Extent {
  const std::byte* begin;
  const std::byte* end;
};

Extent ExtentOf(const EffectImage& frame) {
  const auto* begin = static_cast<const std::byte*>(frame.pixels());
  return {begin, begin + ptrdiff_t{frame.height()} * frame.description().stride};
}

bool AreTheSameOrApart(const EffectImage& input, const EffectImage& output) {
  const Extent a = ExtentOf(input);
  const Extent b = ExtentOf(output);
  const bool same = a.begin == b.begin && a.end == b.end;
  return same || a.end <= b.begin || b.end <= a.begin;
}

}  // namespace

bool MemoryCompositor::Suits(const EffectImage& input, const EffectImage& output) {
  const FrameDescription& below = input.description();
  const FrameDescription& target = output.description();
  return !input.on_gpu() && !output.on_gpu() && below.width == target.width &&
         below.height == target.height && below.pixel_type == target.pixel_type &&
         AreTheSameOrApart(input, output);
}

int32_t MemoryCompositor::LayOver(const Layers& layers, EffectContext& /*context*/,
                                  FrameTimes& times) {
  const ImageSize size = SizeOf(layers.effect);
  const FrameDescription& target = layers.output->description();
  overlay_.Resize(static_cast<int32_t>(size.width), static_cast<int32_t>(size.height), target.width,
                  target.height);
  uint8_t* effect = overlay_.StartEffect(static_cast<int32_t>(layers.seen_rows.first),
                                         static_cast<int32_t>(layers.seen_rows.count));
  if (!ReadTextureRows(layers.effect, layers.seen_rows, effect)) return kFailed;
  times.Mark("read_back");
  overlay_.LayOver({static_cast<PixelType>(target.pixel_type), layers.input->pixels(),
                    layers.input->description().stride, layers.output->pixels(), target.stride},
                   blend_);
  times.Mark("blend");
  return kOk;
}

}  // namespace krv
