// Pictures of the host's, in memory or in textures.
#pragma once

#include "interfaces.h"

namespace abi {

struct Color {
  uint8_t blue, green, red, alpha;
  bool operator==(const Color&) const = default;
};
static_assert(sizeof(Color) == 4);

// Owns its pixels or its texture; a texture lives in the context that was current when it was made.
class Frame final : public HostFrame {
 public:
  // `padding` bytes of the value kPaddingByte follow each row of a frame in memory.
  static constexpr uint8_t kPaddingByte = 0xEE;
  Frame(int32_t width, int32_t height, FrameForm form, int32_t padding = 0);
  ~Frame();
  Frame(const Frame&) = delete;
  Frame& operator=(const Frame&) = delete;

  int32_t Describe(FrameDescription* out) override;
  void* GetPixels() override;
  int32_t ReadPixels(void* destination, int32_t destination_stride) override;

  uint32_t texture() const { return texture_; }

  // width x height colours, without padding between the rows.
  void Write(const Color* picture);
  void Read(Color* picture);
  // Whether nobody wrote between the rows.
  bool PaddingIsIntact() const;

 private:
  int32_t row_bytes() const { return description_.width * int32_t{sizeof(Color)}; }

  FrameDescription description_;
  uint8_t* pixels_ = nullptr;  // null for a texture
  uint32_t texture_ = 0;
};

}  // namespace abi
