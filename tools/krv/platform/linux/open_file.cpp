#include "platform/open_file.h"

#include <spawn.h>
#include <unistd.h>

#include <array>
#include <system_error>

namespace krv::tool {

bool OpenFile(const std::filesystem::path& file, std::string* error) {
  std::string program = "xdg-open";
  std::string path = file.string();
  const std::array<char*, 3> line = {program.data(), path.data(), nullptr};
  pid_t id = 0;
  const int failure = posix_spawnp(&id, program.c_str(), nullptr, nullptr, line.data(), environ);
  if (failure == 0) return true;
  *error = "xdg-open: " + std::generic_category().message(failure);
  return false;
}

}  // namespace krv::tool
