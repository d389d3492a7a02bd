// What measuring gives: costs, and what is usual among many.
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace krv::tool {

// The middle of many values and the two that a quarter of them lie below and above. Of one value,
// that value; all 0 without any.
struct Spread {
  double lower = 0;
  double median = 0;
  double upper = 0;
};

Spread SpreadOf(std::vector<double> values);

struct NamedSpread {
  std::string name;
  Spread spread;
};

struct Cost {
  double wall_ms = 0;
  double cpu_ms = 0;  // of all threads of this process
};

// Runs from its construction on.
class Stopwatch {
 public:
  Stopwatch();
  Cost Elapsed() const;
  double WallMs() const;

 private:
  std::chrono::steady_clock::time_point start_;
  double start_cpu_;  // seconds
};

}  // namespace krv::tool
