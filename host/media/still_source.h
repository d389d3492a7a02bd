// One picture for every frame: the background of sound without video.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

#include "media/frame_source.h"

namespace krv::host {

struct PictureSize {
  int width = 0;   // pixels
  int height = 0;  // pixels
};

// Decodes a picture file. With a size the picture is scaled to cover it, its overhang cut off on
// both sides alike. Throws MediaError.
Picture LoadPicture(const std::filesystem::path& path, std::optional<PictureSize> cover);

// A copy of every pixel.
void CopyPicture(const Picture& from, Picture* to);

class StillSource final : public FrameSource {
 public:
  StillSource(Picture picture, FrameRate rate);

  const VideoFormat& format() const override { return format_; }
  int64_t ExpectedFrames() const override { return -1; }
  void SkipTo(int64_t) override {}
  bool Read(Picture* out) override;

 private:
  Picture picture_;
  VideoFormat format_;
};

}  // namespace krv::host
