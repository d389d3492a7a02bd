#include "gallery/loudness.h"

#include "media/audio_timeline.h"

namespace krv::tool {
namespace {

double MeanSquare(const std::vector<int16_t>& samples) {
  double sum = 0;
  for (const int16_t sample : samples) {
    const double value = sample / 32768.0;
    sum += value * value;
  }
  return samples.empty() ? 0 : sum / static_cast<double>(samples.size());
}

}  // namespace

std::vector<double> FrameLoudness(host::AudioReader* sound, host::FrameRate rate, int64_t most) {
  std::vector<double> loudness;
  std::vector<int16_t> samples;
  for (int64_t frame = 0; frame < most; ++frame) {
    const host::SampleSpan span = host::SamplesOfFrame(frame, rate, sound->sample_rate());
    if (sound->Read(span.first, span.count, &samples) == 0) break;
    loudness.push_back(MeanSquare(samples));
  }
  return loudness;
}

int64_t LoudestRun(const std::vector<double>& loudness, int64_t length) {
  const auto count = static_cast<int64_t>(loudness.size());
  double sum = 0;
  double best_sum = -1;
  int64_t best = 0;
  for (int64_t end = 0; end < count; ++end) {
    sum += loudness[static_cast<size_t>(end)];
    const int64_t first = end - length + 1;
    if (first < 0) continue;
    if (sum > best_sum) {
      best_sum = sum;
      best = first;
    }
    sum -= loudness[static_cast<size_t>(first)];
  }
  return best;
}

}  // namespace krv::tool
