#include "media/audio_encoder.h"

#include <algorithm>
#include <new>

#include "media/media_error.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavutil/audio_fifo.h>
#include <libavutil/channel_layout.h>
#include <libswresample/swresample.h>
}

namespace krv::host {
namespace {

constexpr int kFallbackRate = 48000;  // Hz
constexpr int kBitsPerChannel = 96000;

int RateFor(const AVCodec& codec, int wanted) {
  if (codec.supported_samplerates == nullptr) return wanted;
  for (const int* rate = codec.supported_samplerates; *rate != 0; ++rate) {
    if (*rate == wanted) return wanted;
  }
  return kFallbackRate;
}

}  // namespace

void AudioEncoder::FreeFifo::operator()(AVAudioFifo* fifo) const { av_audio_fifo_free(fifo); }

AudioEncoder::AudioEncoder(const std::string& encoder, const AudioFormat& format,
                           bool global_header)
    : codec_(MakeEncoder(encoder)), channels_(format.channels) {
  const AVCodec& codec = *codec_->codec;
  codec_->sample_rate = RateFor(codec, format.sample_rate);
  codec_->sample_fmt = codec.sample_fmts[0];
  codec_->time_base = {1, codec_->sample_rate};
  codec_->bit_rate = int64_t{kBitsPerChannel} * format.channels;
  av_channel_layout_default(&codec_->ch_layout, format.channels);
  if (global_header) codec_->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
  CheckAv(avcodec_open2(codec_.get(), &codec, nullptr), encoder);
  OpenConverter(format);
  fifo_.reset(av_audio_fifo_alloc(codec_->sample_fmt, format.channels, codec_->frame_size));
  if (fifo_ == nullptr) throw std::bad_alloc();
}

AudioEncoder::~AudioEncoder() = default;

void AudioEncoder::OpenConverter(const AudioFormat& format) {
  AVChannelLayout in = {};
  if (format.channel_mask == 0 || av_channel_layout_from_mask(&in, format.channel_mask) < 0) {
    av_channel_layout_default(&in, format.channels);
  }
  SwrContext* converter = nullptr;
  CheckAv(
      swr_alloc_set_opts2(&converter, &codec_->ch_layout, codec_->sample_fmt, codec_->sample_rate,
                          &in, AV_SAMPLE_FMT_S16, format.sample_rate, 0, nullptr),
      "sound conversion");
  converter_.reset(converter);
  CheckAv(swr_init(converter), "sound conversion");
}

void AudioEncoder::Convert(const uint8_t* samples, int sample_frames) {
  const int room = swr_get_out_samples(converter_.get(), sample_frames);
  if (room <= 0) return;
  const FramePtr converted = MakeFrame();
  converted->format = codec_->sample_fmt;
  converted->nb_samples = room;
  CheckAv(av_channel_layout_copy(&converted->ch_layout, &codec_->ch_layout), "sound conversion");
  CheckAv(av_frame_get_buffer(converted.get(), 0), "sound conversion");
  const uint8_t* in[1] = {samples};
  const int count = CheckAv(swr_convert(converter_.get(), converted->extended_data, room,
                                        samples == nullptr ? nullptr : in, sample_frames),
                            "sound conversion");
  auto* const* planes = reinterpret_cast<void**>(converted->extended_data);
  CheckAv(av_audio_fifo_write(fifo_.get(), const_cast<void**>(planes), count), "sound conversion");
}

void AudioEncoder::EncodeFrame(int sample_frames, const PacketTaker& take) {
  const FramePtr frame = MakeFrame();
  frame->format = codec_->sample_fmt;
  frame->nb_samples = sample_frames;
  frame->sample_rate = codec_->sample_rate;
  CheckAv(av_channel_layout_copy(&frame->ch_layout, &codec_->ch_layout), "sound encoder");
  CheckAv(av_frame_get_buffer(frame.get(), 0), "sound encoder");
  av_audio_fifo_read(fifo_.get(), reinterpret_cast<void**>(frame->extended_data), sample_frames);
  frame->pts = next_;
  next_ += sample_frames;
  Encode(codec_.get(), frame.get(), take);
}

void AudioEncoder::Write(const std::vector<int16_t>& samples, const PacketTaker& take) {
  Convert(reinterpret_cast<const uint8_t*>(samples.data()),
          static_cast<int>(samples.size()) / channels_);
  while (av_audio_fifo_size(fifo_.get()) >= codec_->frame_size) {
    EncodeFrame(codec_->frame_size, take);
  }
}

void AudioEncoder::Finish(const PacketTaker& take) {
  Convert(nullptr, 0);
  while (const int rest = av_audio_fifo_size(fifo_.get())) {
    EncodeFrame(std::min(rest, codec_->frame_size), take);
  }
  Encode(codec_.get(), nullptr, take);
}

}  // namespace krv::host
