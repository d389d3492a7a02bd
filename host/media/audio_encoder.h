// 16-bit samples to compressed sound.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "media/encoder.h"

struct AVAudioFifo;

namespace krv::host {

struct AudioFormat {
  int sample_rate = 0;  // Hz
  int channels = 0;
  uint64_t channel_mask = 0;  // speakers as FFmpeg's AV_CH_* bits; 0 for the usual ones
};

class AudioEncoder {
 public:
  // Encodes at the samples' own rate, or at 48000 Hz where the encoder does not know it. Throws
  // MediaError.
  AudioEncoder(const std::string& encoder, const AudioFormat& format, bool global_header);
  ~AudioEncoder();
  AudioEncoder(const AudioEncoder&) = delete;
  AudioEncoder& operator=(const AudioEncoder&) = delete;

  const AVCodecContext& context() const { return *codec_; }

  // Encodes the next samples, interleaved. The first sample is at 0 of the encoder's time base.
  void Write(const std::vector<int16_t>& samples, const PacketTaker& take);

  void Finish(const PacketTaker& take);

 private:
  void OpenConverter(const AudioFormat& format);
  void Convert(const uint8_t* samples, int sample_frames);  // null to flush
  void EncodeFrame(int sample_frames, const PacketTaker& take);

  struct FreeFifo {
    void operator()(AVAudioFifo* fifo) const;
  };

  CodecPtr codec_;
  ResamplerPtr converter_;
  std::unique_ptr<AVAudioFifo, FreeFifo> fifo_;  // converted samples, short of an encoder's frame
  int channels_;
  int64_t next_ = 0;  // sample of the next encoder's frame
};

}  // namespace krv::host
