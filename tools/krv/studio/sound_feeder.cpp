#include "studio/sound_feeder.h"

#include <algorithm>
#include <cmath>

namespace krv::studio {

void SoundFeeder::Fill(int16_t* out, int64_t count, double now) {
  const int channels = track_->format.channels;
  std::fill(out, out + count * channels, int16_t{0});
  if (!clock_->Playing(now)) return;
  const double rate = track_->format.sample_rate;
  const double latency = static_cast<double>(count) / rate;
  const double heard = static_cast<double>(next_) / rate - latency;
  const double position = clock_->Position(now);
  if (std::abs(heard - position) > PlayerClock::kJump) {
    next_ = std::llround((position + latency) * rate);
  } else {
    clock_->Follow(heard, now);
  }
  const int64_t end = std::max<int64_t>(1, std::llround(clock_->length() * rate));
  for (int64_t done = 0; done < count;) {
    if (next_ >= end) {
      if (!clock_->loop()) break;
      next_ %= end;
    }
    const int64_t part = std::min(count - done, end - next_);
    const int64_t there = std::clamp<int64_t>(track_->Length() - next_, 0, part);
    if (!muted()) {
      std::copy_n(track_->samples.begin() + std::min(next_, track_->Length()) * channels,
                  there * channels, out + done * channels);
    }
    next_ += part;
    done += part;
  }
}

}  // namespace krv::studio
