// The audio stream of a file as 16-bit samples on a timeline.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "media/stream_decoder.h"

namespace krv::host {

// Samples keep the stream's own rate and channels, interleaved; only their format is converted.
// The timeline counts samples per channel from an origin on the file's clock. Timestamps place the
// stream on it: what lies before the origin is dropped, a late start is silence. Consecutive
// packets stay together as long as their timestamps say so within kJitterMs; gaps beyond are filled
// with silence, overlaps beyond are cut. A jump of more than kClockJumpS is a broken clock and
// ignored.
class AudioReader {
 public:
  static constexpr int kJitterMs = 5;
  static constexpr int kClockJumpS = 600;

  // Without an origin the timeline starts with the first sample. Throws MediaError, also when not
  // one sample can be decoded.
  explicit AudioReader(const std::filesystem::path& path, std::optional<Timestamp> origin = {});

  int sample_rate() const { return sample_rate_; }  // Hz
  int channels() const { return channels_; }
  // Speakers as FFmpeg's AV_CH_* bits; 0 when the file does not say.
  uint64_t channel_mask() const { return channel_mask_; }

  // Where the timeline starts on the file's clock.
  Timestamp origin() const { return origin_; }

  // The length of the timeline in samples per channel as the file announces it; -1 when unknown.
  int64_t ExpectedSamples() const { return expected_samples_; }

  // Reads `count` samples per channel from position `first` on; what the stream does not have is
  // silence. Only forwards: `first` must not lie before the end of the previous read. Returns how
  // many of the samples lie before the end of the stream: 0 when it has ended.
  int64_t Read(int64_t first, int64_t count, std::vector<int16_t>* samples);

 private:
  // Takes the next decoded frame into pending_. False at the end.
  bool Decode();
  void Place(int64_t start, const std::vector<int16_t>& samples);
  std::vector<int16_t> Convert(const AVFrame& frame);
  int64_t PositionOf(const AVFrame& frame) const;  // on the timeline
  int64_t PendingEnd() const;

  StreamDecoder decoder_;
  ResamplerPtr converter_;
  int converter_format_ = -1;  // AVSampleFormat that converter_ takes
  int sample_rate_ = 0;
  int channels_ = 0;
  uint64_t channel_mask_ = 0;
  Timestamp origin_;
  int64_t origin_samples_ = 0;  // the origin in samples of the file's clock
  int64_t expected_samples_ = -1;
  // Decoded samples not yet read: from pending_start_ on the timeline.
  std::vector<int16_t> pending_;
  int64_t pending_start_ = 0;
  int64_t stream_end_ = 0;  // where the next decoded sample belongs; before 0 while dropping
};

}  // namespace krv::host
