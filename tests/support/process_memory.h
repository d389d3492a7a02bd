// What this process takes.
#pragma once

#include <cstdint>

namespace krv::test {

// The memory of this process that is in use and not swapped out, in bytes.
int64_t ResidentBytes();

// How many files, libraries being loaded and other system objects this process holds open.
int64_t OpenHandles();

}  // namespace krv::test
