// Lets allocations of the program fail.
#pragma once

#include <cstddef>

namespace krv::test {

// While one exists, operator new fails on this thread: once, after `spared` other calls.
class FailingHeap {
 public:
  explicit FailingHeap(size_t spared);
  ~FailingHeap();
  FailingHeap(const FailingHeap&) = delete;
  FailingHeap& operator=(const FailingHeap&) = delete;

  bool has_struck() const;
};

}  // namespace krv::test
