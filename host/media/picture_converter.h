// Pictures as frames for an encoder.
#pragma once

#include "media/av_ptr.h"
#include "media/picture.h"

namespace krv::host {

// Converts pictures of one size to one pixel format: YUV as BT.709 in limited range. Formats with
// halved chroma need even sides: an odd one gets its last column or row twice.
class PictureConverter {
 public:
  // `pixel_format` is an AVPixelFormat. Throws MediaError when there is no conversion.
  PictureConverter(int width, int height, int pixel_format);

  int width() const { return width_; }    // of the frames made
  int height() const { return height_; }  // of the frames made

  // A new frame, which encoders may keep.
  FramePtr Convert(const Picture& picture);

 private:
  const Picture& Padded(const Picture& picture);

  int pixel_format_;
  int width_;
  int height_;
  ScalerPtr scaler_;
  Picture padded_;
};

}  // namespace krv::host
