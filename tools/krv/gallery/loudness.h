// Where a clip's sound is worth looking at.
#pragma once

#include <cstdint>
#include <vector>

#include "media/audio_reader.h"
#include "media/frame_rate.h"

namespace krv::tool {

// The mean square of each frame's samples, full scale being 1, until the sound ends or there are
// `most` frames. Reads `sound` from its start. Throws MediaError.
std::vector<double> FrameLoudness(host::AudioReader* sound, host::FrameRate rate, int64_t most);

// The first of the `length` frames in a row with the most sound together; 0 when there are no more
// frames than that.
int64_t LoudestRun(const std::vector<double>& loudness, int64_t length);

}  // namespace krv::tool
