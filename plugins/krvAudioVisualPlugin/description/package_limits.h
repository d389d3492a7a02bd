// What a package may hold. Packages come from strangers: these limits are far above what an effect
// needs, and keep a damaged or malicious one from costing the host its memory or its time.
#pragma once

#include <cstddef>

namespace krv {

inline constexpr size_t kLargestPackageFile = size_t{4} << 20;  // bytes of a description or shader
inline constexpr int kDeepestNesting = 64;      // lists and objects of a description in one another
inline constexpr size_t kMostEntries = 1024;    // of one list or object of a description
inline constexpr size_t kMostShaderFiles = 64;  // of "opengl_frag" and of "opengl_vert"

}  // namespace krv
