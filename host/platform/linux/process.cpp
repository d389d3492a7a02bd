#include "platform/process.h"

#include <algorithm>

namespace krv::host::platform {

std::filesystem::path ExecutableFolder() {
  std::error_code code;
  return std::filesystem::read_symlink("/proc/self/exe", code).parent_path();
}

std::vector<std::string> ProgramArguments(int argc, char** argv) {
  return {argv + std::min(argc, 1), argv + argc};
}

}  // namespace krv::host::platform
