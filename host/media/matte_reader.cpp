#include "media/matte_reader.h"

#include <cstring>

#include "media/media_file.h"
#include "media/still_source.h"
#include "media/video_reader.h"

namespace krv::host {
namespace {

constexpr int kLeastPerson = 32;  // of 255

bool HasTransparency(const Picture& picture) {
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      if (picture.Pixel(x, y)[3] < 255) return true;
    }
  }
  return false;
}

// By the weights of BT.709.
int Luma(const uint8_t* pixel) { return (19 * pixel[0] + 183 * pixel[1] + 54 * pixel[2]) / 256; }

void TurnIntoMask(bool by_alpha, Picture* picture) {
  for (int y = 0; y < picture->height(); ++y) {
    for (int x = 0; x < picture->width(); ++x) {
      uint8_t* pixel = picture->Pixel(x, y);
      const int value = by_alpha ? pixel[3] : Luma(pixel);
      std::memset(pixel, value < kLeastPerson ? 0 : value, 4);
    }
  }
}

}  // namespace

MatteReader::MatteReader(const std::filesystem::path& path, int64_t first_frame) {
  if (ProbeMedia(path).still) {
    mask_ = LoadPicture(path, {});
  } else {
    pictures_ = std::make_unique<VideoReader>(path);
    pictures_->Read(&mask_);
  }
  by_alpha_ = HasTransparency(mask_);
  TurnIntoMask(by_alpha_, &mask_);
  if (pictures_ != nullptr) pictures_->SkipTo(first_frame);
}

void MatteReader::Read(Picture* out) {
  if (pictures_ != nullptr && pictures_->Read(&mask_)) TurnIntoMask(by_alpha_, &mask_);
  CopyPicture(mask_, out);
}

}  // namespace krv::host
