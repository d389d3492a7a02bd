// A movie with sound.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

#include "media/audio_encoder.h"
#include "media/audio_packets.h"
#include "media/frame_sink.h"
#include "media/muxer.h"
#include "media/part_file.h"
#include "media/video_encoder.h"

namespace krv::host {

// Sound to be copied as it is.
struct AudioCopy {
  std::filesystem::path path;
  Timestamp origin;  // where the movie's first frame is on that file's clock
};

// Whether the container takes the file's sound without a new encoding. Throws MediaError when the
// file cannot be opened.
bool CanCopyAudio(const OutputFormat& output, const std::filesystem::path& path);

struct MovieSettings {
  OutputFormat output;
  VideoFormat video;
  VideoQuality quality;
  AudioFormat audio;              // of the samples to be written
  std::optional<AudioCopy> copy;  // when set, the sound comes from there instead
};

// The movie ends with its last picture; copied sound is cut after the packet that reaches it.
class MediaWriter final : public FrameSink {
 public:
  // Throws MediaError.
  MediaWriter(const std::filesystem::path& path, const MovieSettings& settings);

  void Write(const Picture& picture, const std::vector<int16_t>& samples) override;
  void Finish() override;

 private:
  void AddAudio(const MovieSettings& settings);
  void WriteVideoPacket(AVPacket* packet);
  void WriteAudioPacket(AVPacket* packet);
  void SkipPreroll();                  // goes to the first packet to be copied
  void CopyAudioUntil(int64_t frame);  // packets that begin before the frame does

  PartFile file_;
  Muxer muxer_;
  VideoEncoder video_;
  AVStream* video_stream_;
  std::optional<AudioEncoder> audio_;  // this or copy_
  std::optional<AudioPackets> copy_;
  AVStream* audio_stream_ = nullptr;
  AVPacket* next_copied_ = nullptr;  // of copy_, not yet written; null at the end
  FrameRate rate_;
  int64_t frames_ = 0;
};

}  // namespace krv::host
