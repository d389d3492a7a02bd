// The frames that are measured: pairs of input and output that take turns, as a host's do.
#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "frame.h"
#include "media/picture.h"
#include "suites.h"

namespace krv::tool {

// 8-bit frames of one size, each input a copy of the same picture. More than one pair, so that a
// frame's memory is not in the processor's caches just because the same frame came before.
// [gl-thread, with a current context, for frames on the GPU]
class FrameRing {
 public:
  // Throws std::runtime_error when there is no room for them.
  FrameRing(const host::Picture& picture, host::DeviceUse form);

  HostFrame* input(int64_t frame) const { return At(frame).input; }
  HostFrame* output(int64_t frame) const { return At(frame).output; }

 private:
  static constexpr size_t kPairs = 3;

  struct Pair {
    HostFrame* input = nullptr;  // one of the two below
    HostFrame* output = nullptr;
    std::unique_ptr<host::MemoryFrame> memory_input;
    std::unique_ptr<host::MemoryFrame> memory_output;
    std::unique_ptr<host::TextureFrame> gpu_input;
    std::unique_ptr<host::TextureFrame> gpu_output;
  };

  const Pair& At(int64_t frame) const { return pairs_[static_cast<size_t>(frame) % kPairs]; }
  static void FillInMemory(const host::Picture& picture, Pair* pair);
  static void FillOnGpu(const host::Picture& picture, Pair* pair);

  std::array<Pair, kPairs> pairs_;
};

}  // namespace krv::tool
