#include "host/media_probe.h"

#include "media/stream_decoder.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/pixdesc.h>
}

namespace krv::host {
namespace {

constexpr size_t kAdtsHeader = 7;  // bytes

}  // namespace

StreamFacts ProbeStream(const std::filesystem::path& path, StreamKind kind) {
  StreamDecoder decoder(path, kind);
  const AVStream& stream = decoder.stream();
  const AVCodecParameters& parameters = *stream.codecpar;
  StreamFacts facts;
  facts.codec = avcodec_get_name(parameters.codec_id);
  facts.container_seconds = static_cast<double>(decoder.file().format().duration) / AV_TIME_BASE;
  facts.width = parameters.width;
  facts.height = parameters.height;
  facts.frame_rate = av_q2d(stream.avg_frame_rate);
  const char* matrix = av_color_space_name(parameters.color_space);
  facts.colour_matrix = matrix == nullptr ? "" : matrix;
  facts.sample_rate = parameters.sample_rate;
  facts.channels = parameters.ch_layout.nb_channels;
  while (decoder.Next() != nullptr) ++facts.frames;
  return facts;
}

std::string AudioBytes(const std::filesystem::path& path) {
  MediaFile file(path, StreamKind::kAudio);
  const size_t skipped = path.extension() == ".aac" ? kAdtsHeader : 0;
  const PacketPtr packet = MakePacket();
  std::string bytes;
  while (file.Read(packet.get())) {
    bytes.append(reinterpret_cast<const char*>(packet->data), static_cast<size_t>(packet->size));
    bytes.erase(bytes.size() - static_cast<size_t>(packet->size), skipped);
  }
  return bytes;
}

}  // namespace krv::host
