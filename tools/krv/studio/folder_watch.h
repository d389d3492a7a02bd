// Notices that files of a folder were saved.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>

namespace krv::studio {

// Compares names, sizes and times of change, at most kMaxFiles of them. One thread.
class FolderWatch {
 public:
  static constexpr size_t kMaxFiles = 1000;

  // What the folder holds now counts as known.
  explicit FolderWatch(std::filesystem::path folder);

  // To be called again and again, a moment apart. True once for every change, as soon as the folder
  // looks the same in two calls in a row: an editor may be half way through a file.
  bool Changed();

 private:
  struct FileState {
    std::filesystem::file_time_type time;
    uintmax_t size;
    bool operator==(const FileState&) const = default;
  };
  using FolderState = std::map<std::filesystem::path, FileState>;

  FolderState Look() const;

  std::filesystem::path folder_;
  FolderState known_;
  FolderState last_;
};

}  // namespace krv::studio
