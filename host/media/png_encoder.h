// Pictures as PNG files.
#pragma once

#include <filesystem>
#include <optional>

#include "media/encoder.h"
#include "media/picture_converter.h"

namespace krv::host {

// 8-bit RGBA with straight alpha; colours and alpha are kept to the bit.
class PngEncoder {
 public:
  // Writes one file. Throws MediaError.
  void Write(const Picture& picture, const std::filesystem::path& path);

 private:
  void Open(const Picture& picture);

  CodecPtr codec_;  // for pictures of its size
  std::optional<PictureConverter> converter_;
};

}  // namespace krv::host
