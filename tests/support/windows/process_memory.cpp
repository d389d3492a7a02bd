#include "support/process_memory.h"

#include <windows.h>
// After windows.h, whose types it needs.
#include <psapi.h>

namespace krv::test {

int64_t ResidentBytes() {
  PROCESS_MEMORY_COUNTERS counters = {};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters));
  return static_cast<int64_t>(counters.WorkingSetSize);
}

int64_t OpenHandles() {
  DWORD count = 0;
  GetProcessHandleCount(GetCurrentProcess(), &count);
  return count;
}

}  // namespace krv::test
