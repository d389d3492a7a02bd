// How a video's frames must be turned for display: cameras store them as the sensor lay.
#pragma once

#include "media/picture.h"

struct AVStream;

namespace krv::host {

// A stored pixel (x, y) belongs at (x * xx + y * yx, x * xy + y * yy), moved back into the picture.
// Each part is -1, 0 or 1: the eight quarter turns and mirrors.
struct Orientation {
  int xx = 1;
  int xy = 0;
  int yx = 0;
  int yy = 1;

  bool SwapsSides() const { return xx == 0; }
  bool operator==(const Orientation&) const = default;
};

// The display matrix of the stream; as stored when it has none or one of another angle.
Orientation OrientationOf(const AVStream& stream);

// Writes `source`, turned, into `destination`, whose size is set.
void OrientPicture(const Picture& source, const Orientation& orientation, Picture* destination);

}  // namespace krv::host
