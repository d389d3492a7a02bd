#include "keyframes/track.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>
#include <utility>

namespace krv::tool {
namespace {

constexpr double kSameFrame = 1e-6;  // frames

bool IsOfKind(const host::HostValue& value, ParameterKind kind) {
  switch (kind) {
    case kKindInt:
    case kKindColor:
      return std::holds_alternative<int32_t>(value);
    case kKindFloat:
      return std::holds_alternative<float>(value);
    case kKindBool:
      return std::holds_alternative<bool>(value);
    default:
      return std::holds_alternative<std::string>(value);
  }
}

}  // namespace

double KeyTime::InFrames(const host::FrameRate& rate) const {
  if (unit == Unit::kFrames) return amount;
  const double frames =
      amount * static_cast<double>(rate.numerator) / static_cast<double>(rate.denominator);
  const double whole = std::round(frames);
  return std::abs(frames - whole) < kSameFrame ? whole : frames;
}

std::optional<size_t> FirstKeyOutOfOrder(const std::vector<Key>& keys,
                                         const host::FrameRate& rate) {
  const auto later =
      std::adjacent_find(keys.begin(), keys.end(), [&rate](const Key& one, const Key& next) {
        return next.at.InFrames(rate) < one.at.InFrames(rate);
      });
  if (later == keys.end()) return std::nullopt;
  return static_cast<size_t>(later - keys.begin()) + 1;
}

Track::Track(ParameterKind kind, std::vector<Key> keys, const host::FrameRate& rate)
    : kind_(kind), keys_(std::move(keys)) {
  if (keys_.empty()) throw std::invalid_argument("a track without keys");
  if (FirstKeyOutOfOrder(keys_, rate)) throw std::invalid_argument("keys that go back in time");
  for (const Key& key : keys_) {
    if (!IsOfKind(key.value, kind)) throw std::invalid_argument("a key of another kind");
    frames_.push_back(key.at.InFrames(rate));
    if (kind == kKindText)
      gradients_.push_back(ParseGradientStops(std::get<std::string>(key.value)));
  }
}

host::HostValue Track::ValueAt(double frame) const {
  const auto after = std::upper_bound(frames_.begin(), frames_.end(), frame);
  if (after == frames_.begin()) return keys_.front().value;
  if (after == frames_.end()) return keys_.back().value;
  const auto next = static_cast<size_t>(after - frames_.begin());
  const size_t from = next - 1;
  const double part = (frame - frames_[from]) / (frames_[next] - frames_[from]);
  return Mix(from, ShareOfNext(keys_[from].to_next, part));
}

host::HostValue Track::Mix(size_t from, double share) const {
  const host::HostValue& start = keys_[from].value;
  const host::HostValue& end = keys_[from + 1].value;
  switch (kind_) {
    case kKindInt:
      return static_cast<int32_t>(
          std::lround(MixNumbers(std::get<int32_t>(start), std::get<int32_t>(end), share)));
    case kKindFloat:
      return static_cast<float>(MixNumbers(std::get<float>(start), std::get<float>(end), share));
    case kKindColor:
      return static_cast<int32_t>(MixColours(static_cast<uint32_t>(std::get<int32_t>(start)),
                                             static_cast<uint32_t>(std::get<int32_t>(end)), share));
    case kKindText:
      if (share == 0 || !gradients_[from] || !gradients_[from + 1]) return start;
      return GradientText(MixGradients(*gradients_[from], *gradients_[from + 1], share));
    default:
      return start;
  }
}

}  // namespace krv::tool
