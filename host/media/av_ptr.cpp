#include "media/av_ptr.h"

#include <new>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

namespace krv::host {

void AvDeleter::operator()(AVCodecContext* codec) const { avcodec_free_context(&codec); }
void AvDeleter::operator()(AVFrame* frame) const { av_frame_free(&frame); }
void AvDeleter::operator()(AVPacket* packet) const { av_packet_free(&packet); }
void AvDeleter::operator()(SwrContext* converter) const { swr_free(&converter); }
void AvDeleter::operator()(SwsContext* scaler) const { sws_freeContext(scaler); }

void AvInputDeleter::operator()(AVFormatContext* input) const { avformat_close_input(&input); }

void AvOutputDeleter::operator()(AVFormatContext* output) const {
  if (output->pb != nullptr) avio_closep(&output->pb);
  avformat_free_context(output);
}

FramePtr MakeFrame() {
  FramePtr frame(av_frame_alloc());
  if (frame == nullptr) throw std::bad_alloc();
  return frame;
}

PacketPtr MakePacket() {
  PacketPtr packet(av_packet_alloc());
  if (packet == nullptr) throw std::bad_alloc();
  return packet;
}

}  // namespace krv::host
