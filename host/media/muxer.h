// A container file being written.
#pragma once

#include <filesystem>
#include <string>

#include "media/av_ptr.h"
#include "media/media_file.h"

struct AVCodecParameters;
struct AVStream;

namespace krv::host {

// Streams are added first, then packets written. Packets of different streams may come in any order
// within a second or so. All operations throw MediaError.
class Muxer {
 public:
  // `container`: FFmpeg's name. `name`: the output's name in messages.
  Muxer(const std::filesystem::path& path, const std::string& container, std::string name);

  // Whether codecs keep their headers apart from the stream.
  bool WantsGlobalHeader() const;

  // Adds the stream an opened encoder writes; the stream is the muxer's.
  AVStream* AddStream(const AVCodecContext& encoder);

  // Adds a stream of sound copied from elsewhere, timed in `tick`.
  AVStream* AddStream(const AVCodecParameters& parameters, const Timestamp& tick);

  // Opens the file and writes what precedes the packets. `ticks_per_second`: the resolution in
  // which MP4 and MOV keep the lengths of streams.
  void Start(int ticks_per_second);

  // Takes the packet's contents. `tick`: of the packet's timestamps.
  void Write(AVPacket* packet, const AVStream& stream, const Timestamp& tick);

  // Completes and closes the file.
  void Finish();

 private:
  bool IsMatroska() const;  // WebM included

  std::string name_;
  OutputPtr format_;
};

}  // namespace krv::host
