// A picture for the window to draw.
#pragma once

#include <imgui.h>

#include "media/picture.h"
#include "studio/gl_functions.h"

namespace krv::studio {

// On the window's thread with its context current throughout.
class PictureTexture {
 public:
  explicit PictureTexture(const GlFunctions* gl) : gl_(gl) {}
  ~PictureTexture();
  PictureTexture(const PictureTexture&) = delete;
  PictureTexture& operator=(const PictureTexture&) = delete;

  void Upload(const host::Picture& picture);

  // Null before the first picture.
  ImTextureID id() const;

 private:
  const GlFunctions* gl_;
  GLuint texture_ = 0;
  int width_ = 0;
  int height_ = 0;
};

}  // namespace krv::studio
