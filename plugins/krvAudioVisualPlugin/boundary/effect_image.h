// The wrapper of one host frame.
#pragma once

#include <cstdint>
#include <memory>

#include "krv/frame.h"

namespace krv {

// Held by shared ownership. Frames that the host handed over are borrowed and must outlive the
// wrapper; frames that the plug-in had the host make are given back with it.
class EffectImage {
 public:
  // Wraps a frame of the host's. Null when the frame is null or does not describe itself sensibly.
  static std::shared_ptr<EffectImage> Wrap(HostFrame* frame);

  // Has the host make a frame (PixelType, FrameForm). Null when it has no such service, refuses or
  // makes another one than it was asked for: memory is laid out by what was asked for.
  static std::shared_ptr<EffectImage> Allocate(int32_t width, int32_t height, int32_t pixel_type,
                                               int32_t form);

  // Made by the two functions above alone.
  class Key {
    Key() = default;
    friend class EffectImage;
  };
  EffectImage(Key, HostFrame* frame, const FrameDescription& description, bool owned)
      : frame_(frame), description_(description), owned_(owned) {}
  EffectImage(const EffectImage&) = delete;
  EffectImage& operator=(const EffectImage&) = delete;
  ~EffectImage();

  const FrameDescription& description() const { return description_; }
  int32_t width() const { return description_.width; }    // pixels
  int32_t height() const { return description_.height; }  // pixels
  bool on_gpu() const { return description_.form == kFrameOnGpu; }

  // The first byte of a frame in memory; null for a frame on the GPU or without a buffer.
  void* pixels() const;
  // Whether there is anything to draw into: a buffer, or the host's texture.
  bool HasBuffer() const { return on_gpu() || pixels() != nullptr; }
  // The GL name of a frame on the GPU; 0 for a frame in memory or when the host names none.
  uint32_t TextureName() const;
  // Copies the picture, rows `stride` bytes apart. False on failure.
  bool ReadPixels(void* destination, int32_t stride) const;

 private:
  HostFrame* frame_;
  FrameDescription description_;
  bool owned_;
};

}  // namespace krv
