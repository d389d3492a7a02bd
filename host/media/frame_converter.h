// Decoded video frames as pictures.
#pragma once

#include <optional>

#include "media/av_ptr.h"
#include "media/orientation.h"
#include "media/picture.h"
#include "media/yuv420_converter.h"

namespace krv::host {

// Converts frames of any pixel format to one size and orientation. Colours follow the frame's
// matrix and range; a frame that does not name its matrix is taken as BT.709 when it is more than
// 576 rows high or 1024 columns wide, else as BT.601. Alpha is kept; frames without it are opaque.
class FrameConverter {
 public:
  // The size in pixels before `orientation` is applied.
  FrameConverter(int width, int height, Orientation orientation);

  // Throws MediaError when there is no conversion.
  void Convert(const AVFrame& frame, Picture* out);

 private:
  struct Source {
    int width = 0;
    int height = 0;
    int format = -1;
    int matrix = -1;
    int full_range = -1;
    bool operator==(const Source&) const = default;
  };

  void Prepare(const AVFrame& frame);
  void MakeScaler(const Source& source);

  int width_;
  int height_;
  Orientation orientation_;
  Source source_;  // what the converter was made for
  // One of the two.
  ScalerPtr scaler_;
  std::optional<Yuv420Converter> yuv420_;
  Picture stored_;  // the picture before it is turned
};

}  // namespace krv::host
