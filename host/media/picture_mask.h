// A picture as the host's person mask.
#pragma once

#include "krv/effect_context.h"
#include "media/picture.h"

namespace krv::host {

class PictureMask final : public PersonMaskSource {
 public:
  // The picture is borrowed; the plug-in reads it in place.
  explicit PictureMask(Picture* picture) : picture_(picture) {}

  uint8_t GetMask(uint8_t** pixels, int32_t* width, int32_t* height, int32_t* stride) override {
    *pixels = picture_->Row(0);
    *width = picture_->width();
    *height = picture_->height();
    *stride = picture_->stride();
    return 1;
  }

 private:
  Picture* picture_;
};

}  // namespace krv::host
