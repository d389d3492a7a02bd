// A folder that lives as long as its object.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

namespace krv::host {

class TemporaryFolder {
 public:
  // A new, empty folder in the system's folder for temporary files. Null on failure, with the
  // system's reason in *error.
  static std::unique_ptr<TemporaryFolder> Create(std::string* error);
  ~TemporaryFolder();  // removes the folder with everything in it
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  explicit TemporaryFolder(std::filesystem::path path) : path_(std::move(path)) {}
  std::filesystem::path path_;
};

}  // namespace krv::host
