// The host's pictures: in memory, or as textures of the OpenGL context.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "krv/frame.h"

namespace krv::host {

// Bytes of one pixel of a PixelType, or 0 for a type there is none of.
int32_t BytesPerPixel(int32_t pixel_type);

// Copies `rows` rows of `row_bytes` bytes between buffers whose rows are a stride apart. Bytes
// between the rows are left alone.
void CopyRows(const void* source, int32_t source_stride, void* destination,
              int32_t destination_stride, int32_t row_bytes, int32_t rows);

// A picture in memory. [any-thread], no locks.
class MemoryFrame final : public HostFrame {
 public:
  // A black, transparent picture in a buffer of its own. A stride below the width's bytes is raised
  // to it.
  MemoryFrame(int32_t width, int32_t height, int32_t pixel_type, int32_t stride = 0);

  // A picture in the caller's buffer, which must outlive the frame; `pixels` may be null for a
  // frame without a buffer.
  MemoryFrame(const FrameDescription& description, void* pixels);

  MemoryFrame(const MemoryFrame&) = delete;
  MemoryFrame& operator=(const MemoryFrame&) = delete;

  int32_t Describe(FrameDescription* out) override;
  void* GetPixels() override;
  int32_t ReadPixels(void* destination, int32_t destination_stride) override;

 private:
  FrameDescription description_;
  std::vector<uint8_t> own_;
  void* pixels_;
};

// A picture in a GL texture (GL_RGBA8, GL_RGBA16 or GL_RGBA32F, complete without mip maps).
// [gl-thread] throughout, always with the context that was current at Create.
class TextureFrame final : public HostFrame {
 public:
  // A new texture with undefined contents. Null on failure, with the reason in *error.
  static std::unique_ptr<TextureFrame> Create(int32_t width, int32_t height, int32_t pixel_type,
                                              std::string* error);
  ~TextureFrame();
  TextureFrame(const TextureFrame&) = delete;
  TextureFrame& operator=(const TextureFrame&) = delete;

  uint32_t texture() const { return texture_; }

  // Replaces the picture: blue, green, red, alpha, top row first, rows `stride` bytes apart. False
  // when GL refuses.
  bool Upload(const void* pixels, int32_t stride);

  int32_t Describe(FrameDescription* out) override;
  void* GetPixels() override;
  int32_t ReadPixels(void* destination, int32_t destination_stride) override;

 private:
  TextureFrame(const FrameDescription& description, uint32_t texture)
      : description_(description), texture_(texture) {}

  FrameDescription description_;  // stride: rows without padding
  uint32_t texture_;
};

}  // namespace krv::host
