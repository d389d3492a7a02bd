#include "studio/player_clock.h"

#include <algorithm>
#include <cmath>

namespace krv::studio {

namespace {
constexpr double kShare = 0.1;  // of a difference worked off at a time
}

double PlayerClock::Unlocked(double now) const {
  if (!playing_) return anchor_position_;
  const double position = anchor_position_ + std::max(0.0, now - anchor_time_);
  return loop_ ? std::fmod(position, length_) : std::min(position, length_);
}

void PlayerClock::Anchor(double position, double now) {
  anchor_position_ = std::clamp(position, 0.0, length_);
  anchor_time_ = now;
}

void PlayerClock::Play(double now) {
  const std::lock_guard lock(mutex_);
  const double position = Unlocked(now);
  Anchor(position >= length_ ? 0 : position, now);
  playing_ = true;
}

void PlayerClock::Pause(double now) {
  const std::lock_guard lock(mutex_);
  Anchor(Unlocked(now), now);
  playing_ = false;
}

void PlayerClock::Seek(double position, double now) {
  const std::lock_guard lock(mutex_);
  Anchor(position, now);
}

void PlayerClock::SetLoop(bool loop, double now) {
  const std::lock_guard lock(mutex_);
  Anchor(Unlocked(now), now);
  loop_ = loop;
}

bool PlayerClock::loop() const {
  const std::lock_guard lock(mutex_);
  return loop_;
}

bool PlayerClock::Playing(double now) const {
  const std::lock_guard lock(mutex_);
  return playing_ && (loop_ || Unlocked(now) < length_);
}

double PlayerClock::Position(double now) const {
  const std::lock_guard lock(mutex_);
  return Unlocked(now);
}

void PlayerClock::Follow(double position, double now) {
  const std::lock_guard lock(mutex_);
  if (!playing_) return;
  const double mine = Unlocked(now);
  const double difference = position - mine;
  if (std::abs(difference) > kJump) return;
  const double moved = mine + kShare * difference;
  if (moved >= 0 && moved < length_) Anchor(moved, now);
}

}  // namespace krv::studio
