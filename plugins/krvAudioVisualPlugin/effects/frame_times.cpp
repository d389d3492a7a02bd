#include "effects/frame_times.h"

#include <cstdlib>
#include <cstring>
#include <string>

#include "boundary/host_log.h"
#include "graphics/px_graphics.h"

namespace krv {
namespace {

bool AreWanted() {
  const char* value = std::getenv("KRV_FRAME_TIMES");
  return value != nullptr && *value != '\0';
}

}  // namespace

FrameTimes::FrameTimes() : wanted_(AreWanted()) {}

void FrameTimes::Start() {
  if (!wanted_) return;
  FinishGraphics();
  count_ = 0;
  last_ = Clock::now();
}

void FrameTimes::Mark(const char* stage, int number) {
  if (!wanted_) return;
  FinishGraphics();
  const Clock::time_point now = Clock::now();
  const auto spent = std::chrono::duration_cast<std::chrono::microseconds>(now - last_).count();
  last_ = now;
  for (size_t i = 0; i < count_; ++i) {
    if (stages_[i].number == number && std::strcmp(stages_[i].name, stage) == 0) {
      stages_[i].microseconds += spent;
      return;
    }
  }
  if (count_ < stages_.size()) stages_[count_++] = {stage, number, spent};
}

void FrameTimes::Log() const {
  if (!wanted_) return;
  std::string line;
  for (size_t i = 0; i < count_; ++i) {
    line += i == 0 ? "" : " ";
    line += stages_[i].name;
    if (stages_[i].number != 0) line += std::to_string(stages_[i].number);
    line += "=" + std::to_string(stages_[i].microseconds);
  }
  LogToHost(kLogInformation, "Frame times (us) : %s", line.c_str());
}

}  // namespace krv
