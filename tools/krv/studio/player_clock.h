// Where the player is.
#pragma once

#include <mutex>

namespace krv::studio {

// Times are in seconds: `now` on any clock that runs steadily, positions from the clip's begin. Any
// thread.
class PlayerClock {
 public:
  // `length` of the clip, above 0.
  explicit PlayerClock(double length) : length_(length) {}

  double length() const { return length_; }

  // From the begin again when the clip is at its end.
  void Play(double now);
  void Pause(double now);
  void Seek(double position, double now);
  void SetLoop(bool loop, double now);

  bool loop() const;
  // False at the end of a clip that is not looped, too.
  bool Playing(double now) const;
  // From 0 up to `length`, which only a clip reaches that is not looped.
  double Position(double now) const;

  // Takes a device's word for the position. Small differences are worked off bit by bit, so that
  // pictures do not stutter; larger ones than kJump are the device's to follow.
  void Follow(double position, double now);
  static constexpr double kJump = 0.08;

 private:
  double Unlocked(double now) const;  // Position, without the lock
  void Anchor(double position, double now);

  const double length_;
  mutable std::mutex mutex_;
  bool playing_ = false;
  bool loop_ = true;
  double anchor_position_ = 0;
  double anchor_time_ = 0;
};

}  // namespace krv::studio
