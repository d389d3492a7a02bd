#include "support/process_memory.h"

#include <unistd.h>

#include <fstream>

namespace krv::test {

int64_t ResidentBytes() {
  std::ifstream file("/proc/self/statm");
  int64_t total = 0;
  int64_t resident = 0;
  file >> total >> resident;
  return resident * sysconf(_SC_PAGESIZE);
}

}  // namespace krv::test
