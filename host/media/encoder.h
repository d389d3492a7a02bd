// One encoder of FFmpeg's: frames in, packets out.
#pragma once

#include <functional>
#include <string>

#include "media/av_ptr.h"

struct AVCodecContext;

namespace krv::host {

// Takes a packet timed in the encoder's time base; the packet is the taker's for the call.
using PacketTaker = std::function<void(AVPacket* packet)>;

// An encoder context by FFmpeg's name, ready to be set up. Throws MediaError when this build of
// FFmpeg does not have it.
CodecPtr MakeEncoder(const std::string& name);

// Gives the encoder a frame, or null to end, and hands on the packets that are ready. Throws
// MediaError.
void Encode(AVCodecContext* codec, const AVFrame* frame, const PacketTaker& take);

}  // namespace krv::host
