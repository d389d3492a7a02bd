// The minimal effect's pictures: four channels from 0 to 1 for each pixel.
#pragma once

#include <vector>

#include "krv/frame.h"

namespace krv::test {

struct Picture {
  int width = 0;
  int height = 0;
  std::vector<float> channels;  // blue, green, red, alpha
};

// Bytes of one channel, or 0 for a type that there is not.
int ChannelBytes(int pixel_type);

// False for a frame without size, buffer or a type that there is.
bool Read(HostFrame& frame, Picture* picture);

// The picture as the frame's rows without padding, scaled to its size.
std::vector<unsigned char> ToRows(const Picture& picture, const FrameDescription& description);

}  // namespace krv::test
