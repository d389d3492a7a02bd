// What is in a media file, as FFmpeg's libraries say.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "media/media_file.h"

namespace krv::host {

struct StreamFacts {
  std::string codec;  // FFmpeg's name
  double container_seconds = 0;
  // Video only.
  int width = 0;
  int height = 0;
  double frame_rate = 0;
  int64_t frames = 0;
  std::string colour_matrix;
  // Sound only.
  int sample_rate = 0;
  int channels = 0;
};

StreamFacts ProbeStream(const std::filesystem::path& path, StreamKind kind);

// The bytes of all packets of the file's sound, one after the other. AAC loses the headers that
// .aac files have before each packet.
std::string AudioBytes(const std::filesystem::path& path);

}  // namespace krv::host
