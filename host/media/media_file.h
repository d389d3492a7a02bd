// A media file opened for reading one of its streams.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "media/av_ptr.h"

struct AVStream;

namespace krv::host {

enum class StreamKind { kVideo, kAudio };

// A position on a stream's own clock.
struct Timestamp {
  int64_t ticks = 0;
  int numerator = 1;  // a tick lasts numerator / denominator seconds
  int denominator = 1;
};

class MediaFile {
 public:
  // Opens the file and chooses its first stream of that kind; a cover picture in a sound file is
  // not a video stream. Throws MediaError, also when there is no such stream.
  MediaFile(const std::filesystem::path& path, StreamKind kind);

  // Reads the next packet of the stream into `packet`, replacing what it held. False at the end.
  // Other streams' packets are skipped. Throws MediaError when the file cannot be read further.
  bool Read(AVPacket* packet);

  AVFormatContext& format() { return *format_; }
  AVStream& stream() const { return *stream_; }
  const std::string& name() const { return name_; }  // the path, for messages

 private:
  std::string name_;
  InputPtr format_;
  AVStream* stream_ = nullptr;  // inside format_
};

// Which kinds of stream a media file has.
struct MediaContents {
  bool video = false;
  bool audio = false;
  bool still = false;  // the file is a picture
};

// Throws MediaError when the file cannot be opened as media.
MediaContents ProbeMedia(const std::filesystem::path& path);

}  // namespace krv::host
