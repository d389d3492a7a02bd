#include "media/video_encoder.h"

#include <map>

#include "media/media_error.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavutil/opt.h>
}

namespace krv::host {
namespace {

AVPixelFormat PixelFormatOf(const OutputFormat& output) {
  if (output.video_encoder == "prores_ks") return AV_PIX_FMT_YUVA444P10LE;
  return output.alpha ? AV_PIX_FMT_YUVA420P : AV_PIX_FMT_YUV420P;
}

std::map<std::string, std::string> OptionsOf(const std::string& encoder,
                                             const VideoQuality& quality) {
  if (encoder == "libx264") {
    return {{"crf", std::to_string(quality.crf.value_or(18))}, {"preset", quality.preset}};
  }
  if (encoder == "libvpx-vp9") {
    // With alpha libvpx cannot look ahead to hidden reference frames.
    return {{"crf", std::to_string(quality.crf.value_or(24))},
            {"b", "0"},
            {"deadline", "good"},
            {"cpu-used", "4"},
            {"row-mt", "1"},
            {"auto-alt-ref", "0"}};
  }
  return {{"profile", "4444"}, {"alpha_bits", "16"}, {"vendor", "apl0"}};
}

}  // namespace

VideoEncoder::VideoEncoder(const OutputFormat& output, const VideoFormat& video,
                           const VideoQuality& quality, bool global_header)
    : codec_(MakeEncoder(output.video_encoder)),
      converter_(video.width, video.height, PixelFormatOf(output)) {
  codec_->width = converter_.width();
  codec_->height = converter_.height();
  codec_->pix_fmt = PixelFormatOf(output);
  codec_->framerate = {static_cast<int>(video.rate.numerator),
                       static_cast<int>(video.rate.denominator)};
  codec_->time_base = av_inv_q(codec_->framerate);
  codec_->sample_aspect_ratio = {video.aspect_numerator, video.aspect_denominator};
  codec_->colorspace = AVCOL_SPC_BT709;
  codec_->color_primaries = AVCOL_PRI_BT709;
  codec_->color_trc = AVCOL_TRC_BT709;
  codec_->color_range = AVCOL_RANGE_MPEG;
  if (global_header) codec_->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
  for (const auto& [name, value] : OptionsOf(output.video_encoder, quality)) {
    CheckAv(av_opt_set(codec_.get(), name.c_str(), value.c_str(), AV_OPT_SEARCH_CHILDREN),
            std::string(output.video_encoder).append(" ").append(name).append(" ").append(value));
  }
  CheckAv(avcodec_open2(codec_.get(), codec_->codec, nullptr), output.video_encoder);
}

void VideoEncoder::Write(const Picture& picture, const PacketTaker& take) {
  const FramePtr frame = converter_.Convert(picture);
  frame->pts = next_++;
  frame->pkt_duration = 1;
  Encode(codec_.get(), frame.get(), take);
}

void VideoEncoder::Finish(const PacketTaker& take) { Encode(codec_.get(), nullptr, take); }

}  // namespace krv::host
