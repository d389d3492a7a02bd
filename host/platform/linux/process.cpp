#include "platform/process.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace krv::host::platform {

std::filesystem::path ExecutableFile() {
  std::error_code code;
  return std::filesystem::read_symlink("/proc/self/exe", code);
}

std::filesystem::path ExecutableFolder() { return ExecutableFile().parent_path(); }

std::vector<std::string> ProgramArguments(int argc, char** argv) {
  return {argv + std::min(argc, 1), argv + argc};
}

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

void CrashQuietly() {
  const rlimit none = {0, 0};
  setrlimit(RLIMIT_CORE, &none);
}

}  // namespace krv::host::platform
