// The audio of one frame.
#pragma once

#include <cstdint>

#include "krv/effect_context.h"

namespace krv::host {

// The audio that belongs to a frame.
struct FrameAudio {
  const int16_t* samples = nullptr;  // interleaved; null for silence
  int32_t sample_frames = 0;         // samples per channel
  uint32_t channels = 0;
  int32_t sample_rate = 0;   // Hz
  int64_t start_sample = 0;  // on the timeline, in samples per channel
};

// Samples that belong to somebody else and outlive the block.
class BorrowedAudioBlock final : public AudioBlock {
 public:
  explicit BorrowedAudioBlock(const FrameAudio& audio) : audio_(audio) {}

  uint32_t GetChannelCount() override { return audio_.channels; }
  int32_t GetSampleFrames() override { return audio_.sample_frames; }
  int32_t GetSampleRate() override { return audio_.sample_rate; }
  int64_t GetStartSample() override { return audio_.start_sample; }
  const int16_t* GetSamples() override { return audio_.samples; }

 private:
  FrameAudio audio_;
};

}  // namespace krv::host
