// The first stage of a render: pictures and sound, frame by frame.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

#include "media/audio_encoder.h"
#include "media/audio_reader.h"
#include "media/audio_timeline.h"
#include "media/frame_source.h"
#include "media/matte_reader.h"
#include "render_options.h"

namespace krv::tool {

// One frame on its way through the stages.
struct RenderJob {
  int64_t index = 0;
  host::Picture input;           // 0 x 0 for a transparent one
  host::Picture mask;            // of the person; 0 x 0 for none
  std::vector<int16_t> samples;  // interleaved
  host::SampleSpan span;         // of the samples, on the timeline
  host::Picture output;
};

// The files' parts: pictures from the one with video, or a background; sound from the one with
// sound alone, or the video's own.
class RenderInput {
 public:
  // Throws MediaError, also when the inputs do not make up one video and one sound.
  explicit RenderInput(const RenderOptions& options);

  const host::VideoFormat& video() const { return pictures_->format(); }
  host::AudioFormat audio() const;
  const std::filesystem::path& audio_path() const { return audio_path_; }
  host::Timestamp audio_origin() const { return sound_->origin(); }

  // The number of frames to come, nearly; -1 when unknown.
  int64_t ExpectedFrames() const;

  // Fills everything of the job but its output. False after the last frame.
  bool Read(RenderJob* job);

 private:
  std::filesystem::path audio_path_;
  std::unique_ptr<host::FrameSource> pictures_;
  std::optional<host::AudioReader> sound_;
  std::optional<host::MatteReader> matte_;
  FrameRange frames_;
  bool transparent_;
  bool still_ = false;  // the pictures do not end, the sound does
  int64_t next_;
};

}  // namespace krv::tool
