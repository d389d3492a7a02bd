#include "media/picture_converter.h"

#include <algorithm>
#include <cstring>

#include "media/media_error.h"

extern "C" {
#include <libavutil/frame.h>
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}

namespace krv::host {
namespace {

const AVPixFmtDescriptor& Describe(int pixel_format) {
  return *av_pix_fmt_desc_get(static_cast<AVPixelFormat>(pixel_format));
}

int RoundUp(int side, int log2_step) {
  const int step = 1 << log2_step;
  return (side + step - 1) / step * step;
}

}  // namespace

PictureConverter::PictureConverter(int width, int height, int pixel_format)
    : pixel_format_(pixel_format),
      width_(RoundUp(width, Describe(pixel_format).log2_chroma_w)),
      height_(RoundUp(height, Describe(pixel_format).log2_chroma_h)) {
  constexpr int kFlags = SWS_BICUBIC | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INP;
  scaler_.reset(sws_getContext(width_, height_, AV_PIX_FMT_BGRA, width_, height_,
                               static_cast<AVPixelFormat>(pixel_format), kFlags, nullptr, nullptr,
                               nullptr));
  if (scaler_ == nullptr) throw MediaError("no conversion to the encoder's pixel format");
  // Fails for formats without a matrix, which need none.
  const int* bt709 = sws_getCoefficients(SWS_CS_ITU709);
  sws_setColorspaceDetails(scaler_.get(), bt709, 1, bt709, 0, 0, 1 << 16, 1 << 16);
}

const Picture& PictureConverter::Padded(const Picture& picture) {
  if (picture.width() == width_ && picture.height() == height_) return picture;
  padded_.Resize(width_, height_);
  for (int y = 0; y < height_; ++y) {
    const int row = std::min(y, picture.height() - 1);
    std::memcpy(padded_.Row(y), picture.Row(row), static_cast<size_t>(picture.width()) * 4);
    std::memcpy(padded_.Pixel(width_ - 1, y), picture.Pixel(picture.width() - 1, row), 4);
  }
  return padded_;
}

FramePtr PictureConverter::Convert(const Picture& picture) {
  FramePtr frame = MakeFrame();
  frame->width = width_;
  frame->height = height_;
  frame->format = pixel_format_;
  if ((Describe(pixel_format_).flags & AV_PIX_FMT_FLAG_RGB) == 0) {
    frame->colorspace = AVCOL_SPC_BT709;
    frame->color_primaries = AVCOL_PRI_BT709;
    frame->color_trc = AVCOL_TRC_BT709;
    frame->color_range = AVCOL_RANGE_MPEG;
  }
  CheckAv(av_frame_get_buffer(frame.get(), 0), "picture buffer");
  const Picture& source = Padded(picture);
  const uint8_t* const planes[4] = {source.Row(0), nullptr, nullptr, nullptr};
  const int strides[4] = {source.stride(), 0, 0, 0};
  sws_scale(scaler_.get(), planes, strides, 0, height_, frame->data, frame->linesize);
  return frame;
}

}  // namespace krv::host
