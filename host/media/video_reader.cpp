#include "media/video_reader.h"

#include <algorithm>

#include "media/media_error.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace krv::host {
namespace {

// Going back to a key frame is worth it only over a distance; in seconds.
constexpr int64_t kSeekDistance = 5;

FrameRate RateOf(AVFormatContext& format, AVStream& stream) {
  const AVRational candidates[] = {av_guess_frame_rate(&format, &stream, nullptr),
                                   stream.avg_frame_rate};
  for (const AVRational& candidate : candidates) {
    if (candidate.num <= 0 || candidate.den <= 0) continue;
    int numerator = 0;
    int denominator = 0;
    av_reduce(&numerator, &denominator, candidate.num, candidate.den, FrameRate::kMaxPart);
    const FrameRate rate{numerator, std::max(denominator, 1)};
    if (rate.PerSecond() >= 1 && rate.PerSecond() <= 240) return rate;
  }
  return {};
}

AVRational FrameDuration(FrameRate rate) {
  return {static_cast<int>(rate.denominator), static_cast<int>(rate.numerator)};
}

VideoFormat FormatOf(MediaFile& file, const AVFrame& first, const Orientation& orientation,
                     std::optional<FrameRate> rate) {
  AVStream& stream = file.stream();
  VideoFormat format;
  format.width = first.width;
  format.height = first.height;
  format.rate = rate ? *rate : RateOf(file.format(), stream);
  const AVRational aspect =
      av_guess_sample_aspect_ratio(&file.format(), &stream, const_cast<AVFrame*>(&first));
  if (aspect.num > 0 && aspect.den > 0) {
    format.aspect_numerator = aspect.num;
    format.aspect_denominator = aspect.den;
  }
  if (orientation.SwapsSides()) {
    std::swap(format.width, format.height);
    std::swap(format.aspect_numerator, format.aspect_denominator);
  }
  return format;
}

int64_t CountFrames(MediaFile& file, FrameRate rate) {
  const AVRational frame = FrameDuration(rate);
  const AVStream& stream = file.stream();
  if (stream.duration > 0) return av_rescale_q(stream.duration, stream.time_base, frame);
  const int64_t duration = file.format().duration;
  return duration > 0 ? av_rescale_q(duration, AV_TIME_BASE_Q, frame) : -1;
}

}  // namespace

VideoReader::VideoReader(const std::filesystem::path& path, std::optional<FrameRate> rate)
    : path_(path) {
  decoder_.emplace(path_, StreamKind::kVideo);
  MediaFile& file = decoder_->file();
  const AVRational tick = file.stream().time_base;
  auto first = Decode();
  if (!first) throw MediaError(file.name() + ": not one video frame can be decoded");
  const Orientation orientation = OrientationOf(file.stream());
  format_ = FormatOf(file, *first->frame, orientation, rate);
  converter_.emplace(first->frame->width, first->frame->height, orientation);

  expected_frames_ = CountFrames(file, format_.rate);

  const FrameRate own_rate = RateOf(file.format(), file.stream());
  frame_ticks_ = std::max<int64_t>(1, av_rescale_q(1, FrameDuration(own_rate), tick));
  // Containers round times to their ticks, up or down: one tick, if a tick is short of a frame.
  tolerance_ = std::min<int64_t>(1, frame_ticks_ / 4);
  first_start_ = first->start;
  if (first->end <= first->start) first->end = first->start + frame_ticks_;
  current_ = std::move(*first);
  following_ = Decode();
}

Timestamp VideoReader::origin() const {
  const AVRational tick = decoder_->stream().time_base;
  return {first_start_, tick.num, tick.den};
}

int64_t VideoReader::TicksOfFrame(int64_t frame) const {
  return first_start_ + av_rescale_q_rnd(frame, FrameDuration(format_.rate),
                                         decoder_->stream().time_base, AV_ROUND_NEAR_INF);
}

std::optional<VideoReader::DecodedFrame> VideoReader::Decode() {
  AVFrame* frame = decoder_->Next();
  if (frame == nullptr) return {};
  DecodedFrame decoded{MakeFrame(), frame->best_effort_timestamp, 0};
  av_frame_move_ref(decoded.frame.get(), frame);
  if (decoded.start == AV_NOPTS_VALUE) decoded.start = last_start_ + frame_ticks_;
  const int64_t duration = decoded.frame->pkt_duration;
  decoded.end = decoded.start + (duration > 0 ? duration : frame_ticks_);
  last_start_ = decoded.start;
  return decoded;
}

bool VideoReader::AdvanceTo(int64_t ticks) {
  while (following_ && following_->start <= ticks + tolerance_) {
    current_ = std::move(*following_);
    following_ = Decode();
  }
  return following_.has_value() || current_.end > ticks + tolerance_;
}

void VideoReader::Rewind() {
  decoder_.emplace(path_, StreamKind::kVideo);
  last_start_ = first_start_;
  following_ = Decode();
}

// After a jump a decoder may put out broken frames that refer to frames before the key frame; from
// the key frame on, in order of display, all is as it was.
bool VideoReader::SeekTo(int64_t ticks) {
  if ((decoder_->file().format().iformat->flags & AVFMT_NOTIMESTAMPS) != 0) return false;
  if (!decoder_->SeekBefore(ticks)) return false;
  do {
    following_ = Decode();
  } while (following_ && following_->frame->key_frame == 0);
  return following_ && following_->start <= ticks;
}

void VideoReader::SkipTo(int64_t frame) {
  next_ = frame;
  const int64_t ticks = TicksOfFrame(frame);
  const AVRational tick = decoder_->stream().time_base;
  if (av_compare_ts(ticks - current_.start, tick, kSeekDistance, {1, 1}) <= 0) return;
  if (!SeekTo(ticks)) Rewind();
}

bool VideoReader::Read(Picture* out) {
  if (!AdvanceTo(TicksOfFrame(next_))) return false;
  if (out != nullptr) converter_->Convert(*current_.frame, out);
  ++next_;
  return true;
}

}  // namespace krv::host
