// What the external implementation of these tests tells about itself.
#pragma once

#include <cstddef>

namespace krv::test {

struct ExternalCalls {
  int set_target = 0;
  int render = 0;
  size_t uniforms = 0;  // of the last draw
  size_t mesh_floats = 0;
};

// Exported by the library next to its entry point.
inline constexpr char kExternalCallsName[] = "GetExternalCalls";
using GetExternalCallsFunction = ExternalCalls*();

}  // namespace krv::test
