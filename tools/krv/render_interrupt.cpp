#include "render_interrupt.h"

#include <atomic>
#include <csignal>

namespace krv::tool {
namespace {

std::atomic<bool> flag{false};
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler writes it");

constexpr int kSignals[] = {
    SIGINT, SIGTERM,
#ifdef SIGBREAK
    SIGBREAK,  // Windows: Ctrl-Break, or the terminal is being closed
#endif
};

void Handle(int signal_number) {
  flag.store(true, std::memory_order_relaxed);
  std::signal(signal_number, SIG_DFL);
}

void SetHandler(void (*handler)(int)) {
  for (const int signal_number : kSignals) std::signal(signal_number, handler);
}

}  // namespace

InterruptWatch::InterruptWatch() {
#ifdef SIGPIPE
  // A reader of standard output that has gone is a failed write, with a message.
  std::signal(SIGPIPE, SIG_IGN);
#endif
  flag.store(false, std::memory_order_relaxed);
  SetHandler(Handle);
}

InterruptWatch::~InterruptWatch() { SetHandler(SIG_DFL); }

bool InterruptWatch::interrupted() const { return flag.load(std::memory_order_relaxed); }

}  // namespace krv::tool
