#include "media/encoder.h"

#include <new>

#include "media/media_error.h"

extern "C" {
#include <libavcodec/avcodec.h>
}

namespace krv::host {

CodecPtr MakeEncoder(const std::string& name) {
  const AVCodec* encoder = avcodec_find_encoder_by_name(name.c_str());
  if (encoder == nullptr) throw MediaError("FFmpeg was built without the encoder " + name);
  CodecPtr codec(avcodec_alloc_context3(encoder));
  if (codec == nullptr) throw std::bad_alloc();
  codec->thread_count = 0;  // as many as there are cores
  return codec;
}

void Encode(AVCodecContext* codec, const AVFrame* frame, const PacketTaker& take) {
  const std::string name = codec->codec->name;
  CheckAv(avcodec_send_frame(codec, frame), name);
  const PacketPtr packet = MakePacket();
  while (true) {
    const int code = avcodec_receive_packet(codec, packet.get());
    if (code == AVERROR(EAGAIN) || code == AVERROR_EOF) return;
    CheckAv(code, name);
    take(packet.get());
    av_packet_unref(packet.get());
  }
}

}  // namespace krv::host
