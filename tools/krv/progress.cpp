#include "progress.h"

#include <algorithm>
#include <cinttypes>
#include <cmath>
#include <cstdio>

#include "platform/terminal.h"

namespace krv::tool {
namespace {

constexpr int kBarLength = 30;
constexpr std::chrono::milliseconds kInterval(100);

std::string TimeText(double seconds) {
  const auto whole = static_cast<int64_t>(std::llround(seconds));
  char text[40];
  if (whole >= 3600) {
    std::snprintf(text, sizeof text, "%" PRId64 ":%02d:%02d", whole / 3600,
                  static_cast<int>(whole / 60 % 60), static_cast<int>(whole % 60));
  } else {
    std::snprintf(text, sizeof text, "%d:%02d", static_cast<int>(whole / 60),
                  static_cast<int>(whole % 60));
  }
  return text;
}

}  // namespace

std::string ProgressText(int64_t frames, int64_t total, double seconds) {
  const double rate = seconds > 0 ? static_cast<double>(frames) / seconds : 0;
  char text[160];
  if (total <= 0) {
    std::snprintf(text, sizeof text, "%" PRId64 " frames  %.1f fps", frames, rate);
    return text;
  }
  const int64_t done = std::min(frames, total);
  const auto filled = static_cast<size_t>(done * kBarLength / total);
  const std::string bar = std::string(filled, '#') + std::string(kBarLength - filled, '.');
  std::snprintf(text, sizeof text, "[%s] %3d%%  %" PRId64 " of %" PRId64 " frames  %.1f fps",
                bar.c_str(), static_cast<int>(done * 100 / total), frames, total, rate);
  if (rate <= 0) return text;
  return text + ("  " + TimeText(static_cast<double>(total - done) / rate) + " left");
}

Progress::Progress(int64_t total)
    : total_(total), visible_(ErrorOutputIsTerminal()), start_(Clock::now()), shown_(start_) {}

Progress::~Progress() { Clear(); }

void Progress::Clear() {
  if (shown_length_ > 0) std::fprintf(stderr, "\r%*s\r", static_cast<int>(shown_length_), "");
  shown_length_ = 0;
}

void Progress::Show(int64_t frames) {
  const Clock::time_point now = Clock::now();
  if (!visible_ || now - shown_ < kInterval) return;
  shown_ = now;
  const double seconds = std::chrono::duration<double>(now - start_).count();
  const std::string text = ProgressText(frames, total_, seconds);
  std::fprintf(stderr, "\r%-*s", static_cast<int>(shown_length_), text.c_str());
  std::fflush(stderr);
  shown_length_ = std::max(shown_length_, text.size());
}

}  // namespace krv::tool
