// The stages of a render, at work on different frames at the same time.
#pragma once

#include <cstddef>
#include <functional>

#include "render_input.h"

namespace krv::tool {

// What is done with each frame. Every stage gets the frames in order, one at a time; jobs come back
// with what an earlier frame left in them, so that their memory is used again.
struct RenderStages {
  std::function<bool(RenderJob*)> read;         // on a thread of its own; false when none is left
  std::function<bool(RenderJob*)> draw;         // on the caller's thread; false after the last one
  std::function<void(const RenderJob&)> write;  // on a thread of its own
};

// The frames in memory at once: one in each stage and one waiting between two.
inline constexpr size_t kFramesInFlight = 5;

// Runs the stages until there are no more frames, and every drawn one is written. What a stage
// throws is thrown here, after the same frames have been written as if every frame went through all
// the stages before the next one is read: of several failures the one of the earliest frame.
void RunStages(const RenderStages& stages);

}  // namespace krv::tool
