// Where a render's pictures and sound go.
#pragma once

#include <cstdint>
#include <vector>

#include "media/picture.h"

namespace krv::host {

// Takes frames in order. What was written is thrown away unless Finish is called. All operations
// throw MediaError.
class FrameSink {
 public:
  virtual ~FrameSink() = default;

  // Writes the next frame: its picture and the samples of its time span (interleaved, in the
  // render's rate and channels).
  virtual void Write(const Picture& picture, const std::vector<int16_t>& samples) = 0;

  // Completes the output and gives it its final name. Call once, last.
  virtual void Finish() = 0;
};

}  // namespace krv::host
