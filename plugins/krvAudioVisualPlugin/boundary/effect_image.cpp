#include "boundary/effect_image.h"

#include "boundary/plugin_registry.h"
#include "krv/suites.h"
#include "memory/frame_memory.h"

namespace krv {
namespace {

int64_t ChannelBytes(int32_t pixel_type) {
  switch (pixel_type) {
    case kPixel8:
      return 1;
    case kPixel16:
      return 2;
    case kPixelFloat:
      return 4;
    default:
      return 0;
  }
}

bool IsSensible(const FrameDescription& d) {
  const int64_t channel_bytes = ChannelBytes(d.pixel_type);
  return channel_bytes != 0 && (d.form == kFrameInMemory || d.form == kFrameOnGpu) && d.width > 0 &&
         d.height > 0 && d.stride >= int64_t{d.width} * 4 * channel_bytes;
}

}  // namespace

std::shared_ptr<EffectImage> EffectImage::Wrap(HostFrame* frame) {
  FrameDescription description{};
  if (frame == nullptr || frame->Describe(&description) != 0 || !IsSensible(description)) {
    return nullptr;
  }
  return MakeForFrame<EffectImage>(Key(), frame, description, false);
}

std::shared_ptr<EffectImage> EffectImage::Allocate(int32_t width, int32_t height,
                                                   int32_t pixel_type, int32_t form) {
  ImageBufferSuite* suite = PluginRegistry::Instance().image_buffer_suite;
  if (suite == nullptr) return nullptr;
  HostFrame* frame = suite->CreateFrame(width, height, pixel_type, form);
  if (frame == nullptr) return nullptr;
  FrameDescription description{};
  const bool is_as_asked = frame->Describe(&description) == 0 && IsSensible(description) &&
                           description.width == width && description.height == height &&
                           description.pixel_type == pixel_type && description.form == form;
  if (!is_as_asked) {
    suite->ReleaseFrame(frame);
    return nullptr;
  }
  return MakeForFrame<EffectImage>(Key(), frame, description, true);
}

EffectImage::~EffectImage() {
  if (!owned_) return;
  if (ImageBufferSuite* suite = PluginRegistry::Instance().image_buffer_suite; suite != nullptr) {
    suite->ReleaseFrame(frame_);
  }
}

void* EffectImage::pixels() const { return on_gpu() ? nullptr : frame_->GetPixels(); }

uint32_t EffectImage::TextureName() const {
  const PluginRegistry& registry = PluginRegistry::Instance();
  if (!on_gpu() || registry.gpu_device_suite == nullptr || registry.gpu_device_index < 0) return 0;
  uint32_t name = 0;
  const auto device = static_cast<uint32_t>(registry.gpu_device_index);
  return registry.gpu_device_suite->GetFrameTexture(device, frame_, &name) == 0 ? name : 0;
}

bool EffectImage::ReadPixels(void* destination, int32_t stride) const {
  return frame_->ReadPixels(destination, stride) == 0;
}

}  // namespace krv
