#include "media/audio_timeline.h"

namespace krv::host {

int64_t FirstSampleOfFrame(int64_t frame, FrameRate rate, int sample_rate) {
  // Split into whole periods of `numerator` frames, so that no product leaves 64 bits.
  const int64_t periods = frame / rate.numerator;
  const int64_t rest = frame % rate.numerator;
  const int64_t samples_per_period = sample_rate * rate.denominator;
  return periods * samples_per_period + rest * samples_per_period / rate.numerator;
}

SampleSpan SamplesOfFrame(int64_t frame, FrameRate rate, int sample_rate) {
  const int64_t first = FirstSampleOfFrame(frame, rate, sample_rate);
  return {first, FirstSampleOfFrame(frame + 1, rate, sample_rate) - first};
}

int64_t FramesForSamples(int64_t samples, FrameRate rate, int sample_rate) {
  const int64_t samples_per_period = sample_rate * rate.denominator;
  const int64_t periods = samples / samples_per_period;
  const int64_t rest = samples % samples_per_period;
  // The first frame that begins at or after sample `samples`.
  return periods * rate.numerator +
         (rest * rate.numerator + samples_per_period - 1) / samples_per_period;
}

}  // namespace krv::host
