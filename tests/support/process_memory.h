// What this process takes.
#pragma once

#include <cstdint>

namespace krv::test {

// The memory of this process that is in use and not swapped out, in bytes.
int64_t ResidentBytes();

}  // namespace krv::test
