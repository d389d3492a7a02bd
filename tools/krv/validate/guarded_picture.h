// Pictures in the host's memory, with everything around them under guard.
#pragma once

#include <cstdint>
#include <vector>

#include "frame.h"

namespace krv::tool {

struct PictureShape {
  int32_t width = 64;
  int32_t height = 48;
  int32_t pixel_type = kPixel8;
  int32_t padding = 0;  // bytes between two rows

  int32_t RowBytes() const { return width * host::BytesPerPixel(pixel_type); }
  int32_t Stride() const { return RowBytes() + padding; }
  size_t BufferBytes() const { return static_cast<size_t>(Stride()) * static_cast<size_t>(height); }
};

// The rows of a picture without what lies between them.
using Rows = std::vector<uint8_t>;

// A picture whose surroundings hold a pattern that nobody may change: before the first row, between
// the rows and behind the last.
class GuardedPicture {
 public:
  explicit GuardedPicture(const PictureShape& shape);

  const PictureShape& shape() const { return shape_; }
  FrameDescription Description() const;
  uint8_t* pixels() { return buffer_.data() + kGuardBytes; }

  void FillRows(uint8_t byte);
  void SetRows(const Rows& rows);
  Rows TakeRows() const;
  bool RowsHold(uint8_t byte) const;
  bool GuardsAreWhole() const;

 private:
  static constexpr size_t kGuardBytes = 4096;
  static constexpr uint8_t kGuard = 0xD7;

  uint8_t* Row(int32_t y);
  const uint8_t* Row(int32_t y) const;

  PictureShape shape_;
  std::vector<uint8_t> buffer_;
};

// A picture with edges and colours; floats lie between 0 and 1. The same for the same shape.
Rows TestPattern(const PictureShape& shape);

// Whether every channel of a float picture is a number. True for other types.
bool IsFinite(const Rows& rows, int32_t pixel_type);

}  // namespace krv::tool
