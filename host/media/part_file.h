// A file that appears under its name only when it is complete.
#pragma once

#include <filesystem>

namespace krv::host {

// Reserves ".NAME.part.EXTENSION" beside the final file; whoever has the object writes there. What
// is not committed is removed with the object.
class PartFile {
 public:
  explicit PartFile(std::filesystem::path final_path);
  ~PartFile();
  PartFile(const PartFile&) = delete;
  PartFile& operator=(const PartFile&) = delete;

  const std::filesystem::path& path() const { return part_path_; }

  // Renames the file, which must be closed, to its final name, in place of an older file. Throws
  // MediaError.
  void Commit();

 private:
  std::filesystem::path final_path_;
  std::filesystem::path part_path_;
};

}  // namespace krv::host
