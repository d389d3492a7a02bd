#include "media/frame_converter.h"

#include "media/media_error.h"

extern "C" {
#include <libavutil/frame.h>
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}

namespace krv::host {
namespace {

// The AVColorSpace, whose values swscale shares.
int MatrixOf(const AVFrame& frame) {
  if (frame.colorspace != AVCOL_SPC_UNSPECIFIED) return frame.colorspace;
  return frame.height > 576 || frame.width > 1024 ? AVCOL_SPC_BT709 : AVCOL_SPC_SMPTE170M;
}

bool IsRgb(int format) {
  const AVPixFmtDescriptor* description = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(format));
  return description != nullptr && (description->flags & AV_PIX_FMT_FLAG_RGB) != 0;
}

bool IsFullRange(const AVFrame& frame) {
  if (frame.color_range != AVCOL_RANGE_UNSPECIFIED) return frame.color_range == AVCOL_RANGE_JPEG;
  return IsRgb(frame.format) || frame.format == AV_PIX_FMT_YUVJ420P ||
         frame.format == AV_PIX_FMT_YUVJ422P || frame.format == AV_PIX_FMT_YUVJ444P;
}

}  // namespace

FrameConverter::FrameConverter(int width, int height, Orientation orientation)
    : width_(width), height_(height), orientation_(orientation) {}

void FrameConverter::MakeScaler(const Source& source) {
  // Interpolated chroma and exact rounding; the shortcuts without show steps at coloured edges.
  constexpr int kFlags = SWS_BICUBIC | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT;
  scaler_.reset(sws_getContext(source.width, source.height,
                               static_cast<AVPixelFormat>(source.format), width_, height_,
                               AV_PIX_FMT_BGRA, kFlags, nullptr, nullptr, nullptr));
  if (scaler_ == nullptr) throw MediaError("no conversion from this video's pixel format");
  // Fails for formats without a matrix, which need none.
  sws_setColorspaceDetails(scaler_.get(), sws_getCoefficients(source.matrix), source.full_range,
                           sws_getCoefficients(SWS_CS_DEFAULT), 1, 0, 1 << 16, 1 << 16);
}

void FrameConverter::Prepare(const AVFrame& frame) {
  const Source source{frame.width, frame.height, frame.format, MatrixOf(frame),
                      IsFullRange(frame) ? 1 : 0};
  if (source == source_) return;
  yuv420_.reset();
  if (Yuv420Converter::Takes(frame, width_, height_)) {
    yuv420_.emplace(source.matrix, source.full_range != 0);
  } else {
    MakeScaler(source);
  }
  source_ = source;
}

void FrameConverter::Convert(const AVFrame& frame, Picture* out) {
  Prepare(frame);
  const bool turned = orientation_ != Orientation{};
  Picture* picture = turned ? &stored_ : out;
  if (yuv420_) {
    yuv420_->Convert(frame, picture);
  } else {
    picture->Resize(width_, height_);
    uint8_t* const planes[4] = {picture->Row(0), nullptr, nullptr, nullptr};
    const int strides[4] = {picture->stride(), 0, 0, 0};
    sws_scale(scaler_.get(), frame.data, frame.linesize, 0, frame.height, planes, strides);
  }
  if (turned) OrientPicture(stored_, orientation_, out);
}

}  // namespace krv::host
