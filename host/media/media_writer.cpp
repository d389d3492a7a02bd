#include "media/media_writer.h"

#include "media/media_error.h"
#include "utf8_path.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace krv::host {
namespace {

// Sound before the first picture that a decoder may need to get going.
constexpr int64_t kPrerollMs = 100;

Timestamp TickOf(const AVCodecContext& codec) {
  return {1, codec.time_base.num, codec.time_base.den};
}

}  // namespace

bool CanCopyAudio(const OutputFormat& output, const std::filesystem::path& path) {
  const MediaFile file(path, StreamKind::kAudio);
  const AVOutputFormat* container = av_guess_format(output.container.c_str(), nullptr, nullptr);
  return container != nullptr && avformat_query_codec(container, file.stream().codecpar->codec_id,
                                                      FF_COMPLIANCE_NORMAL) == 1;
}

MediaWriter::MediaWriter(const std::filesystem::path& path, const MovieSettings& settings)
    : file_(path),
      muxer_(file_.path(), settings.output.container, Utf8(path)),
      video_(settings.output, settings.video, settings.quality, muxer_.WantsGlobalHeader()),
      video_stream_(muxer_.AddStream(video_.context())),
      rate_(settings.video.rate) {
  // WebM's mark for a second, hidden picture that holds the alpha.
  if (settings.output.alpha && settings.output.container == "webm") {
    av_dict_set(&video_stream_->metadata, "alpha_mode", "1", 0);
  }
  AddAudio(settings);
  muxer_.Start(settings.audio.sample_rate);
}

void MediaWriter::AddAudio(const MovieSettings& settings) {
  if (settings.copy) {
    copy_.emplace(settings.copy->path, settings.copy->origin);
    SkipPreroll();
    audio_stream_ = muxer_.AddStream(copy_->parameters(), copy_->tick());
    return;
  }
  audio_.emplace(settings.output.audio_encoder, settings.audio, muxer_.WantsGlobalHeader());
  audio_stream_ = muxer_.AddStream(audio_->context());
}

void MediaWriter::SkipPreroll() {
  const AVRational tick = {copy_->tick().numerator, copy_->tick().denominator};
  do {
    next_copied_ = copy_->Next();
  } while (next_copied_ != nullptr && av_compare_ts(next_copied_->pts + next_copied_->duration,
                                                    tick, -kPrerollMs, {1, 1000}) < 0);
}

void MediaWriter::WriteVideoPacket(AVPacket* packet) {
  if (packet->duration == 0) packet->duration = 1;
  muxer_.Write(packet, *video_stream_, TickOf(video_.context()));
}

void MediaWriter::WriteAudioPacket(AVPacket* packet) {
  muxer_.Write(packet, *audio_stream_, TickOf(audio_->context()));
}

void MediaWriter::CopyAudioUntil(int64_t frame) {
  const AVRational frame_time = {static_cast<int>(rate_.denominator),
                                 static_cast<int>(rate_.numerator)};
  const AVRational tick = {copy_->tick().numerator, copy_->tick().denominator};
  for (; next_copied_ != nullptr; next_copied_ = copy_->Next()) {
    if (av_compare_ts(next_copied_->dts, tick, frame, frame_time) >= 0) return;
    muxer_.Write(next_copied_, *audio_stream_, copy_->tick());
  }
}

void MediaWriter::Write(const Picture& picture, const std::vector<int16_t>& samples) {
  video_.Write(picture, [this](AVPacket* packet) { WriteVideoPacket(packet); });
  ++frames_;
  if (copy_) {
    CopyAudioUntil(frames_);
  } else {
    audio_->Write(samples, [this](AVPacket* packet) { WriteAudioPacket(packet); });
  }
}

void MediaWriter::Finish() {
  video_.Finish([this](AVPacket* packet) { WriteVideoPacket(packet); });
  if (audio_) audio_->Finish([this](AVPacket* packet) { WriteAudioPacket(packet); });
  muxer_.Finish();
  file_.Commit();
}

}  // namespace krv::host
