#include "media/orientation.h"

#include <cstdlib>
#include <cstring>

extern "C" {
#include <libavcodec/packet.h>
#include <libavformat/avformat.h>
}

namespace krv::host {
namespace {

int Sign(int32_t value) { return value > 0 ? 1 : value < 0 ? -1 : 0; }

}  // namespace

Orientation OrientationOf(const AVStream& stream) {
  size_t size = 0;
  const uint8_t* data = av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, &size);
  int32_t matrix[9] = {};
  if (data == nullptr || size < sizeof matrix) return {};
  std::memcpy(matrix, data, sizeof matrix);
  const Orientation turned{Sign(matrix[0]), Sign(matrix[1]), Sign(matrix[3]), Sign(matrix[4])};
  const bool straight = turned.xx * turned.yy != 0 && turned.xy == 0 && turned.yx == 0;
  const bool on_its_side = turned.xy * turned.yx != 0 && turned.xx == 0 && turned.yy == 0;
  return straight || on_its_side ? turned : Orientation{};
}

void OrientPicture(const Picture& source, const Orientation& orientation, Picture* destination) {
  const int width = orientation.SwapsSides() ? source.height() : source.width();
  const int height = orientation.SwapsSides() ? source.width() : source.height();
  destination->Resize(width, height);
  const int first_x = orientation.xx < 0 || orientation.yx < 0 ? width - 1 : 0;
  const int first_y = orientation.xy < 0 || orientation.yy < 0 ? height - 1 : 0;
  // Bytes between the places of two pixels that are neighbours in a stored row.
  const ptrdiff_t step =
      ptrdiff_t{orientation.xx} * 4 + ptrdiff_t{orientation.xy} * destination->stride();
  for (int y = 0; y < source.height(); ++y) {
    const uint8_t* from = source.Row(y);
    uint8_t* to = destination->Pixel(first_x + y * orientation.yx, first_y + y * orientation.yy);
    for (int x = 0; x < source.width(); ++x, from += 4, to += step) std::memcpy(to, from, 4);
  }
}

}  // namespace krv::host
