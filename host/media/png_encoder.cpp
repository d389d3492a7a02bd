#include "media/png_encoder.h"

#include <fstream>

#include "media/media_error.h"
#include "platform/file_system.h"
#include "utf8_path.h"

extern "C" {
#include <libavcodec/avcodec.h>
}

namespace krv::host {

void PngEncoder::Open(const Picture& picture) {
  if (codec_ != nullptr && codec_->width == picture.width() && codec_->height == picture.height()) {
    return;
  }
  codec_ = MakeEncoder("png");
  codec_->width = picture.width();
  codec_->height = picture.height();
  codec_->pix_fmt = AV_PIX_FMT_RGBA;
  codec_->time_base = {1, 1};
  codec_->thread_count = 1;  // more threads would only put pictures off
  CheckAv(avcodec_open2(codec_.get(), codec_->codec, nullptr), "png");
  converter_.emplace(picture.width(), picture.height(), AV_PIX_FMT_RGBA);
}

void PngEncoder::Write(const Picture& picture, const std::filesystem::path& path) {
  Open(picture);
  std::ofstream file(platform::OpenablePath(path), std::ios::binary);
  Encode(codec_.get(), converter_->Convert(picture).get(), [&file](AVPacket* packet) {
    file.write(reinterpret_cast<const char*>(packet->data), packet->size);
  });
  file.close();
  if (!file) throw MediaError(Utf8(path) + ": cannot be written");
}

}  // namespace krv::host
