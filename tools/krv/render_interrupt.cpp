#include "render_interrupt.h"

#include <atomic>
#include <csignal>

namespace krv::tool {
namespace {

std::atomic<bool> flag{false};
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler writes it");

void Handle(int signal_number) {
  flag.store(true, std::memory_order_relaxed);
  std::signal(signal_number, SIG_DFL);
}

}  // namespace

InterruptWatch::InterruptWatch() {
  flag.store(false, std::memory_order_relaxed);
  std::signal(SIGINT, Handle);
  std::signal(SIGTERM, Handle);
}

InterruptWatch::~InterruptWatch() {
  std::signal(SIGINT, SIG_DFL);
  std::signal(SIGTERM, SIG_DFL);
}

bool InterruptWatch::interrupted() const { return flag.load(std::memory_order_relaxed); }

}  // namespace krv::tool
