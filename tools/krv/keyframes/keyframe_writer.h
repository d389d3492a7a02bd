// The text of a file of keyframes.
#pragma once

#include <string>

#include "keyframes/parameter_tracks.h"

namespace krv::tool {

// What ReadKeyframes makes the same tracks of: a parameter with a single key as a plain value, the
// others one key to a line. Times keep their unit. Ends with a line's end.
std::string KeyframeText(const ParameterTracks& tracks);

}  // namespace krv::tool
