#include "media/muxer.h"

#include <new>
#include <string_view>

#include "media/media_error.h"
#include "media/media_url.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace krv::host {

Muxer::Muxer(const std::filesystem::path& path, const std::string& container, std::string name)
    : name_(std::move(name)) {
  AVFormatContext* format = nullptr;
  CheckAv(
      avformat_alloc_output_context2(&format, nullptr, container.c_str(), MediaUrl(path).c_str()),
      name_);
  format_.reset(format);
}

bool Muxer::IsMatroska() const {
  const std::string_view container = format_->oformat->name;
  return container == "matroska" || container == "webm";
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

void Muxer::Start(int ticks_per_second) {
  format_->strict_std_compliance = FF_COMPLIANCE_EXPERIMENTAL;  // FLAC in MP4
  CheckAv(avio_open(&format_->pb, format_->url, AVIO_FLAG_WRITE), name_);
  AVDictionary* options = nullptr;
  // MP4 and MOV only; other containers do not know the options.
  av_dict_set(&options, "movflags", "+faststart", 0);  // players begin before they have it all
  av_dict_set_int(&options, "movie_timescale", ticks_per_second, 0);
  const int code = avformat_write_header(format_.get(), &options);
  av_dict_free(&options);
  CheckAv(code, name_);
}

void Muxer::Write(AVPacket* packet, const AVStream& stream, const Timestamp& tick) {
  const AVRational time_base = {tick.numerator, tick.denominator};
  if (IsMatroska() && stream.codecpar->codec_id == AV_CODEC_ID_OPUS) {
    // Readers of Matroska move Opus ahead by the codec's delay; it is stored that much later.
    const AVRational sample = {1, stream.codecpar->sample_rate};
    const int64_t delay = av_rescale_q(stream.codecpar->initial_padding, sample, time_base);
    packet->pts += delay;
    packet->dts += delay;
  }
  av_packet_rescale_ts(packet, time_base, stream.time_base);
  packet->stream_index = stream.index;
  packet->pos = -1;
  CheckAv(av_interleaved_write_frame(format_.get(), packet), name_);
}

void Muxer::Finish() {
  CheckAv(av_write_trailer(format_.get()), name_);
  CheckAv(avio_closep(&format_->pb), name_);
}

}  // namespace krv::host
