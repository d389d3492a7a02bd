// The audio stream of a file as it was encoded, for copying.
#pragma once

#include <cstdint>
#include <filesystem>

#include "media/media_file.h"

struct AVCodecParameters;

namespace krv::host {

class AudioPackets {
 public:
  // Packets are timed from `origin` on the file's clock. Throws MediaError.
  AudioPackets(const std::filesystem::path& path, const Timestamp& origin);

  const AVCodecParameters& parameters() const;
  Timestamp tick() const;  // of the packets' timestamps: ticks is 1

  // The next packet, timed from the origin, or null at the end; valid until the next call. Times
  // before the origin are negative.
  AVPacket* Next();

 private:
  MediaFile file_;
  int64_t origin_ = 0;  // ticks
  PacketPtr packet_;
};

}  // namespace krv::host
