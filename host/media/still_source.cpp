#include "media/still_source.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "media/frame_converter.h"
#include "media/media_error.h"
#include "media/stream_decoder.h"

extern "C" {
#include <libavutil/frame.h>
}

namespace krv::host {
namespace {

// The part of `source` from (left, top), as large as `out` is.
void Crop(const Picture& source, int left, int top, Picture* out) {
  for (int y = 0; y < out->height(); ++y) {
    std::memcpy(out->Row(y), source.Pixel(left, top + y), static_cast<size_t>(out->width()) * 4);
  }
}

}  // namespace

Picture LoadPicture(const std::filesystem::path& path, std::optional<PictureSize> cover) {
  StreamDecoder decoder(path, StreamKind::kVideo);
  const AVFrame* frame = decoder.Next();
  if (frame == nullptr) {
    throw MediaError(decoder.file().name() + ": not a picture that can be decoded");
  }
  PictureSize scaled{frame->width, frame->height};
  const PictureSize size = cover.value_or(scaled);
  const double scale = std::max(size.width / static_cast<double>(frame->width),
                                size.height / static_cast<double>(frame->height));
  scaled.width = std::max(size.width, static_cast<int>(std::lround(frame->width * scale)));
  scaled.height = std::max(size.height, static_cast<int>(std::lround(frame->height * scale)));

  Picture whole;
  FrameConverter(scaled.width, scaled.height, {}).Convert(*frame, &whole);
  Picture picture(size.width, size.height);
  Crop(whole, (scaled.width - size.width) / 2, (scaled.height - size.height) / 2, &picture);
  return picture;
}

void CopyPicture(const Picture& from, Picture* to) {
  to->Resize(from.width(), from.height());
  Crop(from, 0, 0, to);
}

StillSource::StillSource(Picture picture, FrameRate rate) : picture_(std::move(picture)) {
  format_.width = picture_.width();
  format_.height = picture_.height();
  format_.rate = rate;
}

bool StillSource::Read(Picture* out) {
  if (out != nullptr) CopyPicture(picture_, out);
  return true;
}

}  // namespace krv::host
