#include "studio/picture_texture.h"

#include <cstdint>

namespace krv::studio {

PictureTexture::~PictureTexture() {
  if (texture_ != 0) gl_->DeleteTextures(1, &texture_);
}

void PictureTexture::Upload(const host::Picture& picture) {
  if (picture.width() == 0) return;
  if (texture_ == 0) {
    gl_->GenTextures(1, &texture_);
    gl_->BindTexture(GL_TEXTURE_2D, texture_);
    for (const GLenum side : {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T}) {
      gl_->TexParameteri(GL_TEXTURE_2D, side, GL_CLAMP_TO_EDGE);
    }
    for (const GLenum filter : {GL_TEXTURE_MIN_FILTER, GL_TEXTURE_MAG_FILTER}) {
      gl_->TexParameteri(GL_TEXTURE_2D, filter, GL_LINEAR);
    }
  }
  gl_->BindTexture(GL_TEXTURE_2D, texture_);
  if (picture.width() != width_ || picture.height() != height_) {
    width_ = picture.width();
    height_ = picture.height();
    // Without alpha: what is under a transparent place is not the window's.
    gl_->TexImage2D(GL_TEXTURE_2D, 0, GL_RGB8, width_, height_, 0, GL_BGRA, GL_UNSIGNED_BYTE,
                    nullptr);
  }
  gl_->PixelStorei(GL_UNPACK_ROW_LENGTH, picture.stride() / 4);
  gl_->TexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, width_, height_, GL_BGRA, GL_UNSIGNED_BYTE,
                     picture.Row(0));
  gl_->PixelStorei(GL_UNPACK_ROW_LENGTH, 0);
}

ImTextureID PictureTexture::id() const {
  return reinterpret_cast<ImTextureID>(static_cast<uintptr_t>(texture_));
}

}  // namespace krv::studio
