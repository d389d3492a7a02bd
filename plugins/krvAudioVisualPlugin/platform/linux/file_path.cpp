#include "platform/file_path.h"

#include <algorithm>
#include <string>

namespace krv::platform {

std::filesystem::path NativePath(std::string_view utf8_path) {
  std::string path(utf8_path);
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

}  // namespace krv::platform
