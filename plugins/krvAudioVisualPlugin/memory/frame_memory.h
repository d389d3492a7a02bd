// Memory for the small objects that every frame makes and drops: blocks are kept and handed out
// again, so that a steady run of frames asks the heap for nothing.
#pragma once

#include <memory>
#include <memory_resource>
#include <utility>

namespace krv {

// One per process, made on first use and never destroyed. Any thread.
std::pmr::memory_resource& FrameMemory();

// std::make_shared in that memory.
template <class T, class... Arguments>
std::shared_ptr<T> MakeForFrame(Arguments&&... arguments) {
  return std::allocate_shared<T>(std::pmr::polymorphic_allocator<T>(&FrameMemory()),
                                 std::forward<Arguments>(arguments)...);
}

}  // namespace krv
