// The bar that shows how far a render is.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace krv::tool {

// "[#####.....]  50%  150 of 300 frames  29.8 fps  0:05 left"; without the total (-1) only the
// frames and the rate. `seconds`: since the start.
std::string ProgressText(int64_t frames, int64_t total, double seconds);

// Draws the text over itself on the error output, at most ten times a second; nothing when that is
// no terminal.
class Progress {
 public:
  explicit Progress(int64_t total);
  ~Progress();  // clears the line
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void Show(int64_t frames);

  // Makes room for another line.
  void Clear();

 private:
  using Clock = std::chrono::steady_clock;

  int64_t total_;
  bool visible_;
  Clock::time_point start_;
  Clock::time_point shown_;
  size_t shown_length_ = 0;
};

}  // namespace krv::tool
