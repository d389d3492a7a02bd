#include "bench/figures.h"

#include <algorithm>
#include <cmath>

#include "platform/process.h"

namespace krv::tool {
namespace {

// Between the two values of a sorted list around a place from 0 to 1.
double At(const std::vector<double>& sorted, double place) {
  const double index = place * static_cast<double>(sorted.size() - 1);
  const auto below = static_cast<size_t>(std::floor(index));
  const size_t above = std::min(below + 1, sorted.size() - 1);
  const double share = index - static_cast<double>(below);
  return sorted[below] + (sorted[above] - sorted[below]) * share;
}

}  // namespace

Spread SpreadOf(std::vector<double> values) {
  if (values.empty()) return {};
  std::sort(values.begin(), values.end());
  return {At(values, 0.25), At(values, 0.5), At(values, 0.75)};
}

Stopwatch::Stopwatch()
    : start_(std::chrono::steady_clock::now()), start_cpu_(host::platform::ProcessorSeconds()) {}

Cost Stopwatch::Elapsed() const {
  return {WallMs(), 1000 * (host::platform::ProcessorSeconds() - start_cpu_)};
}

double Stopwatch::WallMs() const {
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start_)
      .count();
}

}  // namespace krv::tool
