// The video stream of a file at a constant frame rate.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

#include "media/frame_converter.h"
#include "media/frame_source.h"
#include "media/stream_decoder.h"

namespace krv::host {

// Frame n is the latest frame of the file that is due at n / rate seconds after the first one:
// frames of a constant-rate file come one to one, others are repeated or left out. Rotation is
// applied; frames that change size within the file are scaled to the first one's.
class VideoReader final : public FrameSource {
 public:
  // Without `rate` the file's own. Throws MediaError, also when not one frame can be decoded.
  explicit VideoReader(const std::filesystem::path& path, std::optional<FrameRate> rate = {});

  const VideoFormat& format() const override { return format_; }
  int64_t ExpectedFrames() const override { return expected_frames_; }
  void SkipTo(int64_t frame) override;
  bool Read(Picture* out) override;

  // When the first frame is shown, on the file's clock.
  Timestamp origin() const;

 private:
  struct DecodedFrame {
    FramePtr frame;
    int64_t start = 0;  // ticks of the stream
    int64_t end = 0;    // ticks of the stream
  };

  std::optional<DecodedFrame> Decode();
  // Moves on to the frame that is due at `ticks`. False when the stream ends before.
  bool AdvanceTo(int64_t ticks);
  bool SeekTo(int64_t ticks);
  void Rewind();
  int64_t TicksOfFrame(int64_t frame) const;  // when it is due

  std::filesystem::path path_;
  std::optional<StreamDecoder> decoder_;
  VideoFormat format_;
  std::optional<FrameConverter> converter_;
  DecodedFrame current_;
  std::optional<DecodedFrame> following_;  // nothing at the end of the stream
  int64_t last_start_ = 0;                 // of the frame decoded last
  int64_t first_start_ = 0;                // of the stream's first frame
  int64_t frame_ticks_ = 1;                // duration of a frame that names none
  int64_t tolerance_ = 0;                  // ticks by which a frame may be due late
  int64_t expected_frames_ = -1;
  int64_t next_ = 0;
};

}  // namespace krv::host
