// An image that wraps a host frame.
#pragma once

#include <memory>

#include "boundary/effect_image.h"
#include "graphics/opengl/px_image_opengl.h"

namespace krv {

class PXImage_KRV : public PXImage_OpenGL {
 public:
  // Wraps `frame` and keeps it; `keep_alive` is kept with it. False when the frame has no texture
  // to offer or none can be made.
  bool Attach(std::shared_ptr<EffectImage> frame, const void* pixels,
              PixelLayout layout = PixelLayout::kBgra, std::shared_ptr<void> keep_alive = nullptr);

  // Keeps `frame`, which lies in memory, without a texture so far. False for a pixel type that no
  // texture can hold.
  bool AttachWithoutTexture(std::shared_ptr<EffectImage> frame);
  // Gives an image attached like that a texture with the frame's pixels. True when there is one.
  bool Upload();

  // Reads from the host frame, not from the texture.
  cv::Mat& Download(cv::Mat& matrix) override;

 private:
  bool CreateFromFrame(uint32_t texture_name, const void* pixels, PixelLayout layout);

  bool awaits_upload_ = false;
  std::shared_ptr<EffectImage> frame_;
  std::shared_ptr<void> keep_alive_;
};

}  // namespace krv
