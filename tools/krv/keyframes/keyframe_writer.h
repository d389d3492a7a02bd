// The text of a file of keyframes.
#pragma once

#include <string>

#include "keyframes/parameter_tracks.h"

namespace krv::tool {

// What ReadKeyframes makes the same tracks of: a parameter with a single key as a plain value
// unless the key has remarks, the others one key to a line. Times keep their unit. Remarks of the
// file stand in front of their parameter, at the end if it is gone, those of a key at its end. Ends
// with a line's end.
std::string KeyframeText(const ParameterTracks& tracks);

}  // namespace krv::tool
