// Somebody for the effects that follow a person.
#pragma once

#include "render_input.h"

namespace krv::tool {

// A copy of the frame with a person in it, a dark figure that moves its arms and stands in the
// middle, and the person's mask. `seconds` is the frame's time.
RenderJob WithPerson(const RenderJob& frame, double seconds);

}  // namespace krv::tool
