// Paths of package files.
#pragma once

#include <filesystem>
#include <string_view>

namespace krv::platform {

// A UTF-8 path, its parts separated by slashes or backslashes in any mixture, as the platform opens
// it. Paths inside packages are joined with a backslash on every platform.
std::filesystem::path NativePath(std::string_view utf8_path);

}  // namespace krv::platform
