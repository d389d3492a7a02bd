#include "media/jpeg_encoder.h"

#include "media/encoder.h"
#include "media/media_error.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libswscale/swscale.h>
}

namespace krv::host {
namespace {

constexpr AVPixelFormat kFormat = AV_PIX_FMT_YUVJ444P;
constexpr int kQuantiser = 4;  // 2, the finest, to 31

// JPEG files are BT.601 in full range, unlike video.
FramePtr ToFrame(const Picture& picture) {
  FramePtr frame = MakeFrame();
  frame->width = picture.width();
  frame->height = picture.height();
  frame->format = kFormat;
  frame->quality = kQuantiser * FF_QP2LAMBDA;
  CheckAv(av_frame_get_buffer(frame.get(), 0), "picture buffer");
  const ScalerPtr scaler(sws_getContext(
      picture.width(), picture.height(), AV_PIX_FMT_BGRA, picture.width(), picture.height(),
      kFormat, SWS_BICUBIC | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INP, nullptr, nullptr, nullptr));
  if (scaler == nullptr) throw MediaError("no conversion to the pixel format of JPEG");
  const uint8_t* const planes[4] = {picture.Row(0), nullptr, nullptr, nullptr};
  const int strides[4] = {picture.stride(), 0, 0, 0};
  sws_scale(scaler.get(), planes, strides, 0, picture.height(), frame->data, frame->linesize);
  return frame;
}

}  // namespace

std::string EncodeJpeg(const Picture& picture) {
  const CodecPtr codec = MakeEncoder("mjpeg");
  codec->width = picture.width();
  codec->height = picture.height();
  codec->pix_fmt = kFormat;
  codec->time_base = {1, 1};
  codec->thread_count = 1;
  codec->flags |= AV_CODEC_FLAG_QSCALE;
  codec->global_quality = kQuantiser * FF_QP2LAMBDA;
  CheckAv(avcodec_open2(codec.get(), codec->codec, nullptr), "mjpeg");
  std::string file;
  const auto take = [&file](AVPacket* packet) {
    file.append(reinterpret_cast<const char*>(packet->data), static_cast<size_t>(packet->size));
  };
  Encode(codec.get(), ToFrame(picture).get(), take);
  return file;
}

}  // namespace krv::host
