#include "memory/frame_memory.h"

#include <mutex>

namespace krv {
namespace {

// The library's own synchronised pool keeps data per thread, which would outlive this module in
// threads that end after it is unloaded.
class LockedPool final : public std::pmr::memory_resource {
 private:
  void* do_allocate(size_t bytes, size_t alignment) override {
    const std::lock_guard lock(mutex_);
    return pool_.allocate(bytes, alignment);
  }
  void do_deallocate(void* block, size_t bytes, size_t alignment) override {
    const std::lock_guard lock(mutex_);
    pool_.deallocate(block, bytes, alignment);
  }
  bool do_is_equal(const memory_resource& other) const noexcept override { return this == &other; }

  std::mutex mutex_;
  std::pmr::unsynchronized_pool_resource pool_;
};

}  // namespace

std::pmr::memory_resource& FrameMemory() {
  static auto* pool = new LockedPool;
  return *pool;
}

}  // namespace krv
