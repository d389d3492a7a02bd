#include "media/audio_packets.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace krv::host {

AudioPackets::AudioPackets(const std::filesystem::path& path, const Timestamp& origin)
    : file_(path, StreamKind::kAudio), packet_(MakePacket()) {
  origin_ =
      av_rescale_q(origin.ticks, {origin.numerator, origin.denominator}, file_.stream().time_base);
}

const AVCodecParameters& AudioPackets::parameters() const { return *file_.stream().codecpar; }

Timestamp AudioPackets::tick() const {
  return {1, file_.stream().time_base.num, file_.stream().time_base.den};
}

AVPacket* AudioPackets::Next() {
  if (!file_.Read(packet_.get())) return nullptr;
  if (packet_->pts != AV_NOPTS_VALUE) packet_->pts -= origin_;
  if (packet_->dts != AV_NOPTS_VALUE) packet_->dts -= origin_;
  return packet_.get();
}

}  // namespace krv::host
