// Where GL errors surface.
#pragma once

#include <source_location>

namespace krv::GL {

// Reads the GL error flag and prints "GL error 0x%x at %s:%d\n" to standard output with the place
// of the call when it is set. Work goes on. False when it was set.
bool CheckGl(std::source_location where = std::source_location::current());

}  // namespace krv::GL
