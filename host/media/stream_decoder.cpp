#include "media/stream_decoder.h"

#include <string_view>

#include "media/media_error.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace krv::host {
namespace {

// FFmpeg's own VP9 decoder drops the alpha plane of WebM files; libvpx keeps it.
const AVCodec* FindDecoder(const AVStream& stream) {
  const AVDictionaryEntry* alpha = av_dict_get(stream.metadata, "alpha_mode", nullptr, 0);
  if (stream.codecpar->codec_id == AV_CODEC_ID_VP9 && alpha != nullptr &&
      std::string_view(alpha->value) == "1") {
    if (const AVCodec* libvpx = avcodec_find_decoder_by_name("libvpx-vp9")) return libvpx;
  }
  return avcodec_find_decoder(stream.codecpar->codec_id);
}

CodecPtr OpenDecoder(const AVStream& stream, const std::string& name) {
  const AVCodec* decoder = FindDecoder(stream);
  if (decoder == nullptr) {
    throw MediaError(name + ": no decoder for " + avcodec_get_name(stream.codecpar->codec_id));
  }
  CodecPtr codec(avcodec_alloc_context3(decoder));
  if (codec == nullptr) throw std::bad_alloc();
  CheckAv(avcodec_parameters_to_context(codec.get(), stream.codecpar), name);
  codec->pkt_timebase = stream.time_base;  // lets the decoder time skipped priming samples
  // As many threads as there are cores; for sound, handing work over costs more than it brings.
  codec->thread_count = stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO ? 0 : 1;
  CheckAv(avcodec_open2(codec.get(), decoder, nullptr), name);
  return codec;
}

}  // namespace

StreamDecoder::StreamDecoder(const std::filesystem::path& path, StreamKind kind)
    : file_(path, kind),
      codec_(OpenDecoder(file_.stream(), file_.name())),
      packet_(MakePacket()),
      frame_(MakeFrame()) {}

AVFrame* StreamDecoder::Next() {
  while (true) {
    av_frame_unref(frame_.get());
    const int code = avcodec_receive_frame(codec_.get(), frame_.get());
    if (code == 0) return frame_.get();
    if (code == AVERROR_EOF) return nullptr;
    if (code == AVERROR(EAGAIN)) {
      SendPacket();
    } else if (code != AVERROR_INVALIDDATA) {
      CheckAv(code, file_.name());
    }
  }
}

void StreamDecoder::SendPacket() {
  if (!file_.Read(packet_.get())) {
    avcodec_send_packet(codec_.get(), nullptr);
    return;
  }
  const int code = avcodec_send_packet(codec_.get(), packet_.get());
  if (code != AVERROR_INVALIDDATA) CheckAv(code, file_.name());
}

bool StreamDecoder::SeekBefore(int64_t timestamp) {
  avcodec_flush_buffers(codec_.get());
  return av_seek_frame(&file_.format(), file_.stream().index, timestamp, AVSEEK_FLAG_BACKWARD) >= 0;
}

}  // namespace krv::host
