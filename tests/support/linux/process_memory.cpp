#include "support/process_memory.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace krv::test {

int64_t ResidentBytes() {
  std::ifstream file("/proc/self/statm");
  int64_t total = 0;
  int64_t resident = 0;
  file >> total >> resident;
  return resident * sysconf(_SC_PAGESIZE);
}

int64_t OpenHandles() {
  const std::filesystem::directory_iterator handles("/proc/self/fd");
  return std::distance(begin(handles), end(handles));
}

}  // namespace krv::test
