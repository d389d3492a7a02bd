#include "compositing/failing_heap.h"

#include <cstdlib>
#include <new>

namespace krv::test {
namespace {

thread_local bool armed = false;
thread_local bool struck = false;
thread_local size_t left = 0;

void* Allocate(size_t bytes) {
  if (armed && left-- == 0) {
    armed = false;
    struck = true;
    throw std::bad_alloc();
  }
  void* block = std::malloc(bytes == 0 ? 1 : bytes);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

}  // namespace

FailingHeap::FailingHeap(size_t spared) {
  left = spared;
  struck = false;
  armed = true;
}

FailingHeap::~FailingHeap() { armed = false; }

bool FailingHeap::has_struck() const { return struck; }

}  // namespace krv::test

void* operator new(size_t bytes) { return krv::test::Allocate(bytes); }
void* operator new[](size_t bytes) { return krv::test::Allocate(bytes); }
// These and the ones above end at the same operator delete.
void* operator new(size_t bytes, const std::nothrow_t&) noexcept { return std::malloc(bytes); }
void* operator new[](size_t bytes, const std::nothrow_t&) noexcept { return std::malloc(bytes); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, size_t) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete[](void* block, size_t) noexcept { std::free(block); }
