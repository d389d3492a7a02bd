#include "media/media_file.h"

#include <string_view>

#include "media/media_error.h"
#include "media/media_url.h"
#include "utf8_path.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace krv::host {
namespace {

InputPtr OpenInput(const std::filesystem::path& path) {
  AVFormatContext* format = nullptr;
  const std::string name = Utf8(path);
  CheckAv(avformat_open_input(&format, MediaUrl(path).c_str(), nullptr, nullptr), name);
  InputPtr input(format);
  CheckAv(avformat_find_stream_info(format, nullptr), name);
  return input;
}

bool IsOfKind(const AVStream& stream, StreamKind kind) {
  if ((stream.disposition & AV_DISPOSITION_ATTACHED_PIC) != 0) return false;
  return stream.codecpar->codec_type ==
         (kind == StreamKind::kVideo ? AVMEDIA_TYPE_VIDEO : AVMEDIA_TYPE_AUDIO);
}

AVStream* FindStream(const AVFormatContext& format, StreamKind kind) {
  for (unsigned i = 0; i < format.nb_streams; ++i) {
    if (IsOfKind(*format.streams[i], kind)) return format.streams[i];
  }
  return nullptr;
}

// FFmpeg reads pictures through "image2" and through a "..._pipe" demultiplexer per picture type.
bool IsStill(const AVFormatContext& format) {
  const std::string_view name = format.iformat->name;
  return name == "image2" || name.ends_with("_pipe");
}

}  // namespace

MediaFile::MediaFile(const std::filesystem::path& path, StreamKind kind)
    : name_(Utf8(path)), format_(OpenInput(path)), stream_(FindStream(*format_, kind)) {
  if (stream_ == nullptr) {
    throw MediaError(name_ + ": no " + (kind == StreamKind::kVideo ? "video" : "audio") +
                     " stream");
  }
  for (unsigned i = 0; i < format_->nb_streams; ++i) {
    if (format_->streams[i] != stream_) format_->streams[i]->discard = AVDISCARD_ALL;
  }
}

bool MediaFile::Read(AVPacket* packet) {
  do {
    av_packet_unref(packet);
    const int code = av_read_frame(format_.get(), packet);
    if (code == AVERROR_EOF) return false;
    CheckAv(code, name_);
  } while (packet->stream_index != stream_->index);
  return true;
}

MediaContents ProbeMedia(const std::filesystem::path& path) {
  const InputPtr format = OpenInput(path);
  return {FindStream(*format, StreamKind::kVideo) != nullptr,
          FindStream(*format, StreamKind::kAudio) != nullptr, IsStill(*format)};
}

}  // namespace krv::host
