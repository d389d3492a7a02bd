// Counts the program's own allocations.
#pragma once

#include <cstddef>

namespace krv::test {

// While one exists, every operator new on this thread that the program's own code calls is counted;
// those of shared libraries are not.
class CountedHeap {
 public:
  CountedHeap();
  ~CountedHeap();
  CountedHeap(const CountedHeap&) = delete;
  CountedHeap& operator=(const CountedHeap&) = delete;

  size_t allocations() const;
};

}  // namespace krv::test
