// Hands a sound device the samples to play.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

#include "studio/player_clock.h"
#include "studio/sound_track.h"

namespace krv::studio {

// Where the player jumps, the sound follows the clock; as long as it plays on, the clock follows
// the sound. Fill on the device's thread alone, the rest on any.
class SoundFeeder {
 public:
  // Both outlive the feeder.
  SoundFeeder(const SoundTrack* track, PlayerClock* clock) : track_(track), clock_(clock) {}

  void SetMuted(bool muted) { muted_.store(muted); }
  bool muted() const { return muted_.load(); }

  // Writes `count` samples per channel, which are heard when the device has played the `count` that
  // it got before.
  void Fill(int16_t* out, int64_t count, double now);

 private:
  const SoundTrack* track_;
  PlayerClock* clock_;
  std::atomic<bool> muted_{false};
  int64_t next_ = 0;  // sample on the timeline
};

}  // namespace krv::studio
