// Where a render's pictures come from.
#pragma once

#include <cstdint>

#include "media/frame_rate.h"
#include "media/picture.h"

namespace krv::host {

struct VideoFormat {
  int width = 0;   // pixels
  int height = 0;  // pixels
  FrameRate rate;
  // Width of a pixel over its height.
  int aspect_numerator = 1;
  int aspect_denominator = 1;
};

// Frames in order of time, at a constant rate; frame n is the picture at n / rate seconds.
class FrameSource {
 public:
  virtual ~FrameSource() = default;

  virtual const VideoFormat& format() const = 0;

  // The number of frames, as far as it is known beforehand: exact or nearly so for files; -1 for a
  // source without an end.
  virtual int64_t ExpectedFrames() const = 0;

  // Makes `frame` the next to be read. The pictures are the same as without; only forwards.
  virtual void SkipTo(int64_t frame) = 0;

  // Reads the next frame's picture; passes over it when `out` is null. False at the end.
  virtual bool Read(Picture* out) = 0;
};

}  // namespace krv::host
