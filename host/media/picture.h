// Pictures on their way from the decoder through the effect to the encoder.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace krv::host {

// An 8-bit picture: blue, green, red, alpha (straight), top row first. Movable, not copyable.
class Picture {
 public:
  Picture() = default;  // 0 x 0
  // Pixels undefined. std::bad_alloc when memory is short.
  Picture(int width, int height) { Resize(width, height); }

  // Pixels are undefined after a change of size.
  void Resize(int width, int height);

  // Sets every pixel.
  void Fill(uint8_t blue, uint8_t green, uint8_t red, uint8_t alpha);

  int width() const { return width_; }
  int height() const { return height_; }
  int stride() const { return stride_; }  // bytes from row to row, a multiple of 64

  uint8_t* Row(int y) { return pixels_.get() + static_cast<ptrdiff_t>(y) * stride_; }
  const uint8_t* Row(int y) const { return pixels_.get() + static_cast<ptrdiff_t>(y) * stride_; }

  // The four bytes of the pixel in column x of row y.
  uint8_t* Pixel(int x, int y) { return Row(y) + ptrdiff_t{4} * x; }
  const uint8_t* Pixel(int x, int y) const { return Row(y) + ptrdiff_t{4} * x; }

 private:
  struct Free {
    void operator()(uint8_t* pixels) const;
  };

  int width_ = 0;
  int height_ = 0;
  int stride_ = 0;
  std::unique_ptr<uint8_t, Free> pixels_;  // aligned to 64 bytes: FFmpeg's scaler wants that
};

}  // namespace krv::host
