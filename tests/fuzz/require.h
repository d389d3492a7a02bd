#pragma once

#include <cstdio>
#include <cstdlib>

namespace krv::fuzz {

// Ends the process, as a crash does, when the promise does not hold.
inline void Require(bool holds, const char* promise) {
  if (holds) return;
  std::fprintf(stderr, "broken: %s\n", promise);
  std::abort();
}

}  // namespace krv::fuzz
