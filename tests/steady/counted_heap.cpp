#include "steady/counted_heap.h"

#include <cstdlib>
#include <new>

#ifndef _WIN32
// The program's first and last byte of code, by the linker.
extern "C" const char __executable_start;
extern "C" const char etext;
#endif

namespace krv::test {
namespace {

thread_local bool counting = false;
thread_local size_t counted = 0;

// On Windows every library has an operator new of its own.
bool IsOwnCode([[maybe_unused]] const void* caller) {
#ifdef _WIN32
  return true;
#else
  return caller >= &__executable_start && caller < &etext;
#endif
}

void* TryToAllocate(size_t bytes, const void* caller) {
  if (counting && IsOwnCode(caller)) ++counted;
  return std::malloc(bytes == 0 ? 1 : bytes);
}

void* Allocate(size_t bytes, const void* caller) {
  void* block = TryToAllocate(bytes, caller);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

}  // namespace

CountedHeap::CountedHeap() {
  counted = 0;
  counting = true;
}

CountedHeap::~CountedHeap() { counting = false; }

size_t CountedHeap::allocations() const { return counted; }

}  // namespace krv::test

void* operator new(size_t bytes) { return krv::test::Allocate(bytes, __builtin_return_address(0)); }
void* operator new[](size_t bytes) {
  return krv::test::Allocate(bytes, __builtin_return_address(0));
}
// These and the ones above end at the same operator delete.
void* operator new(size_t bytes, const std::nothrow_t&) noexcept {
  return krv::test::TryToAllocate(bytes, __builtin_return_address(0));
}
void* operator new[](size_t bytes, const std::nothrow_t&) noexcept {
  return krv::test::TryToAllocate(bytes, __builtin_return_address(0));
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, size_t) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete[](void* block, size_t) noexcept { std::free(block); }
