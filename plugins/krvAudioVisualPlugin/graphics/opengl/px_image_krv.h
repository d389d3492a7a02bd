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
              std::shared_ptr<void> keep_alive = nullptr);

  // Reads from the host frame, not from the texture.
  cv::Mat& Download(cv::Mat& matrix) override;

 private:
  std::shared_ptr<EffectImage> frame_;
  std::shared_ptr<void> keep_alive_;
};

}  // namespace krv
