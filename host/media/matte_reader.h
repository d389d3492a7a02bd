// Masks from a matte: a video or picture that shows where the person is.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>

#include "media/frame_source.h"

namespace krv::host {

// The person is where the matte is bright or, when its first frame has transparency, where it is
// opaque. Frame n of the matte belongs to frame n of the render, whatever the matte's own rate. A
// picture belongs to every frame, and so does the last frame of a video to those after it.
class MatteReader {
 public:
  // The first mask to be read is that of `first_frame`. Throws MediaError.
  explicit MatteReader(const std::filesystem::path& path, int64_t first_frame = 0);

  // Reads the next mask: in all four channels how much of the pixel is the person. What is below
  // an eighth of the whole is nobody: encoders leave traces that would count as outlines.
  void Read(Picture* out);

 private:
  std::unique_ptr<FrameSource> pictures_;  // null for a still picture
  bool by_alpha_ = false;
  Picture mask_;  // the one read last
};

}  // namespace krv::host
