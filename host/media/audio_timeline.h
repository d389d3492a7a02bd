// Which audio samples belong to which frame.
#pragma once

#include <cstdint>

#include "media/frame_rate.h"

namespace krv::host {

// Samples per channel, counted from the start of the first frame.
struct SampleSpan {
  int64_t first = 0;
  int64_t count = 0;
};

// The sample under way when frame `frame` begins: floor(frame * sample_rate / rate), exact for any
// frame from 0 to 2^40 and any sample rate (Hz) up to 2^20.
int64_t FirstSampleOfFrame(int64_t frame, FrameRate rate, int sample_rate);

// The samples of frame `frame`. The spans of consecutive frames touch: no sample is lost or given
// twice.
SampleSpan SamplesOfFrame(int64_t frame, FrameRate rate, int sample_rate);

// How many frames it takes to cover `samples` samples.
int64_t FramesForSamples(int64_t samples, FrameRate rate, int sample_rate);

}  // namespace krv::host
