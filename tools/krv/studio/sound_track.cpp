#include "studio/sound_track.h"

#include <algorithm>
#include <cstdlib>

namespace krv::studio {

void SoundTrack::Read(int64_t first, int64_t count, std::vector<int16_t>* out) const {
  const int64_t channels = format.channels;
  out->assign(static_cast<size_t>(std::max<int64_t>(0, count * channels)), 0);
  const int64_t begin = std::clamp<int64_t>(first, 0, Length());
  const int64_t end = std::clamp<int64_t>(first + count, begin, Length());
  std::copy(samples.begin() + begin * channels, samples.begin() + end * channels,
            out->begin() + (begin - std::min(first, begin)) * channels);
}

std::vector<float> SoundTrack::Peaks(size_t columns, int64_t length) const {
  std::vector<float> peaks(columns);
  const auto parts = static_cast<int64_t>(columns);
  for (int64_t column = 0; column < parts; ++column) {
    const int64_t begin = std::min(column * length / parts, Length()) * format.channels;
    const int64_t end = std::min((column + 1) * length / parts, Length()) * format.channels;
    int most = 0;
    for (int64_t i = begin; i < end; ++i) {
      most = std::max(most, std::abs(int{samples[static_cast<size_t>(i)]}));
    }
    peaks[static_cast<size_t>(column)] = static_cast<float>(most) / 32768.0f;
  }
  return peaks;
}

}  // namespace krv::studio
