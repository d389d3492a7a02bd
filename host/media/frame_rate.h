// Frame rates as exact ratios.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace krv::host {

// Frames per second; both parts from 1 to kMaxPart.
struct FrameRate {
  static constexpr int64_t kMaxPart = 1'000'000;

  int64_t numerator = 30;
  int64_t denominator = 1;

  double PerSecond() const {
    return static_cast<double>(numerator) / static_cast<double>(denominator);
  }
  bool operator==(const FrameRate&) const = default;
};

// Reads "30", "30000/1001" or a decimal such as "12.5", with at most three decimals. 23.976, 29.97,
// 47.952, 59.94 and 119.88 mean the television rates with a denominator of 1001. Nothing for other
// texts and for rates outside 1 to 1000.
std::optional<FrameRate> ParseFrameRate(std::string_view text);

}  // namespace krv::host
