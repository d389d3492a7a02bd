// Pictures to compressed video.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "media/encoder.h"
#include "media/frame_source.h"
#include "media/output_format.h"
#include "media/picture_converter.h"

namespace krv::host {

struct VideoQuality {
  std::optional<int> crf;  // constant rate factor, lower is better; 18 for H.264, 24 for VP9
  std::string preset = "veryfast";  // of H.264
};

class VideoEncoder {
 public:
  // `global_header`: the container keeps the codec's header apart from the stream. Throws
  // MediaError.
  VideoEncoder(const OutputFormat& output, const VideoFormat& video, const VideoQuality& quality,
               bool global_header);

  const AVCodecContext& context() const { return *codec_; }

  // Encodes the next picture. The time base is the frame's duration, the first frame 0.
  void Write(const Picture& picture, const PacketTaker& take);

  void Finish(const PacketTaker& take);

 private:
  CodecPtr codec_;
  PictureConverter converter_;
  int64_t next_ = 0;
};

}  // namespace krv::host
