// Frames: pictures in the host's memory or on its GPU device.
#pragma once

#include <cstdint>

#include "krv/types.h"

namespace krv {

// Storage of one channel. A pixel is always four channels, in the order blue, green, red, alpha.
enum PixelType : int32_t {
  kPixel8 = 0,
  kPixel16 = 1,
  kPixelFloat = 2,
};

enum FrameForm : int32_t {
  kFrameInMemory = 0,
  kFrameOnGpu = 3,  // an OpenGL texture (GL_TEXTURE_2D)
};

// 20 bytes.
struct FrameDescription {
  int32_t pixel_type;  // PixelType
  int32_t form;        // FrameForm
  int32_t width;       // pixels
  int32_t height;      // pixels
  int32_t stride;      // bytes from one row to the next, at least width x 4 x channel bytes
};
static_assert(sizeof(FrameDescription) == 20);

// A picture that belongs to the host.
//
// Rows are stored top row first. The plug-in uploads and reads rows in memory order without
// flipping: the first row in memory is the top row of the picture and the row that OpenGL calls
// y = 0, so OpenGL's y axis runs down the picture. A texture of form kFrameOnGpu follows the same
// order. Colours are not converted; alpha is straight (not multiplied into the colours).
//
// Valid for the frame being processed. A texture must be complete without mip maps; filtered with
// GL_LINEAR and wrapped with GL_MIRRORED_REPEAT it gives the same picture as a frame in memory.
class HostFrame {
 public:
  // Slot 0 [any-thread]. Fills *out. 0 on success.
  virtual int32_t Describe(FrameDescription* out) = 0;

  // Slot 1 [any-thread]. The first byte of the first row; null for kFrameOnGpu and for a frame
  // without a buffer. The buffer holds height x stride bytes.
  virtual void* GetPixels() = 0;

  // Slot 2 [gl-thread]. Copies the picture, from the GPU if need be, row by row into
  // `destination`, whose rows are `destination_stride` bytes apart. 0 on success.
  virtual int32_t ReadPixels(void* destination, int32_t destination_stride) = 0;

 protected:
  ~HostFrame() = default;
};

}  // namespace krv
