// Owners for the objects of FFmpeg's libraries.
#pragma once

#include <memory>

struct AVCodecContext;
struct AVFormatContext;
struct AVFrame;
struct AVPacket;
struct SwrContext;
struct SwsContext;

namespace krv::host {

struct AvDeleter {
  void operator()(AVCodecContext* codec) const;
  void operator()(AVFrame* frame) const;
  void operator()(AVPacket* packet) const;
  void operator()(SwrContext* converter) const;
  void operator()(SwsContext* scaler) const;
};

struct AvInputDeleter {
  void operator()(AVFormatContext* input) const;
};

struct AvOutputDeleter {
  void operator()(AVFormatContext* output) const;  // closes the file, writes no trailer
};

using CodecPtr = std::unique_ptr<AVCodecContext, AvDeleter>;
using FramePtr = std::unique_ptr<AVFrame, AvDeleter>;
using PacketPtr = std::unique_ptr<AVPacket, AvDeleter>;
using ResamplerPtr = std::unique_ptr<SwrContext, AvDeleter>;
using ScalerPtr = std::unique_ptr<SwsContext, AvDeleter>;
using InputPtr = std::unique_ptr<AVFormatContext, AvInputDeleter>;
using OutputPtr = std::unique_ptr<AVFormatContext, AvOutputDeleter>;

// Empty ones. std::bad_alloc when memory is short.
FramePtr MakeFrame();
PacketPtr MakePacket();

}  // namespace krv::host
