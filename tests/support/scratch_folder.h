// A folder of a test's own.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace krv::test {

// Made empty under the system's temporary folder, removed with everything in it at the end.
class ScratchFolder {
 public:
  ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder();

  const std::filesystem::path& path() const { return path_; }
  std::string text() const;  // the path in UTF-8

  // Writes a file, and the folders it needs, at a path relative to this folder.
  std::filesystem::path Write(const std::filesystem::path& file, std::string_view content) const;

 private:
  std::filesystem::path path_;
};

}  // namespace krv::test
