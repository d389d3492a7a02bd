#include "platform/process.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
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

double ProcessorSeconds() {
  timespec used = {};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
  return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) * 1e-9;
}

void SetVariable(const char* name, const char* value) {
  if (value == nullptr) {
    unsetenv(name);
  } else {
    setenv(name, value, /*overwrite=*/1);
  }
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
