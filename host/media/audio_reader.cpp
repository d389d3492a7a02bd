#include "media/audio_reader.h"

#include <algorithm>
#include <cstdlib>

#include "media/media_error.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswresample/swresample.h>
}

namespace krv::host {
namespace {

int64_t ToSamples(const Timestamp& time, int sample_rate) {
  return av_rescale_q(time.ticks, {time.numerator, time.denominator}, {1, sample_rate});
}

}  // namespace

AudioReader::AudioReader(const std::filesystem::path& path, std::optional<Timestamp> origin)
    : decoder_(path, StreamKind::kAudio) {
  const AVFrame* first = decoder_.Next();
  if (first == nullptr || first->sample_rate <= 0 || first->ch_layout.nb_channels <= 0) {
    throw MediaError(decoder_.file().name() + ": not one audio sample can be decoded");
  }
  sample_rate_ = first->sample_rate;
  channels_ = first->ch_layout.nb_channels;
  if (first->ch_layout.order == AV_CHANNEL_ORDER_NATIVE) channel_mask_ = first->ch_layout.u.mask;
  const AVStream& stream = decoder_.stream();
  const int64_t start = first->pts == AV_NOPTS_VALUE ? 0 : first->pts;
  origin_ = origin ? *origin : Timestamp{start, stream.time_base.num, stream.time_base.den};
  origin_samples_ = ToSamples(origin_, sample_rate_);
  if (stream.duration > 0) {
    expected_samples_ = av_rescale_q(stream.duration, stream.time_base, {1, sample_rate_});
  }
  stream_end_ = PositionOf(*first);
  Place(stream_end_, Convert(*first));
}

int64_t AudioReader::PositionOf(const AVFrame& frame) const {
  if (frame.pts == AV_NOPTS_VALUE) return stream_end_;
  return av_rescale_q(frame.pts, decoder_.stream().time_base, {1, sample_rate_}) - origin_samples_;
}

int64_t AudioReader::PendingEnd() const {
  return pending_start_ + static_cast<int64_t>(pending_.size()) / channels_;
}

std::vector<int16_t> AudioReader::Convert(const AVFrame& frame) {
  const std::string& name = decoder_.file().name();
  if (frame.sample_rate != sample_rate_ || frame.ch_layout.nb_channels != channels_) {
    throw MediaError(name + ": the sample rate or the channels change within the audio stream");
  }
  if (frame.format != converter_format_) {
    SwrContext* converter = nullptr;
    auto* layout = const_cast<AVChannelLayout*>(&frame.ch_layout);  // only read
    CheckAv(
        swr_alloc_set_opts2(&converter, layout, AV_SAMPLE_FMT_S16, sample_rate_, layout,
                            static_cast<AVSampleFormat>(frame.format), sample_rate_, 0, nullptr),
        name);
    converter_.reset(converter);
    CheckAv(swr_init(converter), name);
    converter_format_ = frame.format;
  }
  std::vector<int16_t> samples(static_cast<size_t>(frame.nb_samples) *
                               static_cast<size_t>(channels_));
  auto* out = reinterpret_cast<uint8_t*>(samples.data());
  auto** in = const_cast<const uint8_t**>(frame.extended_data);
  CheckAv(swr_convert(converter_.get(), &out, frame.nb_samples, in, frame.nb_samples), name);
  return samples;
}

void AudioReader::Place(int64_t start, const std::vector<int16_t>& samples) {
  const int64_t jump = std::abs(start - stream_end_);
  const bool continues = jump <= int64_t{sample_rate_} * kJitterMs / 1000 ||
                         jump > int64_t{sample_rate_} * kClockJumpS;
  const int64_t begin = continues ? stream_end_ : start;
  const auto count = static_cast<int64_t>(samples.size()) / channels_;
  const int64_t gap = std::max<int64_t>(begin - PendingEnd(), 0);
  pending_.insert(pending_.end(), static_cast<size_t>(gap * channels_), 0);
  const int64_t cut = std::clamp<int64_t>(PendingEnd() - begin, 0, count);
  pending_.insert(pending_.end(), samples.begin() + static_cast<ptrdiff_t>(cut * channels_),
                  samples.end());
  stream_end_ = std::max(stream_end_, begin + count);
}

bool AudioReader::Decode() {
  const AVFrame* frame = decoder_.Next();
  if (frame == nullptr) return false;
  Place(PositionOf(*frame), Convert(*frame));
  return true;
}

int64_t AudioReader::Read(int64_t first, int64_t count, std::vector<int16_t>* samples) {
  const auto values = [this](int64_t sample_frames) {
    return static_cast<size_t>(sample_frames * channels_);
  };
  // Drop what is skipped as it is decoded, so that a skip of an hour needs no more memory.
  do {
    const int64_t passed = std::clamp<int64_t>(first, pending_start_, PendingEnd());
    pending_.erase(pending_.begin(),
                   pending_.begin() + static_cast<ptrdiff_t>(values(passed - pending_start_)));
    pending_start_ = passed;
  } while (PendingEnd() < first + count && Decode());

  const int64_t available = std::clamp<int64_t>(PendingEnd() - first, 0, count);
  samples->assign(pending_.begin(), pending_.begin() + static_cast<ptrdiff_t>(values(available)));
  samples->resize(values(count), 0);
  return available;
}

}  // namespace krv::host
