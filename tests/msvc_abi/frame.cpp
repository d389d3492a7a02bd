#include "frame.h"

#include "c_library.h"
#include "win32.h"

namespace abi {

Frame::Frame(int32_t width, int32_t height, FrameForm form, int32_t padding)
    : description_{kPixel8, form, width, height, width * int32_t{sizeof(Color)} + padding} {
  if (form == kOnGpu) {
    glGenTextures(1, &texture_);
    Write(nullptr);
    return;
  }
  const size_t size = static_cast<size_t>(description_.stride) * static_cast<size_t>(height);
  pixels_ = static_cast<uint8_t*>(malloc(size));
  memset(pixels_, kPaddingByte, size);
}

Frame::~Frame() {
  if (texture_ != 0) glDeleteTextures(1, &texture_);
  free(pixels_);
}

int32_t Frame::Describe(FrameDescription* out) {
  *out = description_;
  return kOk;
}

void* Frame::GetPixels() { return pixels_; }

int32_t Frame::ReadPixels(void* destination, int32_t destination_stride) {
  if (texture_ != 0) {
    glBindTexture(kGlTexture2d, texture_);
    glPixelStorei(kGlPackRowLength, destination_stride / int32_t{sizeof(Color)});
    glGetTexImage(kGlTexture2d, 0, kGlBgra, kGlUnsignedByte, destination);
    glPixelStorei(kGlPackRowLength, 0);
    glBindTexture(kGlTexture2d, 0);
    return kOk;
  }
  for (int32_t y = 0; y < description_.height; ++y) {
    memcpy(static_cast<uint8_t*>(destination) + y * destination_stride,
           pixels_ + y * description_.stride, static_cast<size_t>(row_bytes()));
  }
  return kOk;
}

void Frame::Write(const Color* picture) {
  if (texture_ != 0) {
    glBindTexture(kGlTexture2d, texture_);
    glTexParameteri(kGlTexture2d, kGlTextureMinFilter, kGlLinear);
    glTexParameteri(kGlTexture2d, kGlTextureMagFilter, kGlLinear);
    glTexParameteri(kGlTexture2d, kGlTextureWrapS, kGlMirroredRepeat);
    glTexParameteri(kGlTexture2d, kGlTextureWrapT, kGlMirroredRepeat);
    glTexImage2D(kGlTexture2d, 0, kGlRgba8, description_.width, description_.height, 0, kGlBgra,
                 kGlUnsignedByte, picture);
    glBindTexture(kGlTexture2d, 0);
    return;
  }
  for (int32_t y = 0; y < description_.height; ++y) {
    memcpy(pixels_ + y * description_.stride, picture + y * description_.width,
           static_cast<size_t>(row_bytes()));
  }
}

void Frame::Read(Color* picture) { ReadPixels(picture, row_bytes()); }

bool Frame::PaddingIsIntact() const {
  if (pixels_ == nullptr) return true;
  for (int32_t y = 0; y < description_.height; ++y) {
    for (int32_t x = row_bytes(); x < description_.stride; ++x) {
      if (pixels_[y * description_.stride + x] != kPaddingByte) return false;
    }
  }
  return true;
}

}  // namespace abi
