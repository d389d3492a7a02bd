// The sound of a clip, all of it in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "media/audio_encoder.h"

namespace krv::studio {

// 16-bit samples, interleaved.
struct SoundTrack {
  host::AudioFormat format;
  std::vector<int16_t> samples;

  // Samples per channel.
  int64_t Length() const {
    return static_cast<int64_t>(samples.size()) / (format.channels > 0 ? format.channels : 1);
  }

  // The samples from position `first` on, `count` per channel; silence outside.
  void Read(int64_t first, int64_t count, std::vector<int16_t>* out) const;

  // The greatest magnitude in each of `columns` equal parts of `length` samples per channel, 0
  // to 1.
  std::vector<float> Peaks(size_t columns, int64_t length) const;
};

}  // namespace krv::studio
