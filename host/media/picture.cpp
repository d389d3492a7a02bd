#include "media/picture.h"

#include <cstring>
#include <new>

extern "C" {
#include <libavutil/mem.h>
}

namespace krv::host {
namespace {

constexpr int kAlignment = 64;  // bytes
constexpr size_t kSlack = 64;   // bytes after the last row that vector code may touch

}  // namespace

void Picture::Free::operator()(uint8_t* pixels) const { av_free(pixels); }

void Picture::Resize(int width, int height) {
  if (width == width_ && height == height_) return;
  const int stride = (width * 4 + kAlignment - 1) / kAlignment * kAlignment;
  const size_t size = static_cast<size_t>(stride) * static_cast<size_t>(height) + kSlack;
  pixels_.reset(static_cast<uint8_t*>(av_malloc(size)));
  if (pixels_ == nullptr) throw std::bad_alloc();
  width_ = width;
  height_ = height;
  stride_ = stride;
}

void Picture::Fill(uint8_t blue, uint8_t green, uint8_t red, uint8_t alpha) {
  const uint8_t pixel[4] = {blue, green, red, alpha};
  for (int y = 0; y < height_; ++y) {
    for (int x = 0; x < width_; ++x) std::memcpy(Pixel(x, y), pixel, 4);
  }
}

}  // namespace krv::host
