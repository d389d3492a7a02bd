#include "media/muxer.h"

#include <new>

#include "media/media_error.h"
#include "utf8_path.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace krv::host {

Muxer::Muxer(const std::filesystem::path& path, const std::string& container, std::string name)
    : path_(path), name_(std::move(name)) {
  AVFormatContext* format = nullptr;
  CheckAv(avformat_alloc_output_context2(&format, nullptr, container.c_str(), nullptr), name_);
  format_.reset(format);
}

bool Muxer::WantsGlobalHeader() const {
  return (format_->oformat->flags & AVFMT_GLOBALHEADER) != 0;
}

AVStream* Muxer::AddStream(const AVCodecContext& encoder) {
  AVStream* stream = avformat_new_stream(format_.get(), nullptr);
  if (stream == nullptr) throw std::bad_alloc();
  CheckAv(avcodec_parameters_from_context(stream->codecpar, &encoder), name_);
  stream->time_base = encoder.time_base;
  stream->avg_frame_rate = encoder.framerate;
  stream->sample_aspect_ratio = encoder.sample_aspect_ratio;
  return stream;
}

AVStream* Muxer::AddStream(const AVCodecParameters& parameters, const Timestamp& tick) {
  AVStream* stream = avformat_new_stream(format_.get(), nullptr);
  if (stream == nullptr) throw std::bad_alloc();
  CheckAv(avcodec_parameters_copy(stream->codecpar, &parameters), name_);
  stream->codecpar->codec_tag = 0;  // the other container's name for the codec
  stream->time_base = {tick.numerator, tick.denominator};
  return stream;
}

void Muxer::Start() {
  CheckAv(avio_open(&format_->pb, ("file:" + Utf8(path_)).c_str(), AVIO_FLAG_WRITE), name_);
  AVDictionary* options = nullptr;
  // Lets players begin before they have the whole file. Other containers do not know the option.
  av_dict_set(&options, "movflags", "+faststart", 0);
  const int code = avformat_write_header(format_.get(), &options);
  av_dict_free(&options);
  CheckAv(code, name_);
}

void Muxer::Write(AVPacket* packet, const AVStream& stream, const Timestamp& tick) {
  av_packet_rescale_ts(packet, {tick.numerator, tick.denominator}, stream.time_base);
  packet->stream_index = stream.index;
  packet->pos = -1;
  CheckAv(av_interleaved_write_frame(format_.get(), packet), name_);
}

void Muxer::Finish() {
  CheckAv(av_write_trailer(format_.get()), name_);
  CheckAv(avio_closep(&format_->pb), name_);
}

}  // namespace krv::host
