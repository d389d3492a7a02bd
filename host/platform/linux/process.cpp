#include "platform/process.h"

namespace krv::host::platform {

std::filesystem::path ExecutableFolder() {
  std::error_code code;
  return std::filesystem::read_symlink("/proc/self/exe", code).parent_path();
}

}  // namespace krv::host::platform
