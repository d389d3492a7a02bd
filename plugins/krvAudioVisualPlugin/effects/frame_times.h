// Where the time of a frame goes, for whoever asks for it.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>

namespace krv {

// With the environment variable KRV_FRAME_TIMES set to anything but nothing when an instance is
// made, every frame of it logs one line at level 1:
//   "Frame times (us) : parameters=3 audio=21 upload=812 pass1=1300 read_back=400 blend=900"
// in the order in which the stages happened, in whole microseconds. Each stage then waits until the
// GPU has done its work, so such a frame as a whole is slower than others. Without the variable
// nothing happens here.
class FrameTimes {
 public:
  FrameTimes();

  // Starts the clock of a frame.
  void Start();
  // Ends a stage: everything since Start or the Mark before. A name used twice adds up. The name is
  // borrowed for good; `number` follows it when it is not 0. [gl-thread]
  void Mark(const char* stage, int number = 0);
  // Logs the frame's stages.
  void Log() const;

 private:
  using Clock = std::chrono::steady_clock;
  struct Stage {
    const char* name;
    int number;
    int64_t microseconds;
  };

  bool wanted_;
  Clock::time_point last_;
  std::array<Stage, 32> stages_{};
  size_t count_ = 0;
};

}  // namespace krv
