// Files and folders of packages.
//
// Paths are UTF-8, their parts separated by slashes or backslashes in any mixture, of any length;
// paths inside packages are joined with a backslash on every platform. Any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace krv::platform {

// The error of files that are larger than their reader allows.
[[noreturn]] inline void ThrowTooLarge(size_t most_bytes) {
  throw std::length_error("the file is larger than " + std::to_string(most_bytes) + " bytes");
}

// The contents of a regular file. Nothing when there is no such file, when it is something else (a
// folder can be opened on some platforms, and a device or pipe may never end) or cannot be read.
// Throws std::length_error when it is larger than that many bytes.
std::optional<std::string> ReadFile(std::string_view utf8_path, size_t most_bytes);

// Whether a file or folder that exists lies somewhere below a folder once all links are followed.
// False when either cannot be found.
bool IsBelow(std::string_view utf8_path, std::string_view utf8_folder);

struct FolderEntry {
  std::string name;  // UTF-8
  bool is_folder;    // false for links to folders
};

// What a folder holds, in the order of the file system. Nothing when it cannot be listed.
std::optional<std::vector<FolderEntry>> ListFolder(std::string_view utf8_path);

}  // namespace krv::platform
